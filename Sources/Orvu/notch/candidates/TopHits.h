#pragma once

#include "foundation/Url.h"

#include <array>
#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// How often each host stands in a window's history, bookmarks and tabs. Hosts are taken in lower
/// case and without a "www." at their head.
class TopHits {
public:
    /// Where an address comes from; in this order they are met.
    enum class Source { visits, bookmarks, tabs };

    TopHits() = default;
    TopHits(const TopHits&) = delete;
    TopHits& operator=(const TopHits&) = delete;

    /// Puts `url` before what has the place `place` in its source now. Without a host it counts
    /// for nothing, though it takes the place.
    void insert(Source source, std::size_t place, const std::optional<Url>& url);
    void append(Source source, const std::optional<Url>& url) {
        insert(source, places(source).size(), url);
    }
    void erase(Source source, std::size_t place);
    void clear(Source source);

    /// The host that begins with `typed`, is not all of it, and stands there most often. Of equals
    /// the one with fewer characters, and of those the one met first.
    [[nodiscard]] std::optional<std::string> best(std::string_view typed) const;

private:
    struct Use {
        std::size_t count = 0;
        std::size_t characters = 0;

        [[nodiscard]] bool isBetterThan(const Use& other) const {
            return count != other.count ? count > other.count : characters < other.characters;
        }
        friend bool operator==(const Use&, const Use&) = default;
    };
    using Hosts = std::map<std::string, Use, std::less<>>;
    /// Iterators, since those of a map stand while others come and go.
    using Places = std::deque<Hosts::iterator>;

    [[nodiscard]] Places& places(Source source) {
        return places_[static_cast<std::size_t>(source)];
    }
    void forget(Hosts::iterator host);
    [[nodiscard]] std::optional<std::string> firstMet(const auto& condition) const;

    Hosts hosts_;
    std::array<Places, 3> places_;  ///< the end of `hosts_` where there is no host
};

}  // namespace orvu

#pragma once

#include "core/Bookmarks.h"
#include "core/Records.h"
#include "platform/UserDefaults.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace orvu {

/// Makes up what a person leaves behind who uses the program a great deal: addresses of 40 to
/// 120 bytes, titles of 20 to 80 characters, one in ten outside ASCII. The same seed gives the
/// same world.
class FullProfile {
public:
    static constexpr std::size_t visitCount = 5000;
    static constexpr std::size_t bookmarkCount = 2000;
    static constexpr std::size_t tabCount = 200;

    /// `now` is when the last visit was; the others lie in the 29 days before.
    FullProfile(std::uint32_t seed, Date now) : random_(seed), now_(now) {}

    [[nodiscard]] Url url();
    [[nodiscard]] std::string title();
    /// Oldest first.
    [[nodiscard]] std::vector<Visit> visits(std::size_t count = visitCount);
    /// Stores history, bookmarks and session under the personal profile's keys.
    void store(UserDefaults& defaults);

private:
    [[nodiscard]] std::size_t below(std::size_t bound) { return random_() % bound; }

    std::minstd_rand random_;
    Date now_;
};

}  // namespace orvu

#pragma once

#include "foundation/text/Translation.h"
#include "profiles/Preferences.h"
#include "search/Bang.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The bar above a page of results, which changes what is searched, and where.
struct SearchStrip {
    /// A kind of search of one engine.
    struct Vertical {
        struct Item {
            std::string_view name;
            std::string_view value;
        };
        Phrase name;  ///< for people
        std::optional<Item>
            item;  ///< what makes a search of this kind; nothing for the ordinary one
    };
    /// A way to other results for the same search.
    struct Link {
        std::string name;  ///< for people
        std::string help;  ///< what it does; empty where the name says it
        Url url;
        std::string iconHost;  ///< the site whose icon stands for it; empty for none
        bool isCurrent = false;

        friend bool operator==(const Link&, const Link&) = default;
    };

    static constexpr std::array<Vertical, 5> verticals{
        {{phrase("All"), std::nullopt},
         {phrase("Images"), Vertical::Item{"udm", "2"}},
         {phrase("Videos"), Vertical::Item{"tbm", "vid"}},
         {phrase("News"), Vertical::Item{"tbm", "nws"}},
         {phrase("Shopping"), Vertical::Item{"udm", "28"}}}};
    static constexpr Phrase sameSearch = phrase("Same search on");
    static constexpr Phrase answerTitle = phrase("Answer");
    static constexpr Phrase answerHelp = phrase("Show Kesto's answer");

    /// The name of the kind of search that a page of results shows.
    [[nodiscard]] static std::string_view current(const std::optional<Url>& page);

    Prefs::Engine engine;  ///< of the page
    std::string query;     ///< its search

    /// The kinds of search that the engine has, of which `page` shows one; none for most engines.
    [[nodiscard]] std::vector<Link> kinds(const std::optional<Url>& page) const;
    /// The same search on a map.
    [[nodiscard]] std::optional<Link> maps() const;
    /// The same search on the other engines.
    [[nodiscard]] std::vector<Link> engines() const;
    /// The same search on sites that are no engines, for buttons without a text.
    [[nodiscard]] std::vector<Link> sites() const;

    friend bool operator==(const SearchStrip&, const SearchStrip&) = default;
};

}  // namespace orvu

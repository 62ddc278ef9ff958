#pragma once

#include "foundation/text/Translation.h"
#include "search/answers/SearchAnswer.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What the card beside a page of results says.
struct SearchAnswerCard {
    static constexpr std::size_t sourcesLimit = 5;  ///< sources that are listed
    static constexpr std::string_view name = "Kesto";
    static constexpr Phrase closeHelp = phrase("Hide answer");
    static constexpr Phrase askNext = phrase("ASK NEXT");

    /// A piece of the answer.
    struct Run {
        std::string text;
        bool isCitation = false;  ///< it is drawn raised

        friend bool operator==(const Run&, const Run&) = default;
    };

    [[nodiscard]] static bool isThinking(const SearchAnswer::Phase& phase);
    /// The line under the name. `sources` is how many results there are.
    [[nodiscard]] static std::string status(const SearchAnswer::Phase& phase, std::size_t sources);
    /// The answer with its citations, each of them a space and its number, up to the first bracket
    /// that is none.
    [[nodiscard]] static std::vector<Run> cited(std::string_view answer);
    /// The sources that are listed.
    [[nodiscard]] static std::span<const SearchAnswer::Source> listed(const SearchAnswer& answer);
    /// The host of the page that a source is.
    [[nodiscard]] static std::string host(const SearchAnswer::Source& source);
    /// The same without "www.", for people.
    [[nodiscard]] static std::string site(const SearchAnswer::Source& source);
    /// How opaque a line is, at a time in seconds, that breathes where a text is yet to come.
    [[nodiscard]] static double shimmer(double time);
    /// What a source is called for assistive technology.
    [[nodiscard]] static std::string accessibleName(const SearchAnswer::Source& source);
};

}  // namespace orvu

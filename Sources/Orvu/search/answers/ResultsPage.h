#pragma once

#include "foundation/Url.h"
#include "platform/WebView.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// A result as its page lists it.
struct FoundResult {
    std::string title;
    Url url;  ///< where it leads; it may be a page of the engine that leads on
    std::string snippet;
    /// The address that the page shows for it. Without a scheme it is a relative one, such as
    /// "a.example/b", whose host is the head of its path.
    std::optional<Url> shown;

    friend bool operator==(const FoundResult&, const FoundResult&) = default;
};

/// How the first results are read off a search engine's page.
struct ResultsPage {
    static constexpr std::size_t maxResults = 6;    ///< what the script gives at most
    static constexpr std::size_t maxTitle = 1000;   ///< units of UTF-16
    static constexpr std::size_t maxSnippet = 360;  ///< units of UTF-16

    /// An expression that gives the first results of a page of Google, Bing, DuckDuckGo or Ecosia,
    /// each a list of title, address, snippet and shown address; an empty list for a page without
    /// any. It is the file data/scripts/search-results.js.
    static const std::string_view script;

    /// The results that the script's answer tells of: at most `maxResults`, with texts of at most
    /// the above lengths. An entry without a title or without an address that parses is left out;
    /// an answer that is no list of lists has none.
    [[nodiscard]] static std::vector<FoundResult> results(const ScriptResult& answer);
};

}  // namespace orvu

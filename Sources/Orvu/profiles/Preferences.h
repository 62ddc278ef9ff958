#pragma once

#include "foundation/Url.h"
#include "platform/UserDefaults.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// What settings mean. `Settings` has the settings themselves.
class Prefs {
public:
    /// The web search services, in the order in which a person is offered them.
    enum class Engine { google, duckduckgo, bing, ecosia };

    /// What is fixed about a service.
    struct EngineFacts {
        Engine engine;
        std::string_view rawValue;   ///< as stored
        std::string_view shownName;  ///< for people
        std::string_view base;       ///< address of a search, without its query
        std::string_view site;       ///< host of its results pages, or the end of it
        std::string_view path;       ///< how the path of a results page begins
        std::string_view suggest;    ///< address of suggestions, up to the typed text
    };

    /// A page of results.
    struct SearchPage {
        Engine engine;
        std::string query;  ///< what was searched for

        friend bool operator==(const SearchPage&, const SearchPage&) = default;
    };

    static constexpr std::array<EngineFacts, 4> engines{{
        {Engine::google, "google", "Google", "https://www.google.com/search", "google.com",
         "/search", "https://suggestqueries.google.com/complete/search?client=firefox&q="},
        {Engine::duckduckgo, "duckduckgo", "DuckDuckGo", "https://duckduckgo.com/",
         "duckduckgo.com", "", "https://duckduckgo.com/ac/?type=list&q="},
        {Engine::bing, "bing", "Bing", "https://www.bing.com/search", "bing.com", "/search",
         "https://api.bing.com/osjson.aspx?query="},
        {Engine::ecosia, "ecosia", "Ecosia", "https://www.ecosia.org/search", "ecosia.org",
         "/search", "https://ac.ecosia.org/autocomplete?type=list&q="},
    }};

    /// Broadcast when the whole history is to be forgotten.
    static constexpr std::string_view clearHistory = "OrvuClearHistory";

    /// `fallback` if the key has no value; otherwise the stored value read as a boolean.
    [[nodiscard]] static bool boolean(const UserDefaults& defaults, std::string_view key,
                                      bool fallback);
    [[nodiscard]] static const EngineFacts& facts(Engine engine);
    /// Where `engine` searches for `query`.
    [[nodiscard]] static std::optional<Url> searchURL(Engine engine, std::string_view query);
    /// Where `engine` tells what people search for whose search begins with `text`.
    [[nodiscard]] static std::optional<Url> suggestURL(Engine engine, std::string_view text);
    /// Reads the search back out of the address of a results page. Nothing for all other
    /// addresses, and at once for nearly all of them.
    [[nodiscard]] static std::optional<SearchPage> searchQuery(const std::optional<Url>& url);
};

}  // namespace orvu

#pragma once

#include "foundation/Url.h"
#include "platform/UserDefaults.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// Reading of settings with their defaults.
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
    };

    static constexpr std::array<EngineFacts, 4> engines{{
        {Engine::google, "google", "Google", "https://www.google.com/search"},
        {Engine::duckduckgo, "duckduckgo", "DuckDuckGo", "https://duckduckgo.com/"},
        {Engine::bing, "bing", "Bing", "https://www.bing.com/search"},
        {Engine::ecosia, "ecosia", "Ecosia", "https://www.ecosia.org/search"},
    }};

    /// Broadcast when the whole history is to be forgotten.
    static constexpr std::string_view clearHistory = "OrvuClearHistory";

    /// `fallback` if the key has no value; otherwise the stored value read as a boolean.
    [[nodiscard]] static bool boolean(const UserDefaults& defaults, std::string_view key,
                                      bool fallback);
    /// The chosen engine; Google if none or an unknown one is stored.
    [[nodiscard]] static Engine engine(const UserDefaults& defaults);
    [[nodiscard]] static const EngineFacts& facts(Engine engine);
    /// Where the chosen engine searches for `query`.
    [[nodiscard]] static std::optional<Url> searchURL(const UserDefaults& defaults,
                                                      std::string_view query);
};

}  // namespace orvu

#include "profiles/Preferences.h"

#include <algorithm>

namespace orvu {

bool Prefs::boolean(const UserDefaults& defaults, std::string_view key, bool fallback) {
    if (!defaults.hasObject(key)) return fallback;
    return defaults.boolean(key).value_or(false);
}

Prefs::Engine Prefs::engine(const UserDefaults& defaults) {
    const auto stored = defaults.string("searchEngine");
    const auto found = std::ranges::find(engines, stored.value_or(""), &EngineFacts::rawValue);
    return found != engines.end() ? found->engine : Engine::google;
}

const Prefs::EngineFacts& Prefs::facts(Engine engine) {
    return *std::ranges::find(engines, engine, &EngineFacts::engine);
}

std::optional<Url> Prefs::searchURL(const UserDefaults& defaults, std::string_view query) {
    const auto& base = facts(engine(defaults)).base;
    return Url::parse(std::string{base} +
                      "?q=" + percentEncoded(query, QueryCharacters::itemValue));
}

}  // namespace orvu

#include "profiles/Preferences.h"

#include "foundation/text/Text.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

/// Whether `host` is `site` itself or a part of it.
bool belongsTo(std::string_view host, std::string_view site) {
    if (!host.ends_with(site)) return false;
    host.remove_suffix(site.size());
    return host.empty() || host.ends_with('.');
}

}  // namespace

bool Prefs::boolean(const UserDefaults& defaults, std::string_view key, bool fallback) {
    if (!defaults.hasObject(key)) return fallback;
    return defaults.boolean(key).value_or(false);
}

const Prefs::EngineFacts& Prefs::facts(Engine engine) {
    return *std::ranges::find(engines, engine, &EngineFacts::engine);
}

std::optional<Url> Prefs::searchURL(Engine engine, std::string_view query) {
    return Url::parse(std::string{facts(engine).base} +
                      "?q=" + percentEncoded(query, QueryCharacters::itemValue));
}

std::optional<Url> Prefs::suggestURL(Engine engine, std::string_view text) {
    return Url::parse(std::string{facts(engine).suggest} +
                      percentEncoded(text, QueryCharacters::itemValue));
}

std::optional<Prefs::SearchPage> Prefs::searchQuery(const std::optional<Url>& url) {
    // The item comes first, since few addresses have one and it takes no memory to find that out.
    auto query = url ? url->queryItem("q") : std::nullopt;
    if (!query || query->empty()) return std::nullopt;
    const std::string host = lowercased(url->host().value_or(""));
    // Their sites have nothing in common, so there is at most one.
    const auto found = std::ranges::find_if(
        engines, [&](const EngineFacts& each) { return belongsTo(host, each.site); });
    if (found == engines.end() || !url->path().starts_with(found->path)) return std::nullopt;
    std::ranges::replace(*query, '+', ' ');
    return SearchPage{found->engine, std::move(*query)};
}

}  // namespace orvu

#include "core/AddressResolution.h"

#include "foundation/text/Text.h"
#include "search/Bang.h"

#include <algorithm>
#include <array>
#include <string>

namespace orvu {
namespace {

/// An address whose scheme opens directly, as it stands; the case of the scheme counts.
std::optional<Url> fullUrl(std::string_view text) {
    constexpr std::array<std::string_view, 4> schemes{"http", "https", "file", "about"};
    auto url = Url::parse(text);
    if (!url || std::ranges::find(schemes, url->scheme()) == schemes.end()) return std::nullopt;
    if (!isWebUrl(*url)) return url;
    // Slips in the slashes are the engine's to mend, but there must be something behind them.
    const bool isBare = text.find_first_not_of('/', url->scheme().size() + 1) == text.npos;
    return isBare ? std::nullopt : url;
}

/// A bare site: something with a full stop in it and no space.
std::optional<Url> siteUrl(std::string_view text) {
    if (text.contains(' ') || !text.contains('.') || text.ends_with('.')) return std::nullopt;
    auto url = Url::parse("https://" + std::string{text});
    return url && url->host() ? url : std::nullopt;
}

}  // namespace

std::optional<Url> resolveAddress(std::string_view text, const Settings& settings) {
    const auto typed = trimmed(text, TrimSet::whitespacesAndNewlines);
    if (typed.empty()) return std::nullopt;
    if (const auto bang = Bang::parse(typed); bang && !bang->query.empty()) {
        return bang->bang.expand(bang->query);
    }
    if (auto url = fullUrl(typed)) return url;
    if (auto url = siteUrl(typed)) return url;
    return Prefs::searchURL(settings.searchEngine.get(), typed);
}

}  // namespace orvu

#include "search/Bang.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"

#include <algorithm>

namespace orvu {

constexpr std::array<Bang, 10> Bang::all{{
    {"!g", phrase("Google"), "google.com", "https://www.google.com/search?q=%s"},
    {"!d", phrase("DuckDuckGo"), "duckduckgo.com", "https://duckduckgo.com/?q=%s"},
    {"!b", phrase("Bing"), "bing.com", "https://www.bing.com/search?q=%s"},
    {"!w", phrase("Wikipedia"), "wikipedia.org", "https://en.wikipedia.org/w/index.php?search=%s"},
    {"!yt", phrase("YouTube"), "youtube.com", "https://www.youtube.com/results?search_query=%s"},
    {"!m", phrase("Maps"), "maps.apple.com", "https://maps.apple.com/?q=%s"},
    {"!i", phrase("Images"), "google.com", "https://www.google.com/search?udm=2&q=%s"},
    {"!gh", phrase("GitHub"), "github.com", "https://github.com/search?q=%s"},
    {"!r", phrase("Reddit"), "reddit.com", "https://www.reddit.com/search/?q=%s"},
    {"!a", phrase("Amazon"), "amazon.com", "https://www.amazon.com/s?k=%s"},
}};

std::optional<Bang::Parsed> Bang::parse(std::string_view text) {
    const auto whole = trimmed(text, TrimSet::whitespaces);
    if (!whole.starts_with('!')) return std::nullopt;
    const auto space = whole.find(' ');
    if (space == std::string_view::npos) return std::nullopt;
    const auto found = std::ranges::find(all, lowercased(whole.substr(0, space)), &Bang::key);
    if (found == all.end()) return std::nullopt;
    return Parsed{*found, std::string{trimmed(whole.substr(space + 1), TrimSet::whitespaces)}};
}

std::optional<Url> Bang::expand(std::string_view query) const {
    const auto encoded = percentEncoded(query, QueryCharacters::bangQuery);
    return Url::parse(replacingAll(urlTemplate, "%s", encoded));
}

}  // namespace orvu

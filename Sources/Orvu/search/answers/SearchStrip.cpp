#include "search/answers/SearchStrip.h"

#include "foundation/text/Translation.h"

#include <algorithm>
#include <ranges>

namespace orvu {
namespace {

std::optional<Url> kindURL(const SearchStrip::Vertical& vertical, std::string_view query) {
    auto all = Prefs::searchURL(Prefs::Engine::google, query);
    if (!all || !vertical.item) return all;
    return Url::parse(all->absoluteString() + "&" + std::string{vertical.item->name} + "=" +
                      std::string{vertical.item->value});
}

/// The search on the site of a bang; nothing if there is no such bang.
std::optional<SearchStrip::Link> bangLink(std::string_view key, std::string_view query) {
    const auto* const bang = std::ranges::find(Bang::all, key, &Bang::key);
    if (bang == Bang::all.end()) return std::nullopt;
    auto url = bang->expand(query);
    if (!url) return std::nullopt;
    return SearchStrip::Link{.name = std::string{bang->name},
                             .help = {},
                             .url = std::move(*url),
                             .iconHost = std::string{bang->host}};
}

}  // namespace

std::string_view SearchStrip::current(const std::optional<Url>& page) {
    const auto isShown = [&](const Vertical& each) {
        return each.item && page && page->hasQueryItem(each.item->name, each.item->value);
    };
    const auto found = std::ranges::find_if(verticals | std::views::reverse, isShown);
    return found != std::ranges::rend(verticals) ? found->name : verticals.front().name;
}

std::vector<SearchStrip::Link> SearchStrip::kinds(const std::optional<Url>& page) const {
    std::vector<Link> links;
    if (engine != Prefs::Engine::google) return links;
    const auto shown = current(page);
    for (const Vertical& each : verticals) {
        auto url = kindURL(each, query);
        if (!url) continue;
        links.push_back({.name = std::string{each.name},
                         .help = {},
                         .url = std::move(*url),
                         .iconHost = {},
                         .isCurrent = each.name == shown});
    }
    return links;
}

std::optional<SearchStrip::Link> SearchStrip::maps() const { return bangLink("!m", query); }

std::vector<SearchStrip::Link> SearchStrip::engines() const {
    std::vector<Link> links;
    for (const Prefs::EngineFacts& each : Prefs::engines) {
        auto url = each.engine != engine ? Prefs::searchURL(each.engine, query) : std::nullopt;
        if (!url) continue;
        const std::string name{each.shownName};
        links.push_back({.name = name,
                         .help = tr("Search {1}", name),
                         .url = std::move(*url),
                         .iconHost = std::string{each.site}});
    }
    return links;
}

std::vector<SearchStrip::Link> SearchStrip::sites() const {
    std::vector<Link> links;
    for (const std::string_view key : {"!w", "!yt"}) {
        auto link = bangLink(key, query);
        if (!link) continue;
        link->help = tr("Search {1}", link->name);
        links.push_back(std::move(*link));
    }
    return links;
}

}  // namespace orvu

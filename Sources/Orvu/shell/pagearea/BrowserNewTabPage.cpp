#include "shell/pagearea/BrowserNewTabPage.h"

#include <algorithm>
#include <ranges>

namespace orvu {

std::vector<Visit> BrowserNewTabPage::recentSites(const std::vector<Visit>& visits) {
    std::vector<Visit> sites;
    std::vector<std::string> seen;
    for (const Visit& visit : std::views::reverse(visits)) {
        const auto host = visit.url.host();
        if (!host || host->empty() || std::ranges::find(seen, *host) != seen.end()) continue;
        seen.push_back(*host);
        sites.push_back(visit);
        if (sites.size() == sitesLimit) break;
    }
    return sites;
}

}  // namespace orvu

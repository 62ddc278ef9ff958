#include "notch/candidates/PastSearches.h"

#include "profiles/Preferences.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace orvu {

const PastSearches::Search* PastSearches::insert(std::size_t place, const Url& url) {
    const auto next = places_.begin() + static_cast<std::ptrdiff_t>(place);
    auto page = Prefs::searchQuery(url);
    if (!page) {
        places_.emplace(next);
        return nullptr;
    }
    FoldedText folded{page->query};
    return &**places_.emplace(next, Search{std::move(page->query), std::move(folded)});
}

void PastSearches::erase(std::size_t place) {
    places_.erase(places_.begin() + static_cast<std::ptrdiff_t>(place));
}

std::vector<PastSearches::Search> PastSearches::latest(const FoldedText& typed,
                                                       std::size_t limit) const {
    std::vector<Search> found;
    for (const auto& place : places_ | std::views::reverse) {
        if (found.size() == limit) break;
        if (!place || !place->folded.beginsWith(typed)) continue;
        const bool isTypedInFull = !typed.text().empty() && place->folded == typed;
        const bool isKnown =
            std::ranges::find(found, place->folded, &Search::folded) != found.end();
        if (!isTypedInFull && !isKnown) found.push_back(*place);
    }
    return found;
}

}  // namespace orvu

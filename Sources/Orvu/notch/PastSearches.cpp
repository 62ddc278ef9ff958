#include "notch/PastSearches.h"

#include "profiles/Preferences.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace orvu {

const PastSearches::Search* PastSearches::append(const Url& url) {
    auto& place = places_.emplace_back();
    if (auto page = Prefs::searchQuery(url)) {
        FoldedText folded{page->query};
        place = Search{std::move(page->query), std::move(folded)};
    }
    return place ? &*place : nullptr;
}

void PastSearches::dropFirst(std::size_t count) {
    places_.erase(places_.begin(), places_.begin() + static_cast<std::ptrdiff_t>(count));
}

void PastSearches::keepFirst(std::size_t count) { places_.resize(count); }

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

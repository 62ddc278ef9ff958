#include "notch/NotchSnapshot.h"

#include "core/BrowserStore.h"
#include "foundation/FoldedText.h"
#include "foundation/Text.h"

#include <algorithm>
#include <utility>

namespace orvu {

void NotchSnapshot::take(const BrowserStore& store, const BrowserTab* current) {
    setVisits(store.visits());
    setLatestOfToday(store.latestOfToday(todayCount));
    setBookmarks(store.bookmarks().items());
    std::vector<NotchTab> tabs;
    tabs.reserve(store.tabs().size());
    for (const auto& tab : store.tabs()) tabs.push_back({tab->id(), tab->title(), tab->url()});
    setTabs(std::move(tabs), current ? std::optional{current->id()} : std::nullopt);
}

void NotchSnapshot::setVisits(const std::vector<Visit>& visits) {
    const auto first = visits.empty() ? visits_.end() : std::ranges::find(visits_, visits.front());
    dropFirstVisits(static_cast<std::size_t>(first - visits_.begin()));
    const auto differing = std::ranges::mismatch(visits_, visits);
    keepFirstVisits(static_cast<std::size_t>(differing.in1 - visits_.begin()));
    std::for_each(differing.in2, visits.end(), [this](const Visit& visit) { appendVisit(visit); });
}

void NotchSnapshot::setLatestOfToday(std::vector<Visit> visits) { today_ = std::move(visits); }

void NotchSnapshot::setBookmarks(const std::vector<Bookmark>& bookmarks) {
    if (bookmarks == bookmarks_) return;
    bookmarks_ = bookmarks;
    bookmarkRows_.clear();
    topHits_.clear(TopHits::Source::bookmarks);
    for (const auto& [id, url, title, date] : bookmarks_) {
        appendRow(bookmarkRows_, title, lowercased(url.absoluteString()));
        topHits_.append(TopHits::Source::bookmarks, url);
    }
}

void NotchSnapshot::setTabs(std::vector<NotchTab> tabs, const std::optional<Uuid>& current) {
    currentTab_ = current;
    if (tabs == tabs_) return;
    tabs_ = std::move(tabs);
    tabRows_.clear();
    topHits_.clear(TopHits::Source::tabs);
    for (const auto& [id, title, url] : tabs_) {
        appendRow(tabRows_, title, url ? siteName(*url) : "");
        topHits_.append(TopHits::Source::tabs, url);
    }
}

void NotchSnapshot::dropFirstVisits(std::size_t count) {
    visits_.erase(visits_.begin(), visits_.begin() + static_cast<std::ptrdiff_t>(count));
    visitRows_.dropFirst(count);
    pastSearches_.dropFirst(count);
    topHits_.dropFirst(TopHits::Source::visits, count);
}

void NotchSnapshot::keepFirstVisits(std::size_t count) {
    visits_.erase(visits_.begin() + static_cast<std::ptrdiff_t>(count), visits_.end());
    visitRows_.keepFirst(count);
    pastSearches_.keepFirst(count);
    topHits_.keepFirst(TopHits::Source::visits, count);
}

void NotchSnapshot::appendVisit(const Visit& visit) {
    visits_.push_back(visit);
    topHits_.append(TopHits::Source::visits, visit.url);
    if (const auto* const search = pastSearches_.append(visit.url)) {
        visitRows_.append("", "");
        longest_ = std::max(longest_, search->folded.text().size());
    } else {
        appendRow(visitRows_, visit.title, lowercased(visit.url.absoluteString()));
    }
}

void NotchSnapshot::appendRow(TitledRows& rows, const std::string& title,
                              std::string_view address) {
    const FoldedText folded{title};
    rows.append(folded.text(), address);
    longest_ = std::max({longest_, folded.text().size(), address.size()});
}

}  // namespace orvu

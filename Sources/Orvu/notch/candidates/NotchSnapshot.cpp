#include "notch/candidates/NotchSnapshot.h"

#include "core/BrowserStore.h"
#include "foundation/text/FoldedText.h"
#include "foundation/text/Text.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

/// How many single changes of a history are followed. Each moves what stands behind it, so that
/// after more of them it is faster to prepare the rest anew.
constexpr std::size_t maxEdits = 32;

}  // namespace

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
    std::size_t edits = 0;
    for (std::size_t place = 0; place < visits.size(); ++place) {
        if (edits > maxEdits) eraseVisitsFrom(place);
        const auto gone = visitsBefore(visits[place], place);
        edits += gone.value_or(1);
        for (std::size_t count = 0; count < gone.value_or(0); ++count) eraseVisit(place);
        if (!gone) insertVisit(place, visits[place]);
    }
    eraseVisitsFrom(visits.size());
}

void NotchSnapshot::setLatestOfToday(std::vector<Visit> visits) { today_ = std::move(visits); }

void NotchSnapshot::setBookmarks(const std::vector<Bookmark>& bookmarks) {
    if (bookmarks == bookmarks_) return;
    bookmarks_ = bookmarks;
    bookmarkRows_.clear();
    topHits_.clear(TopHits::Source::bookmarks);
    for (const auto& [id, url, title, date] : bookmarks_) {
        insertRow(bookmarkRows_, bookmarkRows_.size(), title, lowercased(url.absoluteString()));
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
        insertRow(tabRows_, tabRows_.size(), title, url ? siteName(*url) : "");
        topHits_.append(TopHits::Source::tabs, url);
        // The host of a top hit keeps what the host beside a title has lost.
        if (url) longest_ = std::max(longest_, url->absoluteString().size());
    }
}

std::optional<std::size_t> NotchSnapshot::visitsBefore(const Visit& visit,
                                                       std::size_t place) const {
    const std::size_t end = std::min(visits_.size(), place + maxEdits);
    for (std::size_t at = place; at < end; ++at) {
        if (visits_[at] == visit) return at - place;
    }
    return std::nullopt;
}

void NotchSnapshot::insertVisit(std::size_t place, const Visit& visit) {
    visits_.insert(visits_.begin() + static_cast<std::ptrdiff_t>(place), visit);
    topHits_.insert(TopHits::Source::visits, place, visit.url);
    if (const auto* const search = pastSearches_.insert(place, visit.url)) {
        visitRows_.insert(place, "", "");
        longest_ = std::max(longest_, search->folded.text().size());
    } else {
        insertRow(visitRows_, place, visit.title, lowercased(visit.url.absoluteString()));
    }
}

void NotchSnapshot::eraseVisit(std::size_t place) {
    visits_.erase(visits_.begin() + static_cast<std::ptrdiff_t>(place));
    topHits_.erase(TopHits::Source::visits, place);
    pastSearches_.erase(place);
    visitRows_.erase(place);
}

void NotchSnapshot::eraseVisitsFrom(std::size_t place) {
    while (visits_.size() > place) eraseVisit(visits_.size() - 1);
}

void NotchSnapshot::insertRow(TitledRows& rows, std::size_t row, const std::string& title,
                              std::string_view address) {
    const FoldedText folded{title};
    rows.insert(row, folded.text(), address);
    longest_ = std::max({longest_, folded.text().size(), address.size()});
}

}  // namespace orvu

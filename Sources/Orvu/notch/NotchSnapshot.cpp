#include "notch/NotchSnapshot.h"

#include "core/BrowserStore.h"

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

void NotchSnapshot::setVisits(const std::vector<Visit>& visits) { visits_ = visits; }

void NotchSnapshot::setLatestOfToday(std::vector<Visit> visits) { today_ = std::move(visits); }

void NotchSnapshot::setBookmarks(const std::vector<BookmarkStore::Bookmark>& bookmarks) {
    bookmarks_ = bookmarks;
}

void NotchSnapshot::setTabs(std::vector<NotchTab> tabs, const std::optional<Uuid>& current) {
    tabs_ = std::move(tabs);
    currentTab_ = current;
}

}  // namespace orvu

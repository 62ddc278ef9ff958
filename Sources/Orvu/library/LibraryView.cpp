#include "library/LibraryView.h"

#include "foundation/text/DisplayHost.h"
#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace orvu {
namespace {

/// More than a row shows, and little enough to lay out at once.
constexpr std::size_t titleLimit = 300;

/// The record of an entry; null if it has left `list`.
template <class Record>
const Record* find(const std::vector<Record>& list, const LibraryEntry& entry) {
    if (entry.isHeader()) return nullptr;
    if (entry.place < list.size() && list[entry.place].id == *entry.id) return &list[entry.place];
    const auto found = std::ranges::find(list, *entry.id, &Record::id);
    return found != list.end() ? &*found : nullptr;
}

std::string shownTitle(const std::string& title, const Url& url) {
    std::string shown = oneLine(title, titleLimit);
    return shown.empty() ? oneLine(siteName(url), titleLimit) : shown;
}

std::vector<std::size_t> allPlaces(std::size_t count) {
    std::vector<std::size_t> places(count);
    std::ranges::copy(std::views::iota(std::size_t{0}, count), places.begin());
    return places;
}

}  // namespace

std::string LibraryView::Row::accessibleName() const {
    std::string name = title;
    for (const std::string& part : {host, time}) {
        if (!part.empty() && part != name) name.append(name.empty() ? "" : ", ").append(part);
    }
    return name;
}

LibraryView::LibraryView(BrowserStore& store, AppServices& services)
    : store_(store), bookmarks_(store.bookmarks()), platform_(services.platform()) {
    store_.connectChanged(sigc::mem_fun(*this, &LibraryView::historyMayHaveChanged));
    bookmarks_.connectChanged(sigc::mem_fun(*this, &LibraryView::setStale));
    query.connectChanged(sigc::mem_fun(*this, &LibraryView::setStale));
    confirmClear.connectChanged(sigc::mem_fun(changed_, &sigc::signal<void()>::emit));
}

LibrarySection LibraryView::section() const {
    return store_.librarySection().value_or(Section::history);
}

const LibraryView::SectionFacts& LibraryView::facts() const {
    return *std::ranges::find(sections, section(), &SectionFacts::section);
}

std::string LibraryView::prompt() const { return facts().prompt; }

const std::vector<LibraryEntry>& LibraryView::entries() {
    if (std::exchange(isStale_, false)) entries_ = makeEntries();
    return entries_;
}

std::vector<LibraryEntry> LibraryView::makeEntries() {
    switch (section()) {
        case Section::bookmarks:
            return bookmarkEntries(bookmarks_, query.get());
        case Section::closed:
            return closedEntries(store_.closedTabs(), query.get());
        case Section::history:
            break;
    }
    return historyEntries();
}

std::vector<LibraryEntry> LibraryView::historyEntries() {
    const auto& visits = store_.visits();
    if (query.get().empty()) {
        return entriesByDay(visits, allPlaces(visits.size()), platform_.calendar);
    }
    if (std::exchange(isFoldedStale_, false)) folded_.take(visits);
    return entriesByDay(visits, folded_.matching(query.get()), platform_.calendar);
}

std::optional<LibraryView::Page> LibraryView::pageOf(const LibraryEntry& entry) const {
    const auto page = [](const auto* record) {
        return record ? std::optional{Page{record->url, record->title}} : std::nullopt;
    };
    switch (entry.section) {
        case Section::history:
            return page(find(store_.visits(), entry));
        case Section::bookmarks:
            return page(find(bookmarks_.items(), entry));
        case Section::closed:
            break;
    }
    return page(find(store_.closedTabs(), entry));
}

std::optional<LibraryView::Row> LibraryView::row(const LibraryEntry& entry) const {
    const auto page = pageOf(entry);
    if (!page) return std::nullopt;
    const bool hasTime = entry.section != Section::bookmarks;
    return Row{page->url, shownTitle(page->title, page->url),
               displayHost(page->url.host().value_or("")),
               hasTime ? platform_.locale.shortTime(entry.date, platform_.calendar) : ""};
}

std::string LibraryView::dayTitle(const LibraryEntry& header) const {
    const Date today = platform_.calendar.startOfDay(platform_.loop.now());
    if (header.date == today) return phrase("Today");
    return platform_.locale.completeDate(header.date, platform_.calendar);
}

std::vector<LibraryView::MenuLine> LibraryView::menu() const {
    std::vector<MenuLine> lines{{phrase("Open in New Tab"), Action::openInNewTab},
                                {phrase("Copy Link"), Action::copyLink}};
    if (section() == Section::history)
        lines.push_back({phrase("Delete from History"), Action::remove});
    if (section() == Section::bookmarks)
        lines.push_back({phrase("Delete Bookmark"), Action::remove});
    return lines;
}

bool LibraryView::canClear() const {
    return section() == Section::history && !store_.visits().empty();
}

void LibraryView::show(Section section) { store_.setLibrarySection(section); }

void LibraryView::backToPage() { store_.setLibrarySection({}); }

void LibraryView::open(const LibraryEntry& entry) {
    const auto page = pageOf(entry);
    if (!page) return;
    store_.open(page->url.absoluteString(), BrowserStore::NewTab::no);
    backToPage();
}

void LibraryView::openInNewTab(const LibraryEntry& entry) {
    const auto page = pageOf(entry);
    if (!page) return;
    store_.newTab(page->url, BrowserStore::Select::yes);
    backToPage();
}

void LibraryView::copyLink(const LibraryEntry& entry) {
    if (const auto page = pageOf(entry)) platform_.pasteboard.setString(page->url.absoluteString());
}

void LibraryView::remove(const LibraryEntry& entry) {
    // Each record is copied, as it is to leave its list.
    if (entry.section == Section::history) {
        if (const Visit* const visit = find(store_.visits(), entry))
            store_.removeVisit(Visit{*visit});
    } else if (entry.section == Section::bookmarks) {
        const auto* const bookmark = find(bookmarks_.items(), entry);
        if (bookmark) bookmarks_.remove(BookmarkStore::Bookmark{*bookmark});
    }
}

void LibraryView::perform(Action action, const LibraryEntry& entry) {
    switch (action) {
        case Action::openInNewTab:
            return openInNewTab(entry);
        case Action::copyLink:
            return copyLink(entry);
        case Action::remove:
            return remove(entry);
    }
}

void LibraryView::askToClear() {
    if (canClear()) confirmClear.set(true);
}

void LibraryView::clear(Clearing clearing) {
    confirmClear.set(false);
    if (clearing == Clearing::cancel) return;
    std::optional<Date> since;
    if (clearing == Clearing::today) since = platform_.calendar.startOfDay(platform_.loop.now());
    store_.clearHistory(since);
}

void LibraryView::historyMayHaveChanged() {
    isFoldedStale_ = true;
    setStale();
}

void LibraryView::setStale() {
    isStale_ = true;
    changed_.emit();
}

}  // namespace orvu

#include "core/BrowserStore.h"

#include "core/AddressResolution.h"
#include "foundation/text/Text.h"
#include "profiles/Preferences.h"

#include <algorithm>
#include <ranges>

namespace orvu {

BrowserStore::BrowserStore(AppServices& services, bool isPrivate, Profile profile)
    : services_(services),
      defaults_(services.platform().defaults),
      loop_(services.platform().loop),
      calendar_(services.platform().calendar),
      isPrivate_(isPrivate),
      profile_(std::move(profile)),
      bookmarks_(services.bookmarks().store(profile_)),
      configuration_(services.platform().engine.makeConfiguration(
          isPrivate ? WebsiteDataStore::nonPersistentDataStore()
          : profile_.id == Profile::personalID
              ? WebsiteDataStore::defaultDataStore()
              : WebsiteDataStore::dataStoreForIdentifier(profile_.id))),
      reader_(services.platform().sound) {
    const Operation operation{*this};
    configure();
    reader_.connectChanged(sigc::mem_fun(*this, &BrowserStore::readerChanged));
    if (!isPrivate_) restore();
    if (tabs_.empty()) newTab(std::nullopt, Select::yes);
    const auto first =
        std::ranges::find_if(tabs_, [](const auto& tab) { return !tab->isPinned(); });
    activeID_ = (first != tabs_.end() ? *first : tabs_.front())->id();
    if (isPrivate_) return;
    services.notifications().addObserver(
        Prefs::clearHistory,
        sigc::bind(sigc::mem_fun(*this, &BrowserStore::clearHistory), std::optional<Date>{}));
    services.notifications().addObserver(historyImported,
                                         sigc::mem_fun(*this, &BrowserStore::reloadVisits));
}

BrowserStore::~BrowserStore() {
    // The pages go one by one, and the end of one may move the focus into another: none of that
    // may come back to a store that is half gone.
    notify_callbacks();
}

void BrowserStore::configure() {
    configuration_->setElementFullscreenEnabled(true);
    configuration_->setApplicationNameForUserAgent("Version/" + std::string{safariVersion} +
                                                   " Safari/605.1.15");
    if (services_.settings().blockTrackers.get()) {
        services_.trackers().install(configuration_->userContentController());
    }
}

std::shared_ptr<BrowserTab> BrowserStore::tab(const Uuid& id) const {
    const auto found = find(id);
    return found != tabs_.end() ? *found : nullptr;
}

std::shared_ptr<BrowserTab> BrowserStore::active() const {
    return activeID_ ? tab(*activeID_) : nullptr;
}

BrowserStore::TabList BrowserStore::tabsWhere(const auto& condition) const {
    TabList result;
    std::ranges::copy_if(tabs_, std::back_inserter(result),
                         [&](const auto& tab) { return condition(*tab); });
    return result;
}

BrowserStore::TabList BrowserStore::pinned() const {
    return tabsWhere([](const BrowserTab& tab) { return tab.isPinned(); });
}

BrowserStore::TabList BrowserStore::unpinned() const {
    return tabsWhere([](const BrowserTab& tab) { return !tab.isPinned(); });
}

BrowserStore::TabList BrowserStore::ungrouped() const {
    return tabsWhere([this](const BrowserTab& tab) { return !tab.isPinned() && !groupOf(tab); });
}

BrowserStore::TabList BrowserStore::tabs(const TabGroup& group) const {
    return tabsWhere(
        [&](const BrowserTab& tab) { return !tab.isPinned() && tab.groupID() == group.id; });
}

BrowserStore::TabList BrowserStore::splitTabs() const {
    if (split_.size() != 2) return {};
    TabList pair;
    for (const auto& id : split_) {
        if (auto found = tab(id)) pair.push_back(std::move(found));
    }
    return pair.size() == 2 ? pair : TabList{};
}

void BrowserStore::select(const BrowserTab& tab) {
    if (!holds(tab)) return;
    const Operation operation{*this};
    const bool leavesPair = !split_.empty() && !isInSplit(tab.id());
    if (activeID_ != tab.id() || leavesPair) changes_.note();
    activeID_ = tab.id();
    if (leavesPair) split_.clear();
    setLibrarySection(std::nullopt);
}

void BrowserStore::selectTab(int number) {
    TabList list = pinned();
    std::ranges::copy(unpinned(), std::back_inserter(list));
    if (list.empty()) return;
    const auto count = static_cast<int>(list.size());
    const int place = number == 9 ? count : number;
    if (place < 1 || place > count) return;
    const Operation operation{*this};
    setLibrarySection(std::nullopt);
    const Uuid& target = list[static_cast<std::size_t>(place - 1)]->id();
    if (activeID_ == target) return;
    activeID_ = target;  // the pair stays: a number is a look elsewhere, not a choice
    changes_.note();
}

void BrowserStore::open(std::string_view text, NewTab inNewTab) {
    const auto url = resolveAddress(text, services_.settings());
    if (!url) return;
    const auto front = active();
    setLibrarySection(std::nullopt);
    if (inNewTab == NewTab::no && front) {
        front->webView().load(*url);
    } else {
        newTab(url, Select::yes);
    }
}

BrowserTab& BrowserStore::newTab(const std::optional<Url>& url, Select select) {
    return addTab({url}, select);
}

BrowserTab& BrowserStore::addTab(const UrlRequest& request, Select select) {
    const Operation operation{*this};
    const auto tab = std::make_shared<BrowserTab>(
        *configuration_, request, loop_, services_.favicons(), permissions(), persistence());
    tab->onVisit = sigc::mem_fun(*this, &BrowserStore::recordVisit);
    tab->onDownload = sigc::mem_fun(*this, &BrowserStore::saveSession);
    tab->onOpenInNewTab = sigc::mem_fun(*this, &BrowserStore::openInBackground);
    tab->webView().onFocus =
        sigc::bind(sigc::mem_fun(*this, &BrowserStore::tabTookFocus), tab->id());
    tabs_.push_back(tab);
    if (select == Select::yes) {
        activeID_ = tab->id();
        split_.clear();
        setLibrarySection(std::nullopt);
    }
    changes_.note();
    saveSession();
    return *tab;
}

void BrowserStore::close(const BrowserTab& tab) {
    const auto found = find(tab.id());
    if (found == tabs_.end()) return;
    const Operation operation{*this};
    const auto closed = *found;

    changes_.note();
    if (isInSplit(closed->id())) split_.clear();
    rememberClosed(*closed);
    closed->webView().stopLoading();
    const auto place = find(closed->id());  // an observer of the tab may have changed the list
    if (place == tabs_.end()) return;
    const auto index = static_cast<std::size_t>(place - tabs_.begin());
    tabs_.erase(place);
    if (activeID_ == closed->id()) {
        activeID_.reset();
        if (!tabs_.empty()) activeID_ = tabs_[std::min(index, tabs_.size() - 1)]->id();
    }
    if (tabs_.empty()) newTab(std::nullopt, Select::yes);
    saveSession();
}

void BrowserStore::rememberClosed(const BrowserTab& tab) {
    if (!tab.url()) return;
    closedTabs_.push_back({Uuid::random(), *tab.url(), tab.title(), loop_.now()});
    if (closedTabs_.size() > closedTabsLimit) {
        const auto surplus = static_cast<std::ptrdiff_t>(closedTabs_.size() - closedTabsLimit);
        closedTabs_.erase(closedTabs_.begin(), closedTabs_.begin() + surplus);
    }
}

void BrowserStore::reopenClosed() {
    if (closedTabs_.empty()) return;
    const Operation operation{*this};
    const Url url = closedTabs_.back().url;
    closedTabs_.pop_back();
    newTab(url, Select::yes);
}

void BrowserStore::park(const BrowserTab& tab) {
    if (!holds(tab) || !tab.url() || !canBeStored(*tab.url())) return;
    const Operation operation{*this};
    readShelf();
    shelf_.insert(shelf_.begin(), {Uuid::random(), *tab.url(), tab.title()});
    save(shelf_, SettingsKeys::browserShelf);
    close(tab);
}

void BrowserStore::unpark(const Parked& parked) {
    const Operation operation{*this};
    const Parked target = parked;  // the argument may stand on the shelf
    readShelf();
    std::erase_if(shelf_, [&](const Parked& each) { return each.id == target.id; });
    save(shelf_, SettingsKeys::browserShelf);
    newTab(target.url, Select::yes);
}

/// Another window of the profile may have changed the shelf meanwhile.
void BrowserStore::readShelf() {
    if (!isSaved()) return;
    auto stored = load<Parked>(SettingsKeys::browserShelf).value_or(std::vector<Parked>{});
    if (stored == shelf_) return;
    shelf_ = std::move(stored);
    changes_.note();
}

void BrowserStore::togglePin(BrowserTab& tab) {
    if (!holds(tab)) return;
    const Operation operation{*this};
    tab.setPinned(!tab.isPinned());
    std::ranges::stable_partition(tabs_, [](const auto& each) { return each->isPinned(); });
    changes_.note();
    saveSession();
}

void BrowserStore::toggleSideBySide() {
    if (!split_.empty()) return endSideBySide();
    const auto front = active();
    if (!front) return;
    const auto reversed = tabs_ | std::views::reverse;
    const auto partner =
        std::ranges::find_if(reversed, [&](const auto& tab) { return tab != front && tab->url(); });
    if (partner == reversed.end()) return;
    const Operation operation{*this};
    split_ = {front->id(), (*partner)->id()};
    setLibrarySection(std::nullopt);
    changes_.note();
}

void BrowserStore::openSideBySide(const BrowserTab& tab) {
    const auto front = active();
    if (!front || front->id() == tab.id() || !holds(tab)) return;
    const Operation operation{*this};
    split_ = {front->id(), tab.id()};
    activeID_ = tab.id();
    setLibrarySection(std::nullopt);
    changes_.note();
}

void BrowserStore::endSideBySide() {
    if (split_.empty()) return;
    const Operation operation{*this};
    split_.clear();
    changes_.note();
}

void BrowserStore::toggleReader() {
    const auto tab = active();
    if (!tab || tab->isNewTab()) return;
    setLibrarySection(std::nullopt);
    reader_.toggle(tab);
}

void BrowserStore::readerChanged() {
    const Operation operation{*this};
    changes_.note();
}

void BrowserStore::rewind(const Visit& visit) {
    const Url url = visit.url;  // the argument may stand in the history
    const auto front = active();
    setLibrarySection(std::nullopt);
    if (front && !front->isNewTab()) {
        front->webView().load(url);
    } else {
        open(url.absoluteString(), NewTab::no);
    }
}

void BrowserStore::setLibrarySection(std::optional<LibrarySection> section) {
    if (librarySection_ == section) return;
    const Operation operation{*this};
    librarySection_ = section;
    changes_.note();
}

BrowserStore::TabList::const_iterator BrowserStore::find(const Uuid& id) const {
    return std::ranges::find_if(tabs_, [&](const auto& tab) { return tab->id() == id; });
}

bool BrowserStore::isInSplit(const Uuid& id) const {
    return std::ranges::find(split_, id) != split_.end();
}

void BrowserStore::openInBackground(const UrlRequest& request) {
    if (!request.url) return;
    const Uuid id = addTab(request, Select::no).id();
    openedBehind_.emit(id);
}

void BrowserStore::tabTookFocus(const Uuid& id) {
    if (!isInSplit(id) || activeID_ == id) return;
    const Operation operation{*this};
    activeID_ = id;
    changes_.note();
}

}  // namespace orvu

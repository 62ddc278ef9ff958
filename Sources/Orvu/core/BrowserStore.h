#pragma once

#include "core/AppServices.h"
#include "core/BrowserTab.h"
#include "core/history/VisitHistory.h"
#include "core/LibrarySection.h"
#include "core/Records.h"
#include "core/TabGroup.h"
#include "core/WindowReader.h"
#include "foundation/Signal.h"
#include "foundation/async/TaskScope.h"
#include "site/icons/SiteIcons.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The state of one browser window: its tabs, which of them is in front, the side-by-side pair,
/// the shelf, the groups, and the history that it records. Every change is made by an operation
/// here, which saves it and then tells the observers once.
///
/// There is always at least one tab. A tab, group or shelf entry given to an operation is taken
/// as an identity: one that has left its list makes the operation do nothing, `unpark` apart.
///
/// In a private window nothing is read from or written to the user defaults; only bookmarks are
/// the profile's real ones.
class BrowserStore : public sigc::trackable {
public:
    using TabList = std::vector<std::shared_ptr<BrowserTab>>;
    enum class NewTab { no, yes };
    enum class Select { no, yes };
    using Reader = WindowReader::Shown;

    /// How the engine's browser of the same family names its version.
    static constexpr std::string_view safariVersion = "26.0";
    /// Broadcast when visits were added to a stored history.
    static constexpr std::string_view historyImported = "OrvuHistoryImported";
    static constexpr std::size_t closedTabsLimit = 50;
    static constexpr std::size_t visitsLimit = VisitHistory::limit;
    static constexpr int visitsDays = VisitHistory::days;
    static constexpr std::size_t groupNameLimit = 40;

    /// Restores what the profile's last window left, as far as the setting allows; a private
    /// window starts empty. `services` must outlive the store.
    BrowserStore(AppServices& services, bool isPrivate, Profile profile);
    ~BrowserStore();
    BrowserStore(const BrowserStore&) = delete;
    BrowserStore& operator=(const BrowserStore&) = delete;

    // --- What stands -----------------------------------------------------------------------
    [[nodiscard]] bool isPrivate() const { return isPrivate_; }
    [[nodiscard]] const Profile& profile() const { return profile_; }
    [[nodiscard]] BookmarkStore& bookmarks() const { return bookmarks_; }
    /// The icons of sites, as this window may ask for them.
    [[nodiscard]] SiteIcons icons() const { return {services_.favicons(), persistence()}; }
    /// What sites may do, to be asked with `persistence`.
    [[nodiscard]] SitePermissions& permissions() const { return services_.permissions(); }
    [[nodiscard]] MainLoop& loop() const { return loop_; }
    /// What others do about this window that is to end with it.
    [[nodiscard]] TaskScope& work() { return work_; }
    /// How articles look, in this window as in all others.
    [[nodiscard]] ReaderLook& readerLook() const { return services_.readerLook(); }
    /// Whether what this window meets may leave a trace on the disk.
    [[nodiscard]] Persistence persistence() const {
        return isPrivate_ ? Persistence::ephemeral : Persistence::persistent;
    }
    /// Every live tab, in column order.
    [[nodiscard]] const TabList& tabs() const { return tabs_; }
    [[nodiscard]] const std::optional<Uuid>& activeID() const { return activeID_; }
    /// Empty, or the two tabs of the pair; the first is the one that was active when it was made.
    [[nodiscard]] const std::vector<Uuid>& split() const { return split_; }
    /// Parked tabs, the newest first.
    [[nodiscard]] const std::vector<Parked>& shelf() const { return shelf_; }
    /// The history as this window knows it, oldest first.
    [[nodiscard]] const std::vector<Visit>& visits() const { return history_.visits(); }
    /// Oldest first.
    [[nodiscard]] const std::vector<ClosedTab>& closedTabs() const { return closedTabs_; }
    /// In order of creation.
    [[nodiscard]] const std::vector<TabGroup>& groups() const { return groups_; }
    /// What the library shows over the page; nothing where it is closed. Whatever brings a page to
    /// the front closes it.
    [[nodiscard]] const std::optional<LibrarySection>& librarySection() const {
        return librarySection_;
    }
    /// The article of the window's one reader. Its tab may have gone, or gone elsewhere.
    [[nodiscard]] const std::optional<Reader>& reader() const { return reader_.shown(); }
    /// The article that stands in the place of a tab's page; null if the page itself is shown.
    [[nodiscard]] std::shared_ptr<const ReaderArticle> readerArticle(const BrowserTab& tab) const {
        return reader_.article(tab);
    }

    /// The tab of that identity; null if the window has none.
    [[nodiscard]] std::shared_ptr<BrowserTab> tab(const Uuid& id) const;
    [[nodiscard]] bool holds(const BrowserTab& tab) const { return this->tab(tab.id()) != nullptr; }
    /// The group of that identity; null if there is none. It stands until the next change.
    [[nodiscard]] const TabGroup* group(const Uuid& id) const;
    /// The group that a tab is in; null for none, and for one that has ended.
    [[nodiscard]] const TabGroup* groupOf(const BrowserTab& tab) const;
    /// The tab in front.
    [[nodiscard]] std::shared_ptr<BrowserTab> active() const;
    [[nodiscard]] TabList pinned() const;
    [[nodiscard]] TabList unpinned() const;
    /// The tabs that are neither pinned nor in one of the groups.
    [[nodiscard]] TabList ungrouped() const;
    /// The unpinned tabs of a group.
    [[nodiscard]] TabList tabs(const TabGroup& group) const;
    /// The side-by-side pair, or an empty list.
    [[nodiscard]] TabList splitTabs() const;
    /// The visits of the present day.
    [[nodiscard]] std::vector<Visit> todayVisits() const;
    /// The last `count` of them, the newest first.
    [[nodiscard]] std::vector<Visit> latestOfToday(std::size_t count) const;

    // --- Tabs ------------------------------------------------------------------------------
    void select(const BrowserTab& tab);
    /// 1 to 8 count the pinned tabs first and then the others; 9 is the last of them.
    void selectTab(int number);
    /// Goes where `text` leads, in the active tab or a new one; nowhere if it leads nowhere.
    void open(std::string_view text, NewTab newTab);
    BrowserTab& newTab(const std::optional<Url>& url, Select select);
    void close(const BrowserTab& tab);
    void reopenClosed();
    void park(const BrowserTab& tab);
    void unpark(const Parked& parked);
    void togglePin(BrowserTab& tab);
    /// Ends the pair, or pairs the active tab with the last other tab that has a page.
    void toggleSideBySide();
    /// Pairs the active tab with `tab` and brings that one to the front.
    void openSideBySide(const BrowserTab& tab);
    void endSideBySide();
    /// Ends the reader if it is the active tab's. Otherwise asks that tab's page for its article,
    /// to show it when it comes; if there is none, a sound says so.
    void toggleReader();
    /// Goes to a visit again, in the active tab.
    void rewind(const Visit& visit);

    /// Opens the library, shows another of its lists, or closes it with nothing.
    void setLibrarySection(std::optional<LibrarySection> section);

    // --- Groups ----------------------------------------------------------------------------
    /// Makes a group of one tab; nothing if the tab has left the window.
    std::optional<TabGroup> newGroup(BrowserTab& tab);
    void moveToGroup(BrowserTab& tab, const TabGroup& group);
    void removeFromGroup(BrowserTab& tab);
    /// A blank name keeps the old one; a long one is cut.
    void rename(const TabGroup& group, std::string_view name);
    void recolor(const TabGroup& group);
    void toggleCollapsed(const TabGroup& group);
    /// Ends the group and keeps its tabs.
    void ungroup(const TabGroup& group);
    /// Ends the group and closes its tabs; pinned ones stay.
    void closeGroup(const TabGroup& group);

    // --- History ---------------------------------------------------------------------------
    /// Forgets the visits at or after `since`, or all, and in both cases the closed tabs.
    void clearHistory(const std::optional<Date>& since);
    void removeVisit(const Visit& visit);
    /// Adds visits to the stored history of a profile, whether a window shows it or not, and
    /// broadcasts `historyImported`. Visits of one address in one second are one. Gives the
    /// number of new ones.
    static int importVisits(const std::vector<Visit>& visits, const Profile& profile,
                            UserDefaults& defaults, NotificationCenter& notifications);

    /// Calls `slot` with each tab that opened behind the one in front, after the change.
    sigc::connection connectOpenedBehind(const sigc::slot<void(const Uuid&)>& slot) {
        return openedBehind_.connect(slot);
    }
    /// Calls `slot` once after each operation that changed something.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changes_.connect(slot);
    }

private:
    /// One operation, however many others it calls: what it writes is stored as a whole, and only
    /// then does the signal go out.
    struct Operation {
        explicit Operation(BrowserStore& store) : change(store.changes_), batch(store.defaults_) {}
        ChangeSignal::Scope change;
        UserDefaults::Batch batch;  // last, so that it ends first
    };

    void configure();
    void restore();
    void restoreTabs();
    void reloadVisits();

    void readShelf();
    template <class Record>
    [[nodiscard]] std::optional<std::vector<Record>> load(const SettingKey& key) const;
    template <class Record>
    void save(const std::vector<Record>& records, const SettingKey& key);
    void saveVisits();
    void saveSession();

    [[nodiscard]] TabList tabsWhere(const auto& condition) const;
    [[nodiscard]] TabList::const_iterator find(const Uuid& id) const;
    [[nodiscard]] TabGroup* findGroup(const TabGroup& group);
    [[nodiscard]] bool isInSplit(const Uuid& id) const;
    void recordVisit(const BrowserTab& tab);
    BrowserTab& addTab(const UrlRequest& request, Select select);
    void openInBackground(const UrlRequest& request);
    void tabTookFocus(const Uuid& id);
    void readerChanged();
    void rememberClosed(const BrowserTab& tab);
    void pruneGroups();
    void changedGroups();

    AppServices& services_;
    UserDefaults& defaults_;
    MainLoop& loop_;
    const Calendar& calendar_;
    /// Whether what the person does is to be found again by the next run: not in a private window, and
    /// not where the profile was deleted.
    [[nodiscard]] bool isSaved() const {
        return !isPrivate_ && !services_.profiles().wasRemoved(profile_.id);
    }

    const bool isPrivate_;
    const Profile profile_;
    BookmarkStore& bookmarks_;
    std::unique_ptr<WebConfiguration> configuration_;

    TabList tabs_;
    std::optional<Uuid> activeID_;
    std::vector<Uuid> split_;
    std::vector<Parked> shelf_;
    VisitHistory history_;
    std::vector<ClosedTab> closedTabs_;
    std::vector<TabGroup> groups_;
    std::optional<LibrarySection> librarySection_;
    bool restoring_ = false;
    ChangeSignal changes_;
    WindowReader reader_;
    sigc::signal<void(const Uuid&)> openedBehind_;
    TaskScope work_;  // last, so that what reads and works ends first
};

}  // namespace orvu

#include "support/StoreWorld.h"

#include <array>
#include <chrono>
#include <random>
#include <set>

namespace orvu {
namespace {

/// One window that a person without a plan uses. It keeps what has left the window, too, so
/// that operations come late.
class RandomTrace {
public:
    explicit RandomTrace(std::uint32_t seed) : random_(seed) { open(); }

    /// Does one operation, chosen at random. Gives its name.
    std::string step() {
        const std::size_t choice = below(operations.size());
        remember();
        pinToggled_ = nullptr;
        signals_ = 0;
        world.defaults.written.clear();
        (this->*operations[choice].second)();
        return operations[choice].first;
    }

    /// What is wrong with the state; empty if nothing is.
    [[nodiscard]] std::string complaint() const {
        if (store->tabs().empty()) return "no tab is left";
        if (!store->active()) return "the front tab isn't in the list";
        if (!store->split().empty() && store->split().size() != 2) return "a pair isn't two";
        if (store->closedTabs().size() > 50) return "too many closed tabs";
        if (store->visits().size() > 5000) return "too many visits";
        if (signals_ > 1) return "more than one signal";
        std::set<Uuid> identities;
        for (const auto& tab : store->tabs()) identities.insert(tab->id());
        if (identities.size() != store->tabs().size()) return "a tab stands twice";
        for (const auto& group : store->groups()) {
            if (group.color < 0 || group.color > 5) return "a colour is out of range";
            if (characters(group.name) == 0) return "a group has no name";
        }
        if (pinToggled_) {
            if (!std::ranges::is_partitioned(store->tabs(),
                                             [](const auto& tab) { return tab->isPinned(); })) {
                return "pinned tabs aren't in front";
            }
        }
        if (wrote("browserSession") && sessionInMemory() != storedSession()) {
            return "the saved session isn't that of the window";
        }
        if (wrote("browserGroups") &&
            world.storedRecords<TabGroup>("browserGroups") != store->groups()) {
            return "the saved groups aren't those of the window";
        }
        if (wrote("browserShelf") &&
            world.storedRecords<Parked>("browserShelf") != store->shelf()) {
            return "the saved shelf isn't that of the window";
        }
        if (world.storedRecords<Visit>("browserVisits").value_or(std::vector<Visit>{}) !=
            store->visits()) {
            return "the saved visits aren't those of the window";
        }
        return "";
    }

    /// Compares a window of the next run with what was saved last; empty if all came back.
    [[nodiscard]] std::string complaintOfTheNextRun() {
        // Only what is saved can come back: a load that is under way is not, nor is an empty tab.
        store->togglePin(*store->tabs()[0]);
        const auto saved = storedSession();
        const auto shelf = store->shelf();
        const auto visits = store->visits();
        std::vector<TabGroup> groups = store->groups();
        std::erase_if(groups, [&](const TabGroup& group) {
            return std::ranges::none_of(saved,
                                        [&](const SavedTab& tab) { return tab.group == group.id; });
        });
        std::vector<SavedTab> expected = saved;
        for (auto& tab : expected) {
            if (std::ranges::find(groups, tab.group, &TabGroup::id) == groups.end()) {
                tab.group.reset();
            }
        }

        open();

        if (sessionInMemory() != expected) return "the tabs came back differently";
        if (store->groups() != groups) return "the groups came back differently";
        if (store->shelf() != shelf) return "the shelf came back differently";
        if (store->visits() != visits) return "the visits came back differently";
        if (expected.empty() && addresses(store->tabs()) != std::vector<std::string>{""}) {
            return "an empty session is not one empty tab";
        }
        return complaint();
    }

private:
    using Tab = std::shared_ptr<BrowserTab>;
    using Operation = void (RandomTrace::*)();

    void open() {
        signals_ = 0;
        pinToggled_ = nullptr;
        world.defaults.written.clear();
        store = std::make_unique<BrowserStore>(world.services, false, Profile::personal());
        store->connectChanged([this] { ++signals_; });
    }
    [[nodiscard]] std::size_t below(std::size_t limit) { return random_() % limit; }
    [[nodiscard]] bool coin() { return below(2) == 0; }
    [[nodiscard]] Url anyUrl() {
        static constexpr std::array texts{"https://a.example/", "https://www.b.example/x?y#z",
                                          "http://c.example",   "file:///home/page.html",
                                          "about:blank",        "https://münchen.example/ä"};
        return url(texts[below(texts.size())]);
    }
    [[nodiscard]] static std::size_t characters(const std::string& text) { return text.size(); }

    void remember() {
        for (const auto& tab : store->tabs()) {
            if (std::ranges::find(known_, tab) == known_.end()) known_.push_back(tab);
        }
        for (const auto& group : store->groups()) {
            if (std::ranges::find(groups_, group.id, &TabGroup::id) == groups_.end()) {
                groups_.push_back(group);
            }
        }
        for (const auto& parked : store->shelf()) parked_.push_back(parked);
        if (parked_.size() > 20) parked_.erase(parked_.begin(), parked_.end() - 20);
    }
    /// A tab of the window, or now and then one that may have left it.
    [[nodiscard]] Tab anyTab() {
        return below(4) == 0 ? known_[below(known_.size())]
                             : store->tabs()[below(store->tabs().size())];
    }
    [[nodiscard]] TabGroup anyGroup() {
        if (!store->groups().empty() && below(4) != 0) {
            return store->groups()[below(store->groups().size())];
        }
        return groups_.empty() ? TabGroup{Uuid::random(), "x", 0, false}
                               : groups_[below(groups_.size())];
    }

    [[nodiscard]] bool wrote(std::string_view key) const {
        return std::ranges::find(world.defaults.written, key) != world.defaults.written.end();
    }
    [[nodiscard]] std::vector<SavedTab> sessionInMemory() const {
        std::vector<SavedTab> session;
        for (const auto& tab : store->tabs()) {
            if (tab->url()) session.push_back({*tab->url(), tab->isPinned(), tab->groupID()});
        }
        return session;
    }
    [[nodiscard]] std::vector<SavedTab> storedSession() const {
        return world.storedRecords<SavedTab>("browserSession").value();
    }

    void newTab() {
        store->newTab(coin() ? std::optional{anyUrl()} : std::nullopt,
                      coin() ? BrowserStore::Select::yes : BrowserStore::Select::no);
    }
    void openText() {
        static constexpr std::array texts{"", "gnu.org", "one two", "!w x", "about:blank", "\xFF"};
        store->open(texts[below(texts.size())],
                    coin() ? BrowserStore::NewTab::yes : BrowserStore::NewTab::no);
    }
    void select() { store->select(*anyTab()); }
    void selectNumber() { store->selectTab(static_cast<int>(below(12)) - 1); }
    void close() { store->close(*anyTab()); }
    void reopen() { store->reopenClosed(); }
    void park() { store->park(*anyTab()); }
    void unpark() {
        if (!parked_.empty()) store->unpark(parked_[below(parked_.size())]);
    }
    void togglePin() {
        const Tab tab = anyTab();
        const bool before = tab->isPinned();
        store->togglePin(*tab);
        if (tab->isPinned() != before) pinToggled_ = tab.get();
    }
    void toggleSideBySide() { store->toggleSideBySide(); }
    void openSideBySide() { store->openSideBySide(*anyTab()); }
    void endSideBySide() { store->endSideBySide(); }
    void focus() { page(*anyTab()).onFocus(); }
    void navigate() { page(*anyTab()).load(anyUrl()); }
    void finish() { page(*anyTab()).finish(coin() ? "Title" : ""); }
    void fail() { page(*anyTab()).fail(); }
    void openInBackground() { anyTab()->onOpenInNewTab({anyUrl()}); }
    void rewind() {
        const auto& visits = store->visits();
        if (!visits.empty()) store->rewind(visits[below(visits.size())]);
    }
    void newGroup() { store->newGroup(*anyTab()); }
    void moveToGroup() { store->moveToGroup(*anyTab(), anyGroup()); }
    void removeFromGroup() { store->removeFromGroup(*anyTab()); }
    void rename() {
        static constexpr std::array names{"", " ", "Name", "\u00A0é "};
        store->rename(anyGroup(), names[below(names.size())]);
    }
    void recolor() { store->recolor(anyGroup()); }
    void collapse() { store->toggleCollapsed(anyGroup()); }
    void ungroup() { store->ungroup(anyGroup()); }
    void closeGroup() { store->closeGroup(anyGroup()); }
    void removeVisit() {
        const auto& visits = store->visits();
        if (!visits.empty()) store->removeVisit(visits[below(visits.size())]);
    }
    void clearHistory() {
        const Date hourAgo = world.loop.now().after(-std::chrono::hours{1});
        store->clearHistory(coin() ? std::optional{hourAgo} : std::nullopt);
    }
    void importVisits() {
        BrowserStore::importVisits({{Uuid::random(), anyUrl(), "Imported", world.loop.now()}},
                                   Profile::personal(), world.defaults, world.notifications);
    }
    void wait() { world.loop.advance(std::chrono::minutes{below(90)}); }

    static const std::vector<std::pair<std::string, Operation>> operations;

    StoreWorld world;
    std::unique_ptr<BrowserStore> store;
    std::mt19937 random_;
    std::vector<Tab> known_;
    std::vector<TabGroup> groups_;
    std::vector<Parked> parked_;
    const BrowserTab* pinToggled_ = nullptr;
    int signals_ = 0;
};

const std::vector<std::pair<std::string, RandomTrace::Operation>> RandomTrace::operations{
    {"newTab", &RandomTrace::newTab},
    {"newTab", &RandomTrace::newTab},
    {"open", &RandomTrace::openText},
    {"select", &RandomTrace::select},
    {"selectTab", &RandomTrace::selectNumber},
    {"close", &RandomTrace::close},
    {"reopenClosed", &RandomTrace::reopen},
    {"park", &RandomTrace::park},
    {"unpark", &RandomTrace::unpark},
    {"togglePin", &RandomTrace::togglePin},
    {"toggleSideBySide", &RandomTrace::toggleSideBySide},
    {"openSideBySide", &RandomTrace::openSideBySide},
    {"endSideBySide", &RandomTrace::endSideBySide},
    {"focus", &RandomTrace::focus},
    {"navigate", &RandomTrace::navigate},
    {"finish", &RandomTrace::finish},
    {"finish", &RandomTrace::finish},
    {"fail", &RandomTrace::fail},
    {"openInBackground", &RandomTrace::openInBackground},
    {"rewind", &RandomTrace::rewind},
    {"newGroup", &RandomTrace::newGroup},
    {"moveToGroup", &RandomTrace::moveToGroup},
    {"moveToGroup", &RandomTrace::moveToGroup},
    {"removeFromGroup", &RandomTrace::removeFromGroup},
    {"rename", &RandomTrace::rename},
    {"recolor", &RandomTrace::recolor},
    {"toggleCollapsed", &RandomTrace::collapse},
    {"ungroup", &RandomTrace::ungroup},
    {"closeGroup", &RandomTrace::closeGroup},
    {"removeVisit", &RandomTrace::removeVisit},
    {"clearHistory", &RandomTrace::clearHistory},
    {"importVisits", &RandomTrace::importVisits},
    {"wait", &RandomTrace::wait},
};

TEST(BrowserStorePropertyTest, AllInvariantsHoldAfterEveryOperationOfTwoThousandRandomTraces) {
    for (std::uint32_t seed = 1; seed <= 2000; ++seed) {
        RandomTrace trace{seed};
        std::string story;
        for (int number = 0; number < 40; ++number) {
            story.append(" ").append(trace.step());
            ASSERT_EQ(trace.complaint(), "") << "seed " << seed << ":" << story;
        }
        ASSERT_EQ(trace.complaintOfTheNextRun(), "") << "seed " << seed << ":" << story;
    }
}

TEST(BrowserStorePropertyTest, ClosedTabsStayWithinTheirLimitInALongTrace) {
    RandomTrace trace{7};
    std::string story;

    for (int number = 0; number < 2000; ++number) {
        story = trace.step();
        ASSERT_EQ(trace.complaint(), "") << number << ": " << story;
    }
}

}  // namespace
}  // namespace orvu

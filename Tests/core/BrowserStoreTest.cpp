#include "core/BrowserStore.h"

#include "profiles/Preferences.h"
#include "support/StoreWorld.h"

#include <functional>
#include <limits>

namespace orvu {
namespace {

using BrowserStoreTest = StoreTest;

// --- Creation ----------------------------------------------------------------------------------

TEST_F(BrowserStoreTest, AFreshProfileStartsWithOneActiveEmptyTab) {
    const auto store = openStore();

    EXPECT_EQ(addresses(store->tabs()), Strings{""});
    EXPECT_EQ(store->activeID(), store->tabs()[0]->id());
    EXPECT_TRUE(store->split().empty());
    EXPECT_TRUE(store->shelf().empty());
    EXPECT_TRUE(store->visits().empty());
    EXPECT_TRUE(store->closedTabs().empty());
    EXPECT_TRUE(store->groups().empty());
    EXPECT_EQ(world.stored("browserSession"), "[]");
    EXPECT_EQ(world.stored("browserGroups"), "[]");
}

TEST_F(BrowserStoreTest, EachKindOfWindowTakesItsOwnWebsiteData) {
    const BrowserStore personal{world.services, false, Profile::personal()};
    const BrowserStore work{world.services, false, world.work};
    const BrowserStore hidden{world.services, true, world.work};

    EXPECT_EQ(world.engine.stores, (std::vector<WebsiteDataStore>{
                                       WebsiteDataStore::defaultDataStore(),
                                       WebsiteDataStore::dataStoreForIdentifier(world.work.id),
                                       WebsiteDataStore::nonPersistentDataStore(),
                                   }));
}

TEST_F(BrowserStoreTest, PagesMayFillTheScreenAndTheUserAgentEndsLikeTheEnginesOwnBrowser) {
    const auto store = openStore();

    EXPECT_TRUE(world.engine.fullscreen);
    EXPECT_EQ(world.engine.applicationName, "Version/26.0 Safari/605.1.15");
}

TEST_F(BrowserStoreTest, TheSessionComesBackWithPinsAndGroupsAndLoadsAtOnce) {
    const TabGroup group{Uuid::random(), "Reading", 3, true};
    world.storeRecords<TabGroup>("browserGroups", {group});
    world.storeRecords<SavedTab>(
        "browserSession",
        {{url(a), true, std::nullopt}, {url(b), false, group.id}, {url(c), false, std::nullopt}});

    const auto store = openStore();

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b, c}));
    EXPECT_EQ(addresses(store->pinned()), Strings{a});
    EXPECT_EQ(addresses(store->tabs(group)), Strings{b});
    EXPECT_EQ(addresses(store->ungrouped()), Strings{c});
    EXPECT_EQ(store->groups(), std::vector{group});
    for (const auto& tab : store->tabs()) EXPECT_TRUE(tab->isLoading());
}

TEST_F(BrowserStoreTest, TheFirstTabThatIsNotPinnedIsInFrontAfterTheStart) {
    world.storeRecords<SavedTab>("browserSession", {{url(a), true, std::nullopt},
                                                    {url(b), false, std::nullopt},
                                                    {url(c), false, std::nullopt}});

    const auto store = openStore();

    EXPECT_EQ(front(*store), b);
}

TEST_F(BrowserStoreTest, TheFirstPinnedTabIsInFrontIfAllArePinned) {
    world.storeRecords<SavedTab>("browserSession",
                                 {{url(a), true, std::nullopt}, {url(b), true, std::nullopt}});

    const auto store = openStore();

    EXPECT_EQ(front(*store), a);
}

TEST_F(BrowserStoreTest, ATabWhoseGroupIsGoneComesBackUngroupedAndAGroupWithoutTabsNotAtAll) {
    const TabGroup lonely{Uuid::random(), "Nobody", 0, false};
    world.storeRecords<TabGroup>("browserGroups", {lonely});
    world.storeRecords<SavedTab>("browserSession", {{url(a), false, Uuid::random()}});

    const auto store = openStore();

    EXPECT_EQ(store->tabs()[0]->groupID(), std::nullopt);
    EXPECT_TRUE(store->groups().empty());
    EXPECT_EQ(world.stored("browserGroups"), "[]");
}

TEST_F(BrowserStoreTest, AGroupOfOnlyPinnedTabsIsRestored) {
    const TabGroup group{Uuid::random(), "Pins", 0, false};
    world.storeRecords<TabGroup>("browserGroups", {group});
    world.storeRecords<SavedTab>("browserSession", {{url(a), true, group.id}});

    const auto store = openStore();

    EXPECT_EQ(store->groups(), std::vector{group});
    EXPECT_EQ(store->tabs()[0]->groupID(), group.id);
}

TEST_F(BrowserStoreTest, WithoutRestoringOnlyShelfAndVisitsComeBack) {
    const Parked parked{Uuid::random(), url(c), "C"};
    const Visit visit{Uuid::random(), url(b), "B", world.loop.now()};
    const TabGroup group{Uuid::random(), "G", 0, false};
    world.storeRecords<Parked>("browserShelf", {parked});
    world.storeRecords<Visit>("browserVisits", {visit});
    world.storeRecords<TabGroup>("browserGroups", {group});
    world.storeRecords<SavedTab>("browserSession", {{url(a), false, group.id}});
    world.defaults.setBoolean("restoreTabs", false);

    const auto store = openStore();

    EXPECT_EQ(addresses(store->tabs()), Strings{""});
    EXPECT_TRUE(store->groups().empty());
    EXPECT_EQ(store->shelf(), std::vector{parked});
    EXPECT_EQ(store->visits(), std::vector{visit});
}

TEST_F(BrowserStoreTest, RestoredTabsLoadInTurnThePinnedOnesFirstAndThenAsTheyStandInTheColumn) {
    const TabGroup first{Uuid::random(), "First", 0, false};
    const TabGroup second{Uuid::random(), "Second", 1, false};
    world.storeRecords<TabGroup>("browserGroups", {first, second});
    world.storeRecords<SavedTab>("browserSession", {{url(a), false, std::nullopt},
                                                    {url(b), false, second.id},
                                                    {url(c), false, first.id},
                                                    {url(a), true, std::nullopt},
                                                    {url(b), true, second.id},
                                                    {url(c), false, Uuid::random()}});

    const auto store = openStore();

    std::vector<std::optional<std::size_t>> turns;
    for (const auto& tab : store->tabs()) turns.push_back(page(*tab).turn);
    EXPECT_EQ(turns, (std::vector<std::optional<std::size_t>>{3, 2, 1, 0, 0, 3}));
    for (const auto& tab : store->tabs()) {
        EXPECT_EQ(page(*tab).calls, Strings{"load " + tab->url()->absoluteString()});
    }
}

TEST_F(BrowserStoreTest, ATabThatThePersonOpensWaitsForNoTurn) {
    const auto store = openStore();

    BrowserTab& tab = store->newTab(url(a), BrowserStore::Select::no);

    EXPECT_EQ(page(tab).turn, std::nullopt);
    EXPECT_TRUE(tab.isLoading());
}

TEST_F(BrowserStoreTest, RestoringSavesTheWholeSessionOnceAndNeverAPartOfIt) {
    world.storeRecords<SavedTab>("browserSession",
                                 {{url(a), true, std::nullopt}, {url(b), false, std::nullopt}});
    const std::string before = world.stored("browserSession");

    const auto store = openStore();

    EXPECT_EQ(world.defaults.written, (Strings{"browserSession", "browserGroups"}));
    EXPECT_EQ(world.stored("browserSession"), before);
}

TEST_F(BrowserStoreTest, AProfileReadsAndWritesItsOwnKeysAlone) {
    world.storeRecords<SavedTab>("browserSession", {{url(a), false, std::nullopt}});
    const std::string session = scopedKey("browserSession", world.work);
    const std::string suffix = session.substr(session.find('.'));

    BrowserStore store{world.services, false, world.work};
    store.newTab(url(b), Select::yes);
    store.park(*store.active());
    visit(*store.active(), c);

    EXPECT_EQ(addresses(store.tabs()), Strings{c});
    for (const auto& key : world.defaults.written) EXPECT_TRUE(key.ends_with(suffix)) << key;
    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://a.example/","pinned":false}])");
    EXPECT_EQ(world.stored(session), R"([{"url":"https://c.example/","pinned":false}])");
}

// --- Lists, the front tab ----------------------------------------------------------------------

TEST_F(BrowserStoreTest, PinnedAndUnpinnedKeepTheOrderOfTheTabs) {
    const auto store = openStoreWith({a, b, c, d});
    tabAt(*store, b)->setPinned(true);
    tabAt(*store, d)->setPinned(true);

    EXPECT_EQ(addresses(store->pinned()), (Strings{b, d}));
    EXPECT_EQ(addresses(store->unpinned()), (Strings{a, c}));
}

TEST_F(BrowserStoreTest, SelectBringsATabToTheFrontWithOneSignalAndWritesNothing) {
    const auto store = openStoreWith({a, b});
    const ChangeCounter changes{*store};

    store->select(*tabAt(*store, a));

    EXPECT_EQ(front(*store), a);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreTest, SelectingTheFrontTabAgainSignalsNothing) {
    const auto store = openStoreWith({a, b});
    const ChangeCounter changes{*store};

    store->select(*tabAt(*store, b));

    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreTest, SelectingEitherHalfKeepsThePairAndAnyOtherTabEndsIt) {
    const auto store = openStoreWith({a, b, c});
    store->toggleSideBySide();
    const auto pair = store->split();

    store->select(*tabAt(*store, b));
    EXPECT_EQ(store->split(), pair);
    store->select(*tabAt(*store, c));
    EXPECT_EQ(store->split(), pair);
    store->select(*tabAt(*store, a));

    EXPECT_TRUE(store->split().empty());
    EXPECT_EQ(front(*store), a);
}

TEST_F(BrowserStoreTest, ANumberKeepsThePairWhereSelectingTheSameTabEndsIt) {
    const auto store = openStoreWith({a, b, c});
    store->toggleSideBySide();
    const auto pair = store->split();

    store->selectTab(1);
    EXPECT_EQ(front(*store), a);
    EXPECT_EQ(store->split(), pair);
    EXPECT_EQ(addresses(store->splitTabs()), (Strings{c, b}));
    store->select(*tabAt(*store, a));

    EXPECT_TRUE(store->split().empty());
}

TEST_F(BrowserStoreTest, NumbersCountThePinnedTabsFirstWhereverTheyStand) {
    const auto store = openStoreWith({a, b, c, d});
    tabAt(*store, b)->setPinned(true);
    tabAt(*store, d)->setPinned(true);
    Strings fronts;

    for (const int number : {1, 2, 3, 4}) {
        store->selectTab(number);
        fronts.push_back(front(*store));
    }

    EXPECT_EQ(fronts, (Strings{b, d, a, c}));
}

TEST_F(BrowserStoreTest, NumbersPastTheEndDoNothing) {
    const auto store = openStoreWith({a, b});
    const ChangeCounter changes{*store};

    for (const int number : {3, 4, 5, 6, 7, 8, 0, -1, 10, std::numeric_limits<int>::max(),
                             std::numeric_limits<int>::min()}) {
        store->selectTab(number);
    }

    EXPECT_EQ(front(*store), b);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreTest, NumberNineIsTheLastOfTwoTabs) {
    const auto store = openStoreWith({a, b});
    store->selectTab(1);

    store->selectTab(9);

    EXPECT_EQ(front(*store), b);
}

TEST_F(BrowserStoreTest, NumberEightIsTheEighthAndNumberNineTheLastOfTwelveTabs) {
    Strings pages;
    for (int number = 1; number <= 12; ++number) pages.push_back(numbered(number));
    const auto store = openStoreWith(pages);

    store->selectTab(8);
    EXPECT_EQ(front(*store), numbered(8));
    store->selectTab(9);

    EXPECT_EQ(front(*store), numbered(12));
}

// --- Private windows ---------------------------------------------------------------------------

TEST_F(BrowserStoreTest, APrivateWindowStartsEmptyWhateverIsStored) {
    world.storeRecords<SavedTab>("browserSession", {{url(a), false, std::nullopt}});
    world.storeRecords<Parked>("browserShelf", {{Uuid::random(), url(b), "B"}});
    world.storeRecords<Visit>("browserVisits", {{Uuid::random(), url(c), "C", world.loop.now()}});

    const auto store = openPrivateStore();

    EXPECT_EQ(addresses(store->tabs()), Strings{""});
    EXPECT_TRUE(store->shelf().empty());
    EXPECT_TRUE(store->visits().empty());
    EXPECT_TRUE(store->groups().empty());
}

TEST_F(BrowserStoreTest, APrivateWindowWritesNoKeyWhateverTheOperation) {
    const auto store = openPrivateStore();

    store->open("a.example", NewTab::no);
    page(*store->active()).finish("A");
    store->newTab(url(b), Select::yes);
    page(*store->active()).finish("B");
    store->newTab(url(c), Select::no);
    store->toggleSideBySide();
    store->selectTab(1);
    store->togglePin(*store->active());
    const auto group = store->newGroup(*store->active());
    store->moveToGroup(*tabAt(*store, b), *group);
    store->rename(*group, "Secret");
    store->recolor(*group);
    store->toggleCollapsed(*group);
    store->removeFromGroup(*tabAt(*store, b));
    store->park(*tabAt(*store, b));
    EXPECT_EQ(addresses(store->shelf()), Strings{b});
    store->unpark(store->shelf().front());
    store->park(*store->active());
    store->reopenClosed();
    store->rewind({Uuid::random(), url(d), "D", world.loop.now()});
    store->ungroup(*group);
    store->closeGroup(*store->newGroup(*store->active()));
    store->removeVisit({Uuid::random(), url(d), "D", world.loop.now()});
    store->clearHistory(std::nullopt);
    world.notifications.post(Prefs::clearHistory);
    world.notifications.post(BrowserStore::historyImported);

    EXPECT_TRUE(world.defaults.written.empty());
    EXPECT_TRUE(world.defaults.values.empty());
    EXPECT_TRUE(world.defaults.removed.empty());
    EXPECT_TRUE(store->visits().empty());
}

TEST_F(BrowserStoreTest, ClosedTabsGroupsAndPairsWorkInAPrivateWindow) {
    const auto store = openPrivateStore();
    store->newTab(url(a), Select::yes);
    store->newTab(url(b), Select::yes);

    store->newGroup(*tabAt(*store, a));
    store->toggleSideBySide();
    EXPECT_EQ(addresses(store->splitTabs()), (Strings{b, a}));
    store->close(*tabAt(*store, b));

    EXPECT_EQ(addresses(store->closedTabs()), Strings{b});
    EXPECT_EQ(store->groups().size(), 1U);
}

TEST_F(BrowserStoreTest, BroadcastsAboutHistoryLeaveAPrivateWindowAlone) {
    const auto store = openPrivateStore();
    store->close(store->newTab(url(a), Select::yes));
    world.storeRecords<Visit>("browserVisits", {{Uuid::random(), url(c), "C", world.loop.now()}});
    const ChangeCounter changes{*store};

    world.notifications.post(Prefs::clearHistory);
    world.notifications.post(BrowserStore::historyImported);

    EXPECT_EQ(addresses(store->closedTabs()), Strings{a});
    EXPECT_TRUE(store->visits().empty());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreTest, ABookmarkOfAPrivateWindowIsTheProfilesOwn) {
    const auto hidden = openPrivateStore();
    const auto store = openStore();

    hidden->bookmarks().toggle(url(a), "A");

    EXPECT_EQ(&hidden->bookmarks(), &store->bookmarks());
    EXPECT_EQ(addresses(store->bookmarks().items()), Strings{a});
    EXPECT_EQ(world.defaults.written.back(), "orvuBookmarks");
}

TEST_F(BrowserStoreTest, TheLibraryIsClosedAtFirstAndTellsWhenItShowsAnotherList) {
    const auto store = openStore();
    const ChangeCounter changes{*store};
    EXPECT_FALSE(store->librarySection());

    store->setLibrarySection(LibrarySection::history);
    store->setLibrarySection(LibrarySection::history);
    EXPECT_EQ(store->librarySection(), LibrarySection::history);
    EXPECT_EQ(changes.count(), 1);

    store->setLibrarySection(LibrarySection::closed);
    store->setLibrarySection({});
    EXPECT_FALSE(store->librarySection());
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(BrowserStoreTest, TheLibraryOfOneWindowIsNotThatOfAnotherAndIsNotKept) {
    const auto store = openStore();
    const auto other = openStore();
    world.defaults.written.clear();

    store->setLibrarySection(LibrarySection::bookmarks);

    EXPECT_FALSE(other->librarySection());
    EXPECT_EQ(world.defaults.written, Strings{});
}

TEST_F(BrowserStoreTest, WhateverBringsAPageToTheFrontClosesTheLibrary) {
    const auto store = openStoreWith({a, b, c});
    const auto first = tabAt(*store, a);
    const std::vector<std::function<void()>> roads{
        [&] { store->select(*store->active()); },
        [&] { store->selectTab(1); },
        [&] { store->selectTab(1); },
        [&] { store->open(b, NewTab::no); },
        [&] { store->open(b, NewTab::yes); },
        [&] { store->newTab(std::nullopt, Select::yes); },
        [&] { store->openSideBySide(*first); },
        [&] {
            store->endSideBySide();
            store->toggleSideBySide();
        },
        [&] {
            store->close(*first);
            store->reopenClosed();
        }};
    for (std::size_t road = 0; road < roads.size(); ++road) {
        store->setLibrarySection(LibrarySection::history);
        roads[road]();
        EXPECT_FALSE(store->librarySection()) << road;
    }
}

TEST_F(BrowserStoreTest, WhatHappensBehindTheLibraryLeavesItOpen) {
    const auto store = openStoreWith({a, b, c});
    store->setLibrarySection(LibrarySection::history);

    store->newTab(url(d), Select::no);
    store->close(*tabAt(*store, a));
    store->togglePin(*tabAt(*store, b));

    EXPECT_TRUE(store->librarySection());
}

}  // namespace
}  // namespace orvu

#include "core/BrowserStore.h"

#include "profiles/Preferences.h"
#include "support/StoreWorld.h"

#include <limits>

namespace orvu {
namespace {

using BrowserStoreTest = StoreTest;

// --- Creation --------------------------------------------------------------------------------

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

// --- Opening ----------------------------------------------------------------------------------

TEST_F(BrowserStoreTest, OpenLoadsInTheFrontTabAndWritesNothingYet) {
    const auto store = openStore();
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->open(" gnu.org ", NewTab::no);

    EXPECT_EQ(page(*store->active()).calls, Strings{"load https://gnu.org"});
    EXPECT_EQ(store->tabs().size(), 1U);
    EXPECT_TRUE(world.defaults.written.empty());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreTest, OpenInANewTabAppendsItInFrontAndEndsThePair) {
    const auto store = openStoreWith({a, b});
    store->toggleSideBySide();
    const ChangeCounter changes{*store};

    store->open("one two", NewTab::yes);

    EXPECT_EQ(addresses(store->tabs()),
              (Strings{a, b, "https://www.google.com/search?q=one%20two"}));
    EXPECT_EQ(store->active(), store->tabs().back());
    EXPECT_TRUE(store->split().empty());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreTest, TextThatLeadsNowhereHasNoEffect) {
    const auto store = openStoreWith({a});
    const ChangeCounter changes{*store};

    for (const std::string_view text : {"", " \t\r\n ", "\u200B\uFEFF", "\u3000"}) {
        store->open(text, NewTab::no);
        store->open(text, NewTab::yes);
    }

    EXPECT_EQ(addresses(store->tabs()), Strings{a});
    EXPECT_EQ(page(*store->active()).calls, Strings{std::string{"load "} + a});
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreTest, HostileTextOpensASearchOrASiteButNeverASchemeOfItsOwn) {
    const Strings texts{std::string(100'000, 'x'),
                        std::string(100'000, '.') + "x",
                        "a." + std::string(100'000, 'b'),
                        "javascript:alert(1)",
                        "JAVASCRIPT:alert(1).x",
                        "data:text/html,<b>x</b>",
                        "http:",
                        "https://",
                        "http://[::1",
                        std::string("\0\x01 x", 4),
                        "\xFF\xFE\xFD",
                        "a\nb",
                        "\u202Egro.ung",
                        "!g " + std::string(100'000, '&'),
                        "%00%FF.%"};

    for (const auto& text : texts) {
        const auto store = openPrivateStore();
        store->open(text, NewTab::yes);
        ASSERT_EQ(store->tabs().size(), 2U) << text.substr(0, 60);
        const auto opened = store->active()->url();
        ASSERT_TRUE(opened) << text.substr(0, 60);
        EXPECT_EQ(opened->scheme(), "https") << text.substr(0, 60);
        EXPECT_TRUE(opened->host()) << text.substr(0, 60);
    }
}

TEST_F(BrowserStoreTest, ANewTabStandsAtTheEndInNoGroupAndIsSavedAtOnce) {
    const auto store = openStoreWith({a, b});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->select(*tabAt(*store, a));
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    const BrowserTab& tab = store->newTab(url(c), Select::yes);

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b, c}));
    EXPECT_EQ(store->activeID(), tab.id());
    EXPECT_EQ(tab.groupID(), std::nullopt);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, (Strings{"browserSession", "browserGroups"}));
    EXPECT_EQ(world.stored("browserSession"),
              R"([{"url":"https://a.example/","pinned":false,"group":")" + group->id.string() +
                  R"("},{"url":"https://b.example/","pinned":false},)"
                  R"({"url":"https://c.example/","pinned":false}])");
    EXPECT_EQ(world.stored("browserGroups"), R"([{"id":")" + group->id.string() +
                                                 R"(","name":"a.example","color":0,)"
                                                 R"("collapsed":false}])");
}

TEST_F(BrowserStoreTest, ANewTabInTheBackgroundLeavesTheFrontTabAndThePairAlone) {
    const auto store = openStoreWith({a, b});
    store->toggleSideBySide();
    const auto pair = store->split();

    store->newTab(std::nullopt, Select::no);

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b, ""}));
    EXPECT_EQ(front(*store), b);
    EXPECT_EQ(store->split(), pair);
}

TEST_F(BrowserStoreTest, WhatAPageOpensComesAsABackgroundTabAtTheEnd) {
    const auto store = openStoreWith({a, b});
    store->newGroup(*tabAt(*store, a));
    const ChangeCounter changes{*store};

    tabAt(*store, a)->onOpenInNewTab({url(c)});

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b, c}));
    EXPECT_EQ(front(*store), b);
    EXPECT_EQ(store->tabs().back()->groupID(), std::nullopt);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreTest, ARequestWithoutAnAddressOpensNothing) {
    const auto store = openStoreWith({a});
    const ChangeCounter changes{*store};

    store->active()->onOpenInNewTab({});

    EXPECT_EQ(addresses(store->tabs()), Strings{a});
    EXPECT_EQ(changes.count(), 0);
}

// --- Closing ----------------------------------------------------------------------------------

TEST_F(BrowserStoreTest, ClosingTheActiveTabActivatesTheTabBelowIt) {
    const auto store = openStoreWith({a, b, c});
    store->select(*tabAt(*store, b));

    store->close(*store->active());

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, c}));
    EXPECT_EQ(front(*store), c);
}

TEST_F(BrowserStoreTest, ClosingTheActiveLastTabActivatesTheNewLastTab) {
    const auto store = openStoreWith({a, b, c});

    store->close(*store->active());

    EXPECT_EQ(front(*store), b);
}

TEST_F(BrowserStoreTest, ClosingATabThatIsNotActiveLeavesTheFrontTab) {
    const auto store = openStoreWith({a, b, c});

    store->close(*tabAt(*store, a));

    EXPECT_EQ(addresses(store->tabs()), (Strings{b, c}));
    EXPECT_EQ(front(*store), c);
}

TEST_F(BrowserStoreTest, ClosingTheOnlyTabLeavesANewEmptyOneAndRemembersThePage) {
    const auto store = openStoreWith({a});
    const auto previous = store->active();
    page(*previous).finish("Title");
    world.loop.advance(std::chrono::seconds{7});
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->close(*previous);

    EXPECT_EQ(addresses(store->tabs()), Strings{""});
    EXPECT_EQ(store->activeID(), store->tabs()[0]->id());
    ASSERT_EQ(store->closedTabs().size(), 1U);
    const ClosedTab closed = store->closedTabs()[0];
    EXPECT_EQ(closed, (ClosedTab{closed.id, url(a), "Title", world.loop.now()}));
    EXPECT_NE(closed.id, previous->id());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.stored("browserSession"), "[]");
}

TEST_F(BrowserStoreTest, ClosingTheOnlyEmptyTabLeavesNoTrace) {
    const auto store = openStore();
    const auto previous = store->active();

    store->close(*previous);

    EXPECT_EQ(addresses(store->tabs()), Strings{""});
    EXPECT_NE(store->active(), previous);
    EXPECT_TRUE(store->closedTabs().empty());
}

TEST_F(BrowserStoreTest, ClosingStopsThePageWhileItIsStillInTheList) {
    const auto store = openStoreWith({a, b});
    const auto closed = tabAt(*store, a);
    std::size_t tabsAtStop = 0;
    std::size_t rememberedAtStop = 0;
    closed->connectChanged([&] {
        tabsAtStop = store->tabs().size();
        rememberedAtStop = store->closedTabs().size();
    });

    store->close(*closed);

    EXPECT_EQ(page(*closed).calls, (Strings{"load https://a.example/", "stopLoading"}));
    EXPECT_EQ(tabsAtStop, 2U);
    EXPECT_EQ(rememberedAtStop, 1U);
}

TEST_F(BrowserStoreTest, ClosingOneHalfEndsThePairAndKeepsTheOther) {
    const auto store = openStoreWith({a, b, c});
    store->toggleSideBySide();

    store->close(*tabAt(*store, b));

    EXPECT_TRUE(store->split().empty());
    EXPECT_EQ(addresses(store->tabs()), (Strings{a, c}));
    EXPECT_EQ(front(*store), c);
}

TEST_F(BrowserStoreTest, ClosingATabOutsideThePairKeepsIt) {
    const auto store = openStoreWith({a, b, c});
    store->toggleSideBySide();

    store->close(*tabAt(*store, a));

    EXPECT_EQ(addresses(store->splitTabs()), (Strings{c, b}));
}

TEST_F(BrowserStoreTest, PinnedTabsCloseLikeAnyOther) {
    const auto store = openStoreWith({a, b});
    store->togglePin(*tabAt(*store, a));

    store->close(*tabAt(*store, a));

    EXPECT_EQ(addresses(store->tabs()), Strings{b});
    EXPECT_EQ(addresses(store->closedTabs()), Strings{a});
}

TEST_F(BrowserStoreTest, ClosingATabTwiceDoesNothingTheSecondTime) {
    const auto store = openStoreWith({a, b});
    const auto closed = tabAt(*store, a);
    store->close(*closed);
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->close(*closed);

    EXPECT_EQ(addresses(store->closedTabs()), Strings{a});
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreTest, TheFirstOfFiftyOneClosedTabsIsForgotten) {
    const auto store = openStore();
    Strings expected;

    for (int number = 0; number < 51; ++number) {
        const std::string text = numbered(number);
        if (number > 0) expected.push_back(text);
        store->close(store->newTab(url(text), Select::no));
    }

    EXPECT_EQ(addresses(store->closedTabs()), expected);
    EXPECT_EQ(expected.size(), BrowserStore::closedTabsLimit);
}

TEST_F(BrowserStoreTest, ReopeningBringsTheLastClosedTabBackAtTheEndWithoutPinOrGroup) {
    const auto store = openStoreWith({a, b, c});
    store->newGroup(*tabAt(*store, a));
    store->togglePin(*tabAt(*store, a));
    store->close(*tabAt(*store, b));
    store->close(*tabAt(*store, a));
    const ChangeCounter changes{*store};

    store->reopenClosed();

    EXPECT_EQ(addresses(store->tabs()), (Strings{c, a}));
    EXPECT_EQ(front(*store), a);
    EXPECT_FALSE(store->active()->isPinned());
    EXPECT_EQ(store->active()->groupID(), std::nullopt);
    EXPECT_EQ(addresses(store->closedTabs()), Strings{b});
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreTest, ReopeningWithoutClosedTabsDoesNothing) {
    const auto store = openStoreWith({a});
    const ChangeCounter changes{*store};

    store->reopenClosed();

    EXPECT_EQ(addresses(store->tabs()), Strings{a});
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(world.defaults.written.empty());
}

// --- Shelf ------------------------------------------------------------------------------------

TEST_F(BrowserStoreTest, ParkingLeavesThePageOnTheShelfAndAmongTheClosedTabs) {
    const auto store = openStoreWith({a, b});
    const auto parked = tabAt(*store, a);
    page(*parked).setTitle("A");
    const ChangeCounter changes{*store};

    store->park(*parked);

    EXPECT_EQ(addresses(store->tabs()), Strings{b});
    ASSERT_EQ(store->shelf().size(), 1U);
    const Uuid id = store->shelf()[0].id;
    EXPECT_NE(id, parked->id());
    EXPECT_EQ(store->shelf(), (std::vector<Parked>{{id, url(a), "A"}}));
    EXPECT_EQ(addresses(store->closedTabs()), Strings{a});
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, (Strings{"browserShelf", "browserSession", "browserGroups"}));
    EXPECT_EQ(world.stored("browserShelf"),
              R"([{"id":")" + id.string() + R"(","url":"https://a.example/","title":"A"}])");
}

TEST_F(BrowserStoreTest, TheNewestParkedTabComesFirstAndReopeningLeavesTheShelf) {
    const auto store = openStoreWith({a, b, c});
    store->park(*tabAt(*store, a));
    store->park(*tabAt(*store, b));

    store->reopenClosed();

    EXPECT_EQ(addresses(store->shelf()), (Strings{b, a}));
    EXPECT_EQ(addresses(store->tabs()), (Strings{c, b}));
}

TEST_F(BrowserStoreTest, AnEmptyTabCannotBeParked) {
    const auto store = openStore();
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->park(*store->active());

    EXPECT_TRUE(store->shelf().empty());
    EXPECT_TRUE(world.defaults.written.empty());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreTest, ParkingATabThatHasLeftDoesNothing) {
    const auto store = openStoreWith({a, b});
    const auto closed = tabAt(*store, a);
    store->close(*closed);
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->park(*closed);

    EXPECT_TRUE(store->shelf().empty());
    EXPECT_TRUE(world.defaults.written.empty());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreTest, UnparkingTakesTheEntryOffTheShelfAndOpensItInFront) {
    const auto store = openStoreWith({a, b});
    store->park(*tabAt(*store, a));
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->unpark(store->shelf().front());

    EXPECT_TRUE(store->shelf().empty());
    EXPECT_EQ(addresses(store->tabs()), (Strings{b, a}));
    EXPECT_EQ(front(*store), a);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, (Strings{"browserShelf", "browserSession", "browserGroups"}));
    EXPECT_EQ(world.stored("browserShelf"), "[]");
}

TEST_F(BrowserStoreTest, UnparkingOpensTheRecordEvenIfItIsNoLongerOnTheShelf) {
    const auto store = openStoreWith({a});

    store->unpark({Uuid::random(), url(b), "B"});

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b}));
}

// --- Pins -------------------------------------------------------------------------------------

TEST_F(BrowserStoreTest, PinningGathersThePinnedTabsAtTheFrontAndKeepsEachKindsOrder) {
    const auto store = openStoreWith({a, b, c, d});
    const ChangeCounter changes{*store};

    store->togglePin(*tabAt(*store, c));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, (Strings{"browserSession", "browserGroups"}));
    store->togglePin(*tabAt(*store, b));
    EXPECT_EQ(addresses(store->tabs()), (Strings{c, b, a, d}));
    store->togglePin(*tabAt(*store, c));

    EXPECT_EQ(addresses(store->tabs()), (Strings{b, c, a, d}));
    EXPECT_EQ(front(*store), d);
    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://b.example/","pinned":true},)"
                                              R"({"url":"https://c.example/","pinned":false},)"
                                              R"({"url":"https://a.example/","pinned":false},)"
                                              R"({"url":"https://d.example/","pinned":false}])");
}

TEST_F(BrowserStoreTest, APinnedTabKeepsItsGroupAliveWithoutShowingInIt) {
    const auto store = openStoreWith({a, b});
    const auto group = store->newGroup(*tabAt(*store, a));

    store->togglePin(*tabAt(*store, a));

    EXPECT_EQ(tabAt(*store, a)->groupID(), group->id);
    EXPECT_TRUE(store->tabs(*group).empty());
    store->removeFromGroup(*tabAt(*store, b));
    EXPECT_EQ(store->groups(), std::vector{*group});
}

TEST_F(BrowserStoreTest, PinningATabThatHasLeftDoesNothing) {
    const auto store = openStoreWith({a, b});
    const auto closed = tabAt(*store, a);
    store->close(*closed);
    const ChangeCounter changes{*store};

    store->togglePin(*closed);

    EXPECT_FALSE(closed->isPinned());
    EXPECT_EQ(changes.count(), 0);
}

// --- Side by side -----------------------------------------------------------------------------

TEST_F(BrowserStoreTest, ThePairIsTheFrontTabAndTheLastOtherPage) {
    const auto store = openStoreWith({a, b, c});
    store->newTab(std::nullopt, Select::no);
    store->select(*tabAt(*store, a));
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->toggleSideBySide();

    EXPECT_EQ(addresses(store->splitTabs()), (Strings{a, c}));
    EXPECT_EQ(front(*store), a);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(world.defaults.written.empty());
    store->toggleSideBySide();
    EXPECT_TRUE(store->split().empty());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(BrowserStoreTest, AnEmptyFrontTabCanBeOneHalf) {
    const auto store = openStoreWith({a});
    store->newTab(std::nullopt, Select::yes);

    store->toggleSideBySide();

    EXPECT_EQ(addresses(store->splitTabs()), (Strings{"", a}));
}

TEST_F(BrowserStoreTest, WithOnlyEmptyTabsBesideTheFrontTabThereIsNoPair) {
    const auto store = openStoreWith({a});
    store->newTab(std::nullopt, Select::no);
    store->newTab(std::nullopt, Select::no);
    const ChangeCounter changes{*store};

    store->toggleSideBySide();

    EXPECT_TRUE(store->split().empty());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreTest, OpeningATabSideBySidePairsItBehindTheFrontTabAndActivatesIt) {
    const auto store = openStoreWith({a, b, c});
    const ChangeCounter changes{*store};

    store->openSideBySide(*tabAt(*store, a));

    EXPECT_EQ(addresses(store->splitTabs()), (Strings{c, a}));
    EXPECT_EQ(front(*store), a);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreTest, OpeningTheFrontTabOrOneThatLeftSideBySideDoesNothing) {
    const auto store = openStoreWith({a, b});
    const auto closed = tabAt(*store, a);
    store->close(*closed);
    const ChangeCounter changes{*store};

    store->openSideBySide(*store->active());
    store->openSideBySide(*closed);

    EXPECT_TRUE(store->split().empty());
    EXPECT_EQ(front(*store), b);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreTest, EndingThePairSignalsOnceAndWithoutAPairNotAtAll) {
    const auto store = openStoreWith({a, b});
    store->toggleSideBySide();
    const ChangeCounter changes{*store};

    store->endSideBySide();
    store->endSideBySide();

    EXPECT_TRUE(store->split().empty());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreTest, FocusInTheOtherHalfMakesItActiveAndKeepsThePair) {
    const auto store = openStoreWith({a, b});
    store->toggleSideBySide();
    const auto pair = store->split();
    const ChangeCounter changes{*store};

    page(*tabAt(*store, a)).onFocus();
    page(*tabAt(*store, a)).onFocus();

    EXPECT_EQ(front(*store), a);
    EXPECT_EQ(store->split(), pair);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreTest, FocusInATabOutsideThePairDoesNothing) {
    const auto store = openStoreWith({a, b, c});
    page(*tabAt(*store, a)).onFocus();
    EXPECT_EQ(front(*store), c);
    store->toggleSideBySide();
    const ChangeCounter changes{*store};

    page(*tabAt(*store, a)).onFocus();

    EXPECT_EQ(front(*store), c);
    EXPECT_EQ(changes.count(), 0);
}

// --- Rewind -----------------------------------------------------------------------------------

TEST_F(BrowserStoreTest, RewindLoadsTheVisitInTheFrontTabAndBecomesANewVisit) {
    const auto store = openStoreWith({a});
    page(*store->active()).finish("A");
    visit(*store->active(), b, "B");

    store->rewind(store->visits().front());
    page(*store->active()).finish("A");

    EXPECT_EQ(addresses(store->tabs()), Strings{a});
    EXPECT_EQ(addresses(store->visits()), (Strings{a, b, a}));
}

TEST_F(BrowserStoreTest, RewindOnAnEmptyTabOpensTheAddressThere) {
    const auto store = openStore();

    store->rewind({Uuid::random(), url(b), "B", world.loop.now()});

    EXPECT_EQ(addresses(store->tabs()), Strings{b});
}

// --- Re-entrancy and the end --------------------------------------------------------------------

TEST_F(BrowserStoreTest, AnObserverOfTheStoreMayCallBackAtOnce) {
    const auto store = openStoreWith({a, b});
    int calls = 0;
    store->connectChanged([&] {
        if (++calls == 1) store->newTab(url(c), Select::yes);
    });

    store->close(*tabAt(*store, a));

    EXPECT_EQ(addresses(store->tabs()), (Strings{b, c}));
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://b.example/","pinned":false},)"
                                              R"({"url":"https://c.example/","pinned":false}])");
}

TEST_F(BrowserStoreTest, AnObserverOfAPageMayOpenTabsWhileItCloses) {
    const auto store = openStoreWith({a, b});
    tabAt(*store, b)->connectChanged([&] {
        for (int number = 0; number < 20; ++number) store->newTab(url(c), Select::no);
    });

    store->close(*tabAt(*store, b));

    EXPECT_EQ(store->tabs().size(), 21U);
    EXPECT_EQ(front(*store), c);
    EXPECT_EQ(addresses(store->closedTabs()), Strings{b});
}

TEST_F(BrowserStoreTest, AnObserverOfAPageMayCloseItWhileItCloses) {
    const auto store = openStoreWith({a, b});
    const auto tab = tabAt(*store, a);
    tab->connectChanged([&] { store->close(*tab); });

    store->close(*tab);

    EXPECT_EQ(addresses(store->tabs()), Strings{b});
    EXPECT_EQ(front(*store), b);
}

TEST_F(BrowserStoreTest, AnObserverMayEndTheStore) {
    auto store = openStoreWith({a, b});
    store->connectChanged([&] { store.reset(); });

    store->select(*tabAt(*store, a));

    EXPECT_EQ(store, nullptr);
    EXPECT_TRUE(world.engine.views.empty());
}

TEST_F(BrowserStoreTest, ThePagesGoWithTheStore) {
    auto store = openStoreWith({a, b});
    EXPECT_EQ(world.engine.views.size(), 2U);

    store.reset();

    EXPECT_TRUE(world.engine.views.empty());
}

TEST_F(BrowserStoreTest, ATabThatOutlivesItsStoreTellsNobody) {
    auto store = openStoreWith({a});
    const auto tab = store->active();
    store.reset();
    world.defaults.written.clear();

    page(*tab).finish("A");
    tab->onOpenInNewTab({url(b)});
    page(*tab).onFocus();

    EXPECT_TRUE(world.defaults.written.empty());
    EXPECT_EQ(world.engine.views.size(), 1U);
}

TEST_F(BrowserStoreTest, FocusThatMovesWhileTheStoreEndsReachesItNoMore) {
    auto store = openStoreWith({a, b});
    store->toggleSideBySide();
    FakeWebView& second = page(*tabAt(*store, b));
    page(*tabAt(*store, a)).atEnd = [&second] { second.onFocus(); };
    const ChangeCounter changes{*store};

    store.reset();

    EXPECT_EQ(changes.count(), 0);
}

// --- Private windows ----------------------------------------------------------------------------

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

}  // namespace
}  // namespace orvu

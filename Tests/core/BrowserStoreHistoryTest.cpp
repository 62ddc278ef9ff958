#include "core/BrowserStore.h"

#include "support/HistoryWorld.h"

namespace orvu {
namespace {

using namespace std::chrono_literals;

using BrowserStoreHistoryTest = HistoryTest;

// --- Saving ------------------------------------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, WhatOneOperationWritesIsStoredAsAWhole) {
    const auto store = openStoreWith({a, a, a});
    world.defaults.batches = 0;

    page(*store->active()).finish("Title");
    store->newGroup(*store->tabs()[1]);
    store->park(*store->tabs()[2]);
    store->unpark(store->shelf().front());
    store->closeGroup(store->groups().front());
    store->clearHistory(std::nullopt);

    EXPECT_EQ(world.defaults.batches, 6);
    EXPECT_EQ(world.defaults.writtenAlone, Strings{});
}

TEST_F(BrowserStoreHistoryTest, WhatIsWrittenIsStoredBeforeTheSignalGoesOut) {
    const auto store = openStoreWith({a});
    int batchesAtSignal = -1;
    world.defaults.batches = 0;
    store->connectChanged([&] { batchesAtSignal = world.defaults.batches; });

    store->park(*store->active());

    EXPECT_EQ(batchesAtSignal, 1);
}

// --- Recording ---------------------------------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, AFinishedPageIsRecordedAndSavedWithTheSession) {
    world.loop.setNow(Date{780000000.25});
    const auto store = openStoreWith({a});
    const ChangeCounter changes{*store};

    page(*store->active()).finish("Title \"A\"");

    ASSERT_EQ(store->visits().size(), 1U);
    const Uuid id = store->visits()[0].id;
    EXPECT_EQ(store->visits(), (std::vector<Visit>{{id, url(a), "Title \"A\"", world.loop.now()}}));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written,
              (Strings{"browserVisits", "browserSession", "browserGroups"}));
    EXPECT_EQ(world.stored("browserVisits"),
              R"([{"id":")" + id.string() +
                  R"(","url":"https://a.example/","title":"Title \"A\"","date":780000000.25}])");
    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://a.example/","pinned":false}])");
}

TEST_F(BrowserStoreHistoryTest, TheSourceOfAPageIsATabAndNoVisit) {
    const auto store = openStoreWith({a});

    page(*store->active()).load(url("view-source:https://a.example/"));
    page(*store->active()).finish("");

    EXPECT_TRUE(store->visits().empty());
    EXPECT_EQ(world.stored("browserSession"),
              R"([{"url":"view-source:https://a.example/","pinned":false}])");
}

TEST_F(BrowserStoreHistoryTest, ANavigationReachesTheSavedSessionWhenItFinishes) {
    const auto store = openStoreWith({a});
    page(*store->active()).finish("A");

    page(*store->active()).load(url(b));
    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://a.example/","pinned":false}])");
    page(*store->active()).finish("B");

    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://b.example/","pinned":false}])");
}

TEST_F(BrowserStoreHistoryTest, AReloadGivesNoVisitAndNoSave) {
    const auto store = openStoreWith({a});
    page(*store->active()).finish("A");
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    world.loop.advance(24h);
    page(*store->active()).finish("A, later");

    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_EQ(store->visits()[0].title, "A");
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreHistoryTest, AnotherTabWithTheLastAddressGivesNoVisit) {
    const auto store = openStoreWith({a});
    page(*store->active()).finish("A");
    BrowserTab& second = store->newTab(url(a), Select::yes);
    world.defaults.written.clear();

    page(second).finish("A");

    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreHistoryTest, GoingThereAndBackGivesThreeVisits) {
    const auto store = openStore();

    for (const auto& address : {a, b, a}) visit(*store->active(), address);

    EXPECT_EQ(addresses(store->visits()), (Strings{a, b, a}));
    EXPECT_EQ(storedVisits(), (Strings{a, b, a}));
}

TEST_F(BrowserStoreHistoryTest, APageWithoutAnAddressOrThatFailedGivesNoVisit) {
    const auto store = openStore();

    page(*store->active()).finish("Nowhere");
    page(*store->active()).load(url(b));
    page(*store->active()).fail();

    EXPECT_TRUE(store->visits().empty());
    EXPECT_EQ(addresses(store->tabs()), Strings{b});
}

TEST_F(BrowserStoreHistoryTest, ATabThatNeverShowedAPageIsSavedWithTheAddressItWasAskedFor) {
    auto store = openStoreWith({a, b});
    for (const auto& tab : store->tabs()) page(*tab).fail();
    store->togglePin(*tabAt(*store, b));
    store->park(*tabAt(*store, a));
    store.reset();

    const auto again = openStore();

    EXPECT_EQ(addresses(again->pinned()), Strings{b});
    EXPECT_EQ(addresses(again->shelf()), Strings{a});
}

TEST_F(BrowserStoreHistoryTest, AnAddressOfMoreThan8192BytesMakesNoVisit) {
    const auto store = openStore();
    const std::string longest = "https://a.example/" + std::string(8192 - 18, 'x');

    visit(*store->active(), longest + "x");
    EXPECT_TRUE(store->visits().empty());
    visit(*store->active(), longest);

    EXPECT_EQ(addresses(store->visits()), Strings{longest});
}

TEST_F(BrowserStoreHistoryTest, AnAddressOfMoreThan64KibibytesIsNotStored) {
    const auto store = openStore();
    const std::string longest = "https://a.example/" + std::string(64 * 1024 - 18, 'x');

    visit(*store->active(), longest);
    store->newTab(url(b), BrowserStore::Select::no);
    EXPECT_TRUE(world.stored("browserSession").contains(longest));
    visit(*store->active(), longest + "x");
    store->togglePin(*tabAt(*store, b));
    store->bookmarks().toggle(store->active()->url(), "long");
    store->park(*store->active());

    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://b.example/","pinned":true}])");
    EXPECT_TRUE(store->bookmarks().items().empty());
    EXPECT_TRUE(store->shelf().empty());
    EXPECT_EQ(store->bookmarks().add({{url(longest + "x"), "long"}, {url(b), "B"}}), 1);
}

TEST_F(BrowserStoreHistoryTest, AVisitKeepsTheTitleKnownAtTheFinishElseTheSitesName) {
    const auto store = openStoreWith({"https://www.a.example/page"});

    page(*store->active()).finish("");
    page(*store->active()).setTitle("Late");
    visit(*store->active(), "about:blank", "Blank");

    ASSERT_EQ(store->visits().size(), 2U);
    EXPECT_EQ(store->visits()[0].title, "a.example");
    EXPECT_EQ(store->visits()[1].title, "Blank");
}

TEST_F(BrowserStoreHistoryTest, VisitsOfAnySchemeAreRecorded) {
    const auto store = openStore();

    for (const auto& address : {"file:///home/x.html", "about:blank", "http://x.example/"}) {
        visit(*store->active(), address);
    }

    EXPECT_EQ(addresses(store->visits()),
              (Strings{"file:///home/x.html", "about:blank", "http://x.example/"}));
}

TEST_F(BrowserStoreHistoryTest, OneVisitBeyondTheLimitDropsTheOldest) {
    std::vector<Visit> full;
    Strings expected;
    for (int number = 0; number < 5000; ++number) {
        full.push_back(visitBefore(numbered(number), 1h));
        if (number > 0) expected.push_back(numbered(number));
    }
    expected.emplace_back(a);
    world.storeRecords("browserVisits", full);
    const auto store = openStore();
    EXPECT_EQ(store->visits().size(), 5000U);

    visit(*store->active(), a);

    EXPECT_EQ(addresses(store->visits()), expected);
    EXPECT_EQ(storedVisits(), expected);
}

TEST_F(BrowserStoreHistoryTest, ATabThatHasLeftRecordsNoVisit) {
    const auto store = openStoreWith({a, b});
    const auto closed = tabAt(*store, a);
    store->close(*closed);
    world.defaults.written.clear();

    page(*closed).finish("A");

    EXPECT_TRUE(store->visits().empty());
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreHistoryTest, AnObserverMayCloseTheTabWhoseVisitItSees) {
    const auto store = openStoreWith({a});
    store->connectChanged([&] {
        if (!store->active()->isNewTab()) store->close(*store->active());
    });

    page(*store->active()).finish("A");

    EXPECT_EQ(addresses(store->tabs()), Strings{""});
    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_EQ(addresses(store->closedTabs()), Strings{a});
}

// --- Retention ---------------------------------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, ThirtyDaysAreKeptAtTheStartTheVeryCutoffIncluded) {
    world.storeRecords<Visit>("browserVisits",
                              {visitBefore(a, 30 * 24h + 1h), visitBefore(b, 30 * 24h + 1s),
                               visitBefore(c, 30 * 24h), visitBefore(d, 30 * 24h - 1s)});

    const auto store = openStore();

    EXPECT_EQ(addresses(store->visits()), (Strings{c, d}));
}

TEST_F(BrowserStoreHistoryTest, OldVisitsStayStoredUntilTheNextWrite) {
    world.storeRecords<Visit>("browserVisits", {visitBefore(a, 31 * 24h), visitBefore(b, 1h)});

    const auto store = openStore();
    EXPECT_EQ(storedVisits(), (Strings{a, b}));
    visit(*store->active(), c);

    EXPECT_EQ(storedVisits(), (Strings{b, c}));
}

TEST_F(BrowserStoreHistoryTest, ThirtyDaysFollowTheCalendarOverAChangeOfTheClocks) {
    world.calendar = Calendar{"Europe/Berlin"};
    world.loop.setNow(Date::fromUnixSeconds(1762686000));       // 2025-11-09 12:00, winter time
    const Date summerNoon = Date::fromUnixSeconds(1760090400);  // 2025-10-10 12:00, summer time
    world.storeRecords<Visit>("browserVisits",
                              {visitAt(a, summerNoon.after(-1s)), visitAt(b, summerNoon)});

    BrowserStore store{world.services, false, Profile::personal()};

    EXPECT_EQ(addresses(store.visits()), Strings{b});
}

TEST_F(BrowserStoreHistoryTest, TodaysVisitsBeginAtMidnight) {
    const auto midnight = Calendar{"UTC"}.startOfDay(world.loop.now());
    world.storeRecords<Visit>("browserVisits",
                              {visitAt(a, midnight.after(-1s)), visitAt(b, midnight),
                               visitAt(c, midnight.after(1h)), visitAt(d, midnight.after(48h))});

    const auto store = openStore();

    EXPECT_EQ(addresses(store->todayVisits()), (Strings{b, c, d}));
}

TEST_F(BrowserStoreHistoryTest, TheLatestOfTodayComeNewestFirst) {
    const auto midnight = Calendar{"UTC"}.startOfDay(world.loop.now());
    world.storeRecords<Visit>("browserVisits",
                              {visitAt(a, midnight.after(-1s)), visitAt(b, midnight),
                               visitAt(c, midnight.after(1h)), visitAt(d, midnight.after(2h))});

    const auto store = openStore();

    EXPECT_EQ(addresses(store->latestOfToday(2)), (Strings{d, c}));
    EXPECT_EQ(addresses(store->latestOfToday(4)), (Strings{d, c, b}));
    EXPECT_EQ(addresses(store->latestOfToday(0)), Strings{});
}

// --- Clearing ----------------------------------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, ClearingSinceADateKeepsOlderVisitsAndForgetsAllClosedTabs) {
    const auto store = openStoreWith({d});
    const Date start = world.loop.now();
    visit(*store->active(), a);
    store->close(store->newTab(url(d), Select::no));
    world.loop.advance(1h);
    visit(*store->active(), b);
    world.loop.advance(1h);
    visit(*store->active(), c);
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->clearHistory(start.after(1h));

    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_TRUE(store->closedTabs().empty());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, Strings{"browserVisits"});
    EXPECT_EQ(storedVisits(), Strings{a});
}

TEST_F(BrowserStoreHistoryTest, ClearingAllLeavesTabsShelfAndBookmarks) {
    const auto store = openStoreWith({a, b, c});
    page(*tabAt(*store, a)).finish("A");
    store->park(*tabAt(*store, b));
    store->bookmarks().toggle(url(c), "C");

    store->clearHistory(std::nullopt);

    EXPECT_TRUE(store->visits().empty());
    EXPECT_TRUE(store->closedTabs().empty());
    EXPECT_EQ(world.stored("browserVisits"), "[]");
    EXPECT_EQ(addresses(store->tabs()), (Strings{a, c}));
    EXPECT_EQ(addresses(store->shelf()), Strings{b});
    EXPECT_EQ(addresses(store->bookmarks().items()), Strings{c});
}

TEST_F(BrowserStoreHistoryTest, ClearingWhatIsEmptySignalsNothingButStillWrites) {
    world.storeRecords<Visit>("browserVisits", {visitBefore(a, 31 * 24h)});
    const auto store = openStore();
    const ChangeCounter changes{*store};

    store->clearHistory(std::nullopt);

    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(world.stored("browserVisits"), "[]");
}

TEST_F(BrowserStoreHistoryTest, RemovingAVisitLeavesOthersOfItsAddress) {
    const auto store = openStore();
    for (const auto& address : {a, b, a}) visit(*store->active(), address);
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->removeVisit(store->visits()[0]);

    EXPECT_EQ(addresses(store->visits()), (Strings{b, a}));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, Strings{"browserVisits"});
    EXPECT_EQ(storedVisits(), (Strings{b, a}));
}

TEST_F(BrowserStoreHistoryTest, RemovingAVisitThatIsGoneSignalsNothing) {
    const auto store = openStore();
    visit(*store->active(), a);
    const ChangeCounter changes{*store};

    store->removeVisit(visitBefore(a, 0s));

    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_EQ(changes.count(), 0);
}

}  // namespace
}  // namespace orvu

#include "core/BrowserStore.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

using BrowserStoreArrangingTest = StoreTest;

// --- Shelf -------------------------------------------------------------------------------------

TEST_F(BrowserStoreArrangingTest, ParkingLeavesThePageOnTheShelfAndAmongTheClosedTabs) {
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

TEST_F(BrowserStoreArrangingTest, TheNewestParkedTabComesFirstAndReopeningLeavesTheShelf) {
    const auto store = openStoreWith({a, b, c});
    store->park(*tabAt(*store, a));
    store->park(*tabAt(*store, b));

    store->reopenClosed();

    EXPECT_EQ(addresses(store->shelf()), (Strings{b, a}));
    EXPECT_EQ(addresses(store->tabs()), (Strings{c, b}));
}

TEST_F(BrowserStoreArrangingTest, AnEmptyTabCannotBeParked) {
    const auto store = openStore();
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->park(*store->active());

    EXPECT_TRUE(store->shelf().empty());
    EXPECT_TRUE(world.defaults.written.empty());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreArrangingTest, ParkingATabThatHasLeftDoesNothing) {
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

TEST_F(BrowserStoreArrangingTest, UnparkingTakesTheEntryOffTheShelfAndOpensItInFront) {
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

TEST_F(BrowserStoreArrangingTest, TwoWindowsParkOnOneShelf) {
    const auto first = openStoreWith({a});
    const auto second = openStore();
    second->open(c, BrowserStore::NewTab::yes);

    first->park(*tabAt(*first, a));
    second->park(*tabAt(*second, c));
    EXPECT_EQ(addresses(second->shelf()), (Strings{c, a}));

    first->unpark(first->shelf().front());
    EXPECT_EQ(addresses(first->shelf()), Strings{c});
    EXPECT_EQ(addresses(openStore()->shelf()), Strings{c});
}

TEST_F(BrowserStoreArrangingTest, WhatAnotherWindowUnparkedIsOpenedHereToo) {
    const auto first = openStoreWith({a});
    first->park(*tabAt(*first, a));
    const auto second = openStore();
    const Parked parked = second->shelf().front();
    first->unpark(parked);

    second->unpark(parked);

    EXPECT_EQ(second->active()->url(), url(a));
    EXPECT_TRUE(second->shelf().empty());
}

TEST_F(BrowserStoreArrangingTest, APrivateWindowNeverReadsTheShelf) {
    const auto ordinary = openStoreWith({a});
    ordinary->park(*tabAt(*ordinary, a));
    BrowserStore hidden{world.services, true, Profile::personal()};
    hidden.open(b, BrowserStore::NewTab::no);

    hidden.park(*hidden.active());
    EXPECT_EQ(addresses(hidden.shelf()), Strings{b});
    hidden.unpark(hidden.shelf().front());

    EXPECT_TRUE(hidden.shelf().empty());
    EXPECT_EQ(addresses(openStore()->shelf()), Strings{a});
}

TEST_F(BrowserStoreArrangingTest, UnparkingOpensTheRecordEvenIfItIsNoLongerOnTheShelf) {
    const auto store = openStoreWith({a});

    store->unpark({Uuid::random(), url(b), "B"});

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b}));
}

// --- Pins --------------------------------------------------------------------------------------

TEST_F(BrowserStoreArrangingTest, PinningGathersThePinnedTabsAtTheFrontAndKeepsEachKindsOrder) {
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

TEST_F(BrowserStoreArrangingTest, APinnedTabKeepsItsGroupAliveWithoutShowingInIt) {
    const auto store = openStoreWith({a, b});
    const auto group = store->newGroup(*tabAt(*store, a));

    store->togglePin(*tabAt(*store, a));

    EXPECT_EQ(tabAt(*store, a)->groupID(), group->id);
    EXPECT_TRUE(store->tabs(*group).empty());
    store->removeFromGroup(*tabAt(*store, b));
    EXPECT_EQ(store->groups(), std::vector{*group});
}

TEST_F(BrowserStoreArrangingTest, PinningATabThatHasLeftDoesNothing) {
    const auto store = openStoreWith({a, b});
    const auto closed = tabAt(*store, a);
    store->close(*closed);
    const ChangeCounter changes{*store};

    store->togglePin(*closed);

    EXPECT_FALSE(closed->isPinned());
    EXPECT_EQ(changes.count(), 0);
}

// --- Side by side ------------------------------------------------------------------------------

TEST_F(BrowserStoreArrangingTest, ThePairIsTheFrontTabAndTheLastOtherPage) {
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

TEST_F(BrowserStoreArrangingTest, AnEmptyFrontTabCanBeOneHalf) {
    const auto store = openStoreWith({a});
    store->newTab(std::nullopt, Select::yes);

    store->toggleSideBySide();

    EXPECT_EQ(addresses(store->splitTabs()), (Strings{"", a}));
}

TEST_F(BrowserStoreArrangingTest, WithOnlyEmptyTabsBesideTheFrontTabThereIsNoPair) {
    const auto store = openStoreWith({a});
    store->newTab(std::nullopt, Select::no);
    store->newTab(std::nullopt, Select::no);
    const ChangeCounter changes{*store};

    store->toggleSideBySide();

    EXPECT_TRUE(store->split().empty());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreArrangingTest, OpeningATabSideBySidePairsItBehindTheFrontTabAndActivatesIt) {
    const auto store = openStoreWith({a, b, c});
    const ChangeCounter changes{*store};

    store->openSideBySide(*tabAt(*store, a));

    EXPECT_EQ(addresses(store->splitTabs()), (Strings{c, a}));
    EXPECT_EQ(front(*store), a);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreArrangingTest, OpeningTheFrontTabOrOneThatLeftSideBySideDoesNothing) {
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

TEST_F(BrowserStoreArrangingTest, EndingThePairSignalsOnceAndWithoutAPairNotAtAll) {
    const auto store = openStoreWith({a, b});
    store->toggleSideBySide();
    const ChangeCounter changes{*store};

    store->endSideBySide();
    store->endSideBySide();

    EXPECT_TRUE(store->split().empty());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreArrangingTest, FocusInTheOtherHalfMakesItActiveAndKeepsThePair) {
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

TEST_F(BrowserStoreArrangingTest, FocusInATabOutsideThePairDoesNothing) {
    const auto store = openStoreWith({a, b, c});
    page(*tabAt(*store, a)).onFocus();
    EXPECT_EQ(front(*store), c);
    store->toggleSideBySide();
    const ChangeCounter changes{*store};

    page(*tabAt(*store, a)).onFocus();

    EXPECT_EQ(front(*store), c);
    EXPECT_EQ(changes.count(), 0);
}

// --- Rewind ------------------------------------------------------------------------------------

TEST_F(BrowserStoreArrangingTest, RewindLoadsTheVisitInTheFrontTabAndBecomesANewVisit) {
    const auto store = openStoreWith({a});
    page(*store->active()).finish("A");
    visit(*store->active(), b, "B");

    store->rewind(store->visits().front());
    page(*store->active()).finish("A");

    EXPECT_EQ(addresses(store->tabs()), Strings{a});
    EXPECT_EQ(addresses(store->visits()), (Strings{a, b, a}));
}

TEST_F(BrowserStoreArrangingTest, RewindOnAnEmptyTabOpensTheAddressThere) {
    const auto store = openStore();

    store->rewind({Uuid::random(), url(b), "B", world.loop.now()});

    EXPECT_EQ(addresses(store->tabs()), Strings{b});
}

// --- Re-entrancy and the end -------------------------------------------------------------------

TEST_F(BrowserStoreArrangingTest, AnObserverOfTheStoreMayCallBackAtOnce) {
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

TEST_F(BrowserStoreArrangingTest, AnObserverOfAPageMayOpenTabsWhileItCloses) {
    const auto store = openStoreWith({a, b});
    tabAt(*store, b)->connectChanged([&] {
        for (int number = 0; number < 20; ++number) store->newTab(url(c), Select::no);
    });

    store->close(*tabAt(*store, b));

    EXPECT_EQ(store->tabs().size(), 21U);
    EXPECT_EQ(front(*store), c);
    EXPECT_EQ(addresses(store->closedTabs()), Strings{b});
}

TEST_F(BrowserStoreArrangingTest, AnObserverOfAPageMayCloseItWhileItCloses) {
    const auto store = openStoreWith({a, b});
    const auto tab = tabAt(*store, a);
    tab->connectChanged([&] { store->close(*tab); });

    store->close(*tab);

    EXPECT_EQ(addresses(store->tabs()), Strings{b});
    EXPECT_EQ(front(*store), b);
}

TEST_F(BrowserStoreArrangingTest, AnObserverMayEndTheStore) {
    auto store = openStoreWith({a, b});
    store->connectChanged([&] { store.reset(); });

    store->select(*tabAt(*store, a));

    EXPECT_EQ(store, nullptr);
    EXPECT_TRUE(world.engine.views.empty());
}

TEST_F(BrowserStoreArrangingTest, ThePagesGoWithTheStore) {
    auto store = openStoreWith({a, b});
    EXPECT_EQ(world.engine.views.size(), 2U);

    store.reset();

    EXPECT_TRUE(world.engine.views.empty());
}

TEST_F(BrowserStoreArrangingTest, ATabThatOutlivesItsStoreTellsNobody) {
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

TEST_F(BrowserStoreArrangingTest, FocusThatMovesWhileTheStoreEndsReachesItNoMore) {
    auto store = openStoreWith({a, b});
    store->toggleSideBySide();
    FakeWebView& second = page(*tabAt(*store, b));
    page(*tabAt(*store, a)).atEnd = [&second] { second.onFocus(); };
    const ChangeCounter changes{*store};

    store.reset();

    EXPECT_EQ(changes.count(), 0);
}

}  // namespace
}  // namespace orvu

#include "core/BrowserStore.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

using BrowserStoreTabsTest = StoreTest;

// --- Opening -----------------------------------------------------------------------------------

TEST_F(BrowserStoreTabsTest, OpenLoadsInTheFrontTabAndWritesNothingYet) {
    const auto store = openStore();
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->open(" gnu.org ", NewTab::no);

    EXPECT_EQ(page(*store->active()).calls, Strings{"load https://gnu.org"});
    EXPECT_EQ(store->tabs().size(), 1U);
    EXPECT_TRUE(world.defaults.written.empty());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreTabsTest, OpenInANewTabAppendsItInFrontAndEndsThePair) {
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

TEST_F(BrowserStoreTabsTest, TextThatLeadsNowhereHasNoEffect) {
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

TEST_F(BrowserStoreTabsTest, HostileTextOpensASearchOrASiteButNeverASchemeOfItsOwn) {
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

TEST_F(BrowserStoreTabsTest, ANewTabStandsAtTheEndInNoGroupAndIsSavedAtOnce) {
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

TEST_F(BrowserStoreTabsTest, ANewTabInTheBackgroundLeavesTheFrontTabAndThePairAlone) {
    const auto store = openStoreWith({a, b});
    store->toggleSideBySide();
    const auto pair = store->split();

    store->newTab(std::nullopt, Select::no);

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b, ""}));
    EXPECT_EQ(front(*store), b);
    EXPECT_EQ(store->split(), pair);
}

TEST_F(BrowserStoreTabsTest, WhatAPageOpensComesAsABackgroundTabAtTheEnd) {
    const auto store = openStoreWith({a, b});
    store->newGroup(*tabAt(*store, a));
    const ChangeCounter changes{*store};

    tabAt(*store, a)->onOpenInNewTab({url(c)});

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b, c}));
    EXPECT_EQ(front(*store), b);
    EXPECT_EQ(store->tabs().back()->groupID(), std::nullopt);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreTabsTest, WhatAPageOpensIsLoadedInItsNameAndTheRestInNobodys) {
    const auto store = openStoreWith({a});

    tabAt(*store, a)->onOpenInNewTab({url(b), Initiator{url(a)}});
    store->newTab(url(c), BrowserStore::Select::no);

    EXPECT_EQ(page(*tabAt(*store, b)).calls,
              Strings{"load https://b.example/ for https://a.example/"});
    EXPECT_EQ(page(*tabAt(*store, c)).calls, Strings{"load https://c.example/"});
}

TEST_F(BrowserStoreTabsTest, ATabThatOpensBehindIsTold) {
    const auto store = openStoreWith({a, b});
    std::vector<std::string> told;
    store->connectOpenedBehind(
        [&](const Uuid& id) { told.push_back(store->tab(id)->url()->absoluteString()); });

    tabAt(*store, a)->onOpenInNewTab({url(c)});
    store->newTab(url(a), BrowserStore::Select::yes);
    tabAt(*store, a)->onOpenInNewTab({});

    EXPECT_EQ(told, Strings{c});
}

TEST_F(BrowserStoreTabsTest, ARequestWithoutAnAddressOpensNothing) {
    const auto store = openStoreWith({a});
    const ChangeCounter changes{*store};

    store->active()->onOpenInNewTab({});

    EXPECT_EQ(addresses(store->tabs()), Strings{a});
    EXPECT_EQ(changes.count(), 0);
}

// --- Closing -----------------------------------------------------------------------------------

TEST_F(BrowserStoreTabsTest, ClosingTheActiveTabActivatesTheTabBelowIt) {
    const auto store = openStoreWith({a, b, c});
    store->select(*tabAt(*store, b));

    store->close(*store->active());

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, c}));
    EXPECT_EQ(front(*store), c);
}

TEST_F(BrowserStoreTabsTest, ClosingTheActiveLastTabActivatesTheNewLastTab) {
    const auto store = openStoreWith({a, b, c});

    store->close(*store->active());

    EXPECT_EQ(front(*store), b);
}

TEST_F(BrowserStoreTabsTest, ClosingATabThatIsNotActiveLeavesTheFrontTab) {
    const auto store = openStoreWith({a, b, c});

    store->close(*tabAt(*store, a));

    EXPECT_EQ(addresses(store->tabs()), (Strings{b, c}));
    EXPECT_EQ(front(*store), c);
}

TEST_F(BrowserStoreTabsTest, ClosingTheOnlyTabLeavesANewEmptyOneAndRemembersThePage) {
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

TEST_F(BrowserStoreTabsTest, ClosingTheOnlyEmptyTabLeavesNoTrace) {
    const auto store = openStore();
    const auto previous = store->active();

    store->close(*previous);

    EXPECT_EQ(addresses(store->tabs()), Strings{""});
    EXPECT_NE(store->active(), previous);
    EXPECT_TRUE(store->closedTabs().empty());
}

TEST_F(BrowserStoreTabsTest, ClosingStopsThePageWhileItIsStillInTheList) {
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

TEST_F(BrowserStoreTabsTest, ClosingOneHalfEndsThePairAndKeepsTheOther) {
    const auto store = openStoreWith({a, b, c});
    store->toggleSideBySide();

    store->close(*tabAt(*store, b));

    EXPECT_TRUE(store->split().empty());
    EXPECT_EQ(addresses(store->tabs()), (Strings{a, c}));
    EXPECT_EQ(front(*store), c);
}

TEST_F(BrowserStoreTabsTest, ClosingATabOutsideThePairKeepsIt) {
    const auto store = openStoreWith({a, b, c});
    store->toggleSideBySide();

    store->close(*tabAt(*store, a));

    EXPECT_EQ(addresses(store->splitTabs()), (Strings{c, b}));
}

TEST_F(BrowserStoreTabsTest, PinnedTabsCloseLikeAnyOther) {
    const auto store = openStoreWith({a, b});
    store->togglePin(*tabAt(*store, a));

    store->close(*tabAt(*store, a));

    EXPECT_EQ(addresses(store->tabs()), Strings{b});
    EXPECT_EQ(addresses(store->closedTabs()), Strings{a});
}

TEST_F(BrowserStoreTabsTest, ClosingATabTwiceDoesNothingTheSecondTime) {
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

TEST_F(BrowserStoreTabsTest, TheFirstOfFiftyOneClosedTabsIsForgotten) {
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

TEST_F(BrowserStoreTabsTest, ReopeningBringsTheLastClosedTabBackAtTheEndWithoutPinOrGroup) {
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

TEST_F(BrowserStoreTabsTest, ReopeningWithoutClosedTabsDoesNothing) {
    const auto store = openStoreWith({a});
    const ChangeCounter changes{*store};

    store->reopenClosed();

    EXPECT_EQ(addresses(store->tabs()), Strings{a});
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(world.defaults.written.empty());
}

}  // namespace
}  // namespace orvu

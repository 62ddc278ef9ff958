#include "core/BrowserTab.h"

#include "site/icons/PageIcons.h"
#include "support/TabWorld.h"

#include <chrono>

namespace orvu {
namespace {

using namespace std::chrono_literals;

using BrowserTabPageTest = TabTest;

// --- Visits ------------------------------------------------------------------------------------

TEST_F(BrowserTabPageTest, AFinishedPageIsReportedOnceWithItsTitle) {
    const auto tab = openTab(a);
    Strings titles;
    tab->onVisit = [&](BrowserTab& visited) { titles.push_back(visited.title()); };

    page(*tab).finish("A");

    EXPECT_EQ(titles, Strings{"A"});
}

TEST_F(BrowserTabPageTest, AFailedLoadIsNotReportedAndThePreviousPageStays) {
    const auto tab = openTab(a);
    page(*tab).finish("A");
    int visits = 0;
    tab->onVisit = [&](BrowserTab&) { ++visits; };

    page(*tab).load(url(b));
    page(*tab).fail();

    EXPECT_EQ(tab->url(), url(a));
    EXPECT_FALSE(tab->isLoading());
    EXPECT_EQ(visits, 0);
}

TEST_F(BrowserTabPageTest, ATabMayGoWhileItReportsItsVisit) {
    auto tab = openTab(a);
    FakeWebView& view = page(*tab);
    view.setTitle("A");
    std::string title;
    tab->onVisit = [&](BrowserTab& visited) {
        tab.reset();
        title = visited.title();
    };

    view.delegate()->didFinish();

    EXPECT_EQ(title, "A");
    EXPECT_TRUE(world.engine.views.empty());
}

TEST_F(BrowserTabPageTest, ATabMayGoWhileItTellsOfAChange) {
    auto tab = openTab(a);
    FakeWebView& view = page(*tab);
    tab->connectChanged([&] { tab.reset(); });

    view.setTitle("A");

    EXPECT_TRUE(world.engine.views.empty());
}

// --- Page text ---------------------------------------------------------------------------------

TEST_F(BrowserTabPageTest, ThePagesTextIsCutToTheLimitInCharacters) {
    const auto tab = openTab(a);
    auto text = tab->pageText(3);
    text.start();

    EXPECT_EQ(page(*tab).scripts, Strings{"document.body ? document.body.innerText : ''"});
    EXPECT_FALSE(text.isDone());
    page(*tab).answers[0].resolve(
        {ScriptResult::Kind::text, "e\u0301👩‍👩‍👧‍👦xyz"});

    ASSERT_TRUE(text.isDone());
    EXPECT_EQ(text.result(), "e\u0301👩‍👩‍👧‍👦x");
}

TEST_F(BrowserTabPageTest, WhatIsNoTextGivesAnEmptyText) {
    const auto tab = openTab(a);

    for (const auto kind :
         {ScriptResult::Kind::json, ScriptResult::Kind::undefined, ScriptResult::Kind::failed}) {
        auto text = tab->pageText(100);
        text.start();
        page(*tab).answers.back().resolve({kind, "12"});
        ASSERT_TRUE(text.isDone());
        EXPECT_EQ(text.result(), "");
    }
}

TEST_F(BrowserTabPageTest, AnAnswerAfterTheReadWasDroppedHasNoEffect) {
    const auto tab = openTab(a);
    {
        auto text = tab->pageText(100);
        text.start();
    }

    EXPECT_FALSE(page(*tab).answers[0].isWanted());
    page(*tab).answers[0].resolve({ScriptResult::Kind::text, "late"});
}

/// A page that finished loading, with what its script tells of its icons.
class FaviconOfATabTest : public TabTest {
protected:
    [[nodiscard]] static std::string shown(const BrowserTab& tab) {
        return FakeImageCodec::name(tab.favicon());
    }
    static void finish(BrowserTab& tab, const std::string& links) {
        page(tab).finish("");
        page(tab).answers.back().resolve({ScriptResult::Kind::json, links});
    }
};

TEST_F(FaviconOfATabTest, TheDeclaredIconsAreTriedInOrderAndTheSitesOwnOneLast) {
    const auto tab = openTab("https://a.example/deep/page");
    finish(*tab, R"(["https://b.example/1.png","data:image/png;base64,AA","https://a.example/2"])");
    world.http.asked.clear();

    world.http.answer("https://b.example/1.png", 404);
    world.http.answer("https://a.example/2", 200, "text");
    const ChangeCounter changes{*tab};
    world.http.answer("https://a.example/favicon.ico", 200, "img root");

    EXPECT_EQ(world.http.asked, (Strings{"https://a.example/2", "https://a.example/favicon.ico"}));
    EXPECT_EQ(page(*tab).scripts, Strings{std::string{PageIcons::script}});
    EXPECT_EQ(shown(*tab), "root");
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.files.contents["Favicons/a.example.png"], "img root");
}

TEST_F(FaviconOfATabTest, ItIsLookedForAfterTheVisitWasTold) {
    const auto tab = openTab(a);
    std::size_t scriptsAtVisit = 99;
    tab->onVisit = [&](BrowserTab& each) { scriptsAtVisit = page(each).scripts.size(); };

    page(*tab).finish("");

    EXPECT_EQ(scriptsAtVisit, 0U);
    EXPECT_EQ(page(*tab).scripts.size(), 1U);
}

TEST_F(FaviconOfATabTest, OnlyWebPagesWithAHostAreAsked) {
    for (const auto* address : {"about:blank", "file:///tmp/x.html", "data:text/html,x"}) {
        const auto tab = openTab(address);
        page(*tab).finish("");
        EXPECT_EQ(page(*tab).scripts, Strings{}) << address;
    }
}

TEST_F(FaviconOfATabTest, BetweenPagesOfOneHostTheIconStays) {
    world.favicons.set(FakeImageCodec::image("a"), "a.example", Persistence::persistent);
    const auto tab = openTab("https://a.example/1");
    EXPECT_EQ(shown(*tab), "a");
    world.favicons.set(FakeImageCodec::image("newer"), "a.example", Persistence::persistent);

    page(*tab).load(url("http://a.example/2"));

    EXPECT_EQ(shown(*tab), "a");
}

TEST_F(FaviconOfATabTest, AnotherHostWithoutAnIconClearsItUntilTheLoadFinished) {
    world.favicons.set(FakeImageCodec::image("a"), "a.example", Persistence::persistent);
    const auto tab = openTab(a);

    page(*tab).load(url(b));
    EXPECT_EQ(shown(*tab), "");
    world.http.answer("https://b.example/apple-touch-icon.png", 200, "img b");
    EXPECT_EQ(shown(*tab), "");
    page(*tab).finish("");

    EXPECT_EQ(shown(*tab), "b");
}

TEST_F(FaviconOfATabTest, AnAnswerAfterTheTabMovedOnBelongsToThePreviousHostAlone) {
    const auto tab = openTab(a);
    finish(*tab, R"(["https://a.example/i"])");
    page(*tab).load(url(b));

    world.http.answer("https://a.example/i", 200, "img a");

    EXPECT_EQ(shown(*tab), "");
    EXPECT_EQ(FakeImageCodec::name(world.favicons.icon("a.example", Persistence::persistent)), "a");
}

TEST_F(FaviconOfATabTest, AClosedTabStopsLooking) {
    auto tab = openTab(a);
    finish(*tab, R"(["https://a.example/i"])");

    tab.reset();
    world.loop.runIdle();

    EXPECT_EQ(world.http.abandoned, Strings{"https://a.example/i"});
}

TEST_F(FaviconOfATabTest, AnObserverMayCloseTheTabWhenItsIconComes) {
    auto tab = openTab(a);
    finish(*tab, R"(["https://a.example/i"])");
    tab->connectChanged([&] { tab.reset(); });

    world.http.answer("https://a.example/i", 200, "img a");
    world.loop.runIdle();

    EXPECT_TRUE(world.engine.views.empty());
    EXPECT_EQ(FakeImageCodec::name(world.favicons.icon("a.example", Persistence::persistent)), "a");
}

TEST_F(FaviconOfATabTest, ATabOfAPrivateWindowWritesNoIconAndOneOfAnotherDoes) {
    for (const bool isPrivate : {true, false}) {
        const auto store = isPrivate ? openPrivateStore() : openStore();
        const auto& tab = store->newTab(url(a), Select::yes);
        const auto shared = tabAt(*store, a);
        finish(*shared, R"(["https://a.example/i"])");
        world.http.answer("https://a.example/i", 200, "img a");

        EXPECT_EQ(shown(tab), "a");
        EXPECT_EQ(world.files.writes.empty(), isPrivate);
    }
}

}  // namespace
}  // namespace orvu

#include "engine/EngineWorld.h"

namespace orvu {
namespace {

class LoadingTest : public EngineTest {
protected:
    std::unique_ptr<WebConfiguration> configuration =
        engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    std::unique_ptr<WebView> view = configuration->makeWebView();
    RecordingDelegate delegate{*view};
};

TEST_F(LoadingTest, TheAddressIsKnownAsSoonAsALoadIsAskedFor) {
    server.serve("/a", "<title>A</title>");

    view->load(url("/a"));

    EXPECT_EQ(view->url(), url("/a"));
    EXPECT_TRUE(view->isLoading());
}

TEST_F(LoadingTest, TheTitleIsThatOfThePageWhenItsLoadFinishes) {
    for (int i = 0; i < 8; ++i) {
        const std::string name = "page " + std::to_string(i);
        server.serve("/" + std::to_string(i), "<title>" + name + "</title><p>text");
        loadAndWait(*view, delegate, "/" + std::to_string(i));
        EXPECT_EQ(delegate.finishedTitles.back(), name);
    }
}

TEST_F(LoadingTest, AFailedLoadLeavesThePreviousPageAndIsNoFinish) {
    server.serve("/a", "<title>A</title>");
    loadAndWait(*view, delegate, "/a");

    view->load(server.deadUrl("/nobody"));
    ASSERT_TRUE(waitFor([&] { return !view->isLoading() && view->url() == url("/a"); }));
    settle();

    EXPECT_EQ(delegate.finishedTitles, std::vector<std::string>{"A"});
    EXPECT_EQ(evaluate(*view, "document.title").text, "A");
}

TEST_F(LoadingTest, AFirstLoadThatFailsKeepsItsAddressAndIsNoFinish) {
    const Url nobody = server.deadUrl("/nobody");
    view->load(nobody);

    ASSERT_TRUE(waitFor([&] { return !view->isLoading(); }));
    settle();

    EXPECT_EQ(view->url(), nobody);
    EXPECT_TRUE(delegate.finishedTitles.empty());
}

TEST_F(LoadingTest, AFirstLoadThatIsStoppedKeepsItsAddressAndReloadTriesAgain) {
    server.serve("/held", LoopbackServer::Answer{.body = "", .held = true});
    view->load(url("/held"));
    ASSERT_TRUE(waitFor([&] { return server.requests("/held") == 1; }));

    view->stopLoading();
    ASSERT_TRUE(waitFor([&] { return !view->isLoading(); }));
    settle();
    EXPECT_EQ(view->url(), url("/held"));
    network.cameBack.emit();  // what the person stopped stays so
    settle();
    EXPECT_EQ(server.requests("/held"), 1);
    server.serve("/held", "<title>There</title>");
    view->reload();

    ASSERT_TRUE(waitFor([&] { return !delegate.finishedTitles.empty(); }));
    EXPECT_EQ(delegate.finishedTitles, std::vector<std::string>{"There"});
}

TEST_F(LoadingTest, ALoadThatIsStoppedBeforeItBeganKeepsItsAddressToo) {
    server.serve("/a", "<title>A</title>");
    view->load(url("/a"));
    view->stopLoading();
    settle();
    EXPECT_EQ(view->url(), url("/a"));
    EXPECT_FALSE(view->isLoading());
    EXPECT_EQ(server.requests("/a"), 0);

    view->reload();

    ASSERT_TRUE(waitFor([&] { return !delegate.finishedTitles.empty(); }));
}

TEST_F(LoadingTest, WhatNeverShowedAPageIsTriedAgainOnceForEachReturnOfTheNetwork) {
    const Url nobody = server.deadUrl("/nobody");
    view->load(nobody);
    ASSERT_TRUE(waitFor([&] { return !view->isLoading(); }));
    settle();
    int loads = 0;
    view->connectPropertyChanged([&](WebViewProperty property) {
        if (property == WebViewProperty::isLoading && view->isLoading()) ++loads;
    });

    for (int change = 1; change <= 2; ++change) {
        network.cameBack.emit();
        ASSERT_TRUE(waitFor([&] { return loads == change && !view->isLoading(); }));
        settle();
        EXPECT_EQ(loads, change);
    }
    EXPECT_EQ(view->url(), nobody);
}

TEST_F(LoadingTest, WhereAPageStandsTheNetworksReturnLoadsNothing) {
    server.serve("/a", "<title>A</title>");
    loadAndWait(*view, delegate, "/a");
    view->load(server.deadUrl("/nobody"));
    ASSERT_TRUE(waitFor([&] { return !view->isLoading() && view->url() == url("/a"); }));

    network.cameBack.emit();
    settle();

    EXPECT_EQ(server.requests("/a"), 1);
    EXPECT_EQ(view->url(), url("/a"));
}

TEST_F(LoadingTest, ATitleIsCutToAThousandCharacters) {
    server.serve("/a", "<title>" + std::string(5000, 'x') + "</title>");
    loadAndWait(*view, delegate, "/a");
    EXPECT_EQ(view->title(), std::string(1000, 'x'));

    static_cast<void>(evaluate(*view, "document.title = '\u00E9'.repeat(20_000_000); 1"));
    ASSERT_TRUE(waitFor([&] { return view->title().starts_with("\u00E9"); }));
    EXPECT_EQ(view->title().size(), 2000U);
}

TEST_F(LoadingTest, ACharacterWithoutEndIsCutByItsBytes) {
    server.serve("/a", "<meta charset=utf-8><title>A</title>");
    loadAndWait(*view, delegate, "/a");

    static_cast<void>(evaluate(*view, "document.title = 'e' + '\u0301'.repeat(1_000_000); 1"));

    ASSERT_TRUE(waitFor([&] { return view->title().starts_with("e"); }));
    EXPECT_LE(view->title().size(), 16'000U);
}

TEST_F(LoadingTest, WhatTheEngineCannotLoadStartsNoProcess) {
    server.serve("/a",
                 "<title>A</title><script>let n = 0; setInterval(() => { if (n++ < 60)"
                 " location = (n % 2 ? 'made-up:' : 'mailto:x@a.example?n=') + n }, 5)"
                 "</script>");
    loadAndWait(*view, delegate, "/a");
    const auto before = pageProcesses();

    ASSERT_TRUE(waitFor([&] { return evaluate(*view, "1").text == "1"; }));
    settle();
    settle();

    EXPECT_TRUE(pageProcessesSince(before).empty());
    EXPECT_EQ(view->url(), url("/a"));
    EXPECT_EQ(evaluate(*view, "document.title").text, "A");
}

TEST_F(LoadingTest, APageThatSetsLongAddressesWithoutEndIsStopped) {
    for (const char* const change : {"history.replaceState(0, '', '?' + n++ + 'a'.repeat(2e6))",
                                     "location.hash = n++ + 'a'.repeat(2e6)"}) {
        server.serve("/a", "<title>A</title>");
        loadAndWait(*view, delegate, "/a");
        const auto processes = pageProcesses().size();

        static_cast<void>(
            evaluate(*view, std::string{"let n = 0; setInterval(() => { "} + change + " }, 0)"));

        EXPECT_TRUE(waitFor([&] { return view->failure().has_value(); })) << change;
        EXPECT_EQ(view->failure()->cause, LoadFailureCause::addressFlood);
        EXPECT_TRUE(waitFor([&] { return pageProcesses().size() < processes; }));
    }
    loadAndWait(*view, delegate, "/a");
    EXPECT_FALSE(view->failure());
}

TEST_F(LoadingTest, OneLongAddressMoreOrLessIsNothing) {
    server.serve("/a", "<title>A</title>");
    loadAndWait(*view, delegate, "/a");

    for (int i = 0; i < 2; ++i) {
        static_cast<void>(evaluate(*view, "history.replaceState(0, '', '?' + 'a'.repeat(3e6))"));
    }
    static_cast<void>(evaluate(*view, "history.replaceState(0, '', '?end')"));

    EXPECT_TRUE(waitFor([&] { return view->url() == url("/a?end"); }));
    EXPECT_FALSE(view->failure());
}

TEST_F(LoadingTest, SwipesAreOnOnlyWhileFingersMove) {
    auto& own = static_cast<OrvuWebView&>(*view);
    auto* const widget = WEBKIT_WEB_VIEW(own.widget());
    SwipeGestures swipes{widget, loop};
    EXPECT_FALSE(swipes.areOn());

    swipes.heard(GDK_SCROLL, GDK_SOURCE_MOUSE);
    swipes.heard(GDK_MOTION_NOTIFY, GDK_SOURCE_TOUCHPAD);
    EXPECT_FALSE(swipes.areOn());
    swipes.heard(GDK_SCROLL, GDK_SOURCE_TOUCHPAD);
    EXPECT_TRUE(swipes.areOn());

    ASSERT_TRUE(waitFor([&] { return !swipes.areOn(); }));
    swipes.heard(GDK_TOUCH_BEGIN, GDK_SOURCE_TOUCHSCREEN);
    EXPECT_TRUE(swipes.areOn());
    swipes.end();
    EXPECT_FALSE(swipes.areOn());
}

TEST_F(LoadingTest, AStoppedLoadIsNoFinish) {
    server.serve("/a", "<title>A</title>");
    loadAndWait(*view, delegate, "/a");
    server.serve("/held", LoopbackServer::Answer{.body = "", .held = true});

    view->load(url("/held"));
    ASSERT_TRUE(waitFor([&] { return server.requests("/held") == 1; }));
    view->stopLoading();
    ASSERT_TRUE(waitFor([&] { return view->url() == url("/a"); }));
    settle();

    EXPECT_EQ(delegate.finishedTitles, std::vector<std::string>{"A"});
}

TEST_F(LoadingTest, AReplacedLoadIsNoFinish) {
    server.serve("/held", LoopbackServer::Answer{.body = "", .held = true});
    server.serve("/b", "<title>B</title>");

    view->load(url("/held"));
    ASSERT_TRUE(waitFor([&] { return server.requests("/held") == 1; }));
    view->load(url("/b"));
    ASSERT_TRUE(waitFor([&] { return !delegate.finishedTitles.empty(); }));
    settle();

    EXPECT_EQ(delegate.finishedTitles, std::vector<std::string>{"B"});
    EXPECT_EQ(view->url(), url("/b"));
}

TEST_F(LoadingTest, ARedirectFinishesOnceAtItsTarget) {
    server.serve("/from", LoopbackServer::Answer{
                              .body = "", .status = 302, .headers = {{"Location", "/to"}}});
    server.serve("/to", "<title>Target</title>");

    loadAndWait(*view, delegate, "/from");

    EXPECT_EQ(view->url(), url("/to"));
    EXPECT_EQ(delegate.finishedTitles, std::vector<std::string>{"Target"});
}

TEST_F(LoadingTest, AChangeWithinTheDocumentMovesTheAddressAndIsNoFinish) {
    server.serve("/a", "<title>A</title>");
    loadAndWait(*view, delegate, "/a");

    static_cast<void>(evaluate(*view, "history.pushState({}, '', '/pushed'); 1"));
    ASSERT_TRUE(waitFor([&] { return view->url() == url("/pushed"); }));
    settle();

    EXPECT_EQ(delegate.finishedTitles, std::vector<std::string>{"A"});
    EXPECT_TRUE(view->canGoBack());
}

TEST_F(LoadingTest, AnErrorAnswerWithABodyIsAPage) {
    server.serve("/gone", LoopbackServer::Answer{.body = "<title>Gone</title>", .status = 404});

    loadAndWait(*view, delegate, "/gone");

    EXPECT_EQ(delegate.finishedTitles, std::vector<std::string>{"Gone"});
}

TEST_F(LoadingTest, BackAndForwardFinishWithTheirPagesTitles) {
    server.serve("/a", "<title>A</title>");
    server.serve("/b", "<title>B</title>");
    loadAndWait(*view, delegate, "/a");
    loadAndWait(*view, delegate, "/b");

    view->goBack();
    ASSERT_TRUE(waitFor([&] { return delegate.finishedTitles.size() == 3; }));
    EXPECT_TRUE(view->canGoForward());
    view->goForward();
    ASSERT_TRUE(waitFor([&] { return delegate.finishedTitles.size() == 4; }));

    EXPECT_EQ(delegate.finishedTitles, (std::vector<std::string>{"A", "B", "A", "B"}));
}

TEST_F(LoadingTest, APageTakenOutOfItsWindowGoesOnNavigating) {
    server.serve("/a", "<title>A</title>");
    server.serve("/b", "<title>B</title>");
    GtkWidget* const window = gtk_window_new();
    GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
    gtk_window_set_child(GTK_WINDOW(window), box);
    GtkWidget* const widget = static_cast<OrvuWebView&>(*view).widget();
    gtk_box_append(GTK_BOX(box), widget);
    gtk_window_present(GTK_WINDOW(window));
    loadAndWait(*view, delegate, "/a");

    gtk_box_remove(GTK_BOX(box), widget);
    loadAndWait(*view, delegate, "/b");
    loadAndWait(*view, delegate, "/a");
    view->goBack();

    EXPECT_TRUE(waitFor([&] { return delegate.finishedTitles.size() == 4; }));
    gtk_window_destroy(GTK_WINDOW(window));
}

TEST_F(LoadingTest, PlainHttpIsNotSecure) {
    server.serve("/a", "<title>A</title>");

    loadAndWait(*view, delegate, "/a");

    EXPECT_FALSE(view->hasOnlySecureContent());
}

TEST_F(LoadingTest, TwentyRestoredPagesDoNotHoldUpTheirMaker) {
    server.serve("/a", "<title>A</title>");
    std::vector<std::unique_ptr<WebView>> views;
    std::vector<std::unique_ptr<RecordingDelegate>> delegates;

    for (int i = 0; i < 20; ++i) {
        views.push_back(configuration->makeWebView());
        delegates.push_back(std::make_unique<RecordingDelegate>(*views.back()));
        views.back()->load(url("/a"));
    }
    const bool anyMade = std::ranges::any_of(
        views, [](const auto& each) { return static_cast<OrvuWebView&>(*each).isMade(); });

    EXPECT_FALSE(anyMade);
    EXPECT_TRUE(waitFor([&] {
        return std::ranges::all_of(
            delegates, [](const auto& each) { return each->finishedTitles.size() == 1; });
    }));
}

TEST_F(LoadingTest, TheServerSeesTheUserAgentOfTheBrowser) {
    configuration->setApplicationNameForUserAgent("Version/26.0 Safari/605.1.15");
    server.serve("/a", "<title>A</title>");

    loadAndWait(*view, delegate, "/a");

    const std::string agent = server.header("/a", "User-Agent");
    EXPECT_TRUE(agent.starts_with("Mozilla/5.0 (")) << agent;
    EXPECT_TRUE(agent.ends_with(" (KHTML, like Gecko) Version/26.0 Safari/605.1.15")) << agent;
}

TEST_F(LoadingTest, TheZoomStaysWhenThePageChanges) {
    server.serve("/a", "<title>A</title>");
    view->setPageZoom(1.5);

    loadAndWait(*view, delegate, "/a");

    EXPECT_EQ(view->pageZoom(), 1.5);
    EXPECT_EQ(
        webkit_web_view_get_zoom_level(WEBKIT_WEB_VIEW(static_cast<OrvuWebView&>(*view).widget())),
        1.5);
}

}  // namespace
}  // namespace orvu

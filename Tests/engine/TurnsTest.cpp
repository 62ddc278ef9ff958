#include "engine/EngineWorld.h"
#include "platform/linux/web/OrvuWebView.h"

#include <algorithm>
#include <csignal>
#include <vector>

namespace orvu {
namespace {

/// Pages that nobody looks at wait for their turn to load.
class TurnsTest : public EngineTest {
protected:
    struct Page {
        explicit Page(std::unique_ptr<WebView> ofEngine) : view(std::move(ofEngine)) {}
        std::unique_ptr<WebView> view;
        RecordingDelegate delegate{*view};
    };

    /// A page that waits for that turn, at the path of its number.
    Page& wait(std::size_t number, bool isHeld = false) {
        const std::string path = "/" + std::to_string(number);
        server.serve(path,
                     LoopbackServer::Answer{.body = "<title>" + path + "</title>", .held = isHeld});
        pages.push_back(std::make_unique<Page>(configuration->makeWebView()));
        pages.back()->view->loadInTurn(url(path), number);
        return *pages.back();
    }
    /// A page that the person waits for, and whose server doesn't answer.
    std::unique_ptr<WebView> heldFront() {
        server.serve("/front", LoopbackServer::Answer{.body = "", .held = true});
        auto front = configuration->makeWebView();
        front->load(url("/front"));
        EXPECT_TRUE(waitFor([&] { return server.requests("/front") == 1; }));
        return front;
    }
    [[nodiscard]] int requests(std::size_t number) const {
        return server.requests("/" + std::to_string(number));
    }
    [[nodiscard]] static bool isMade(const Page& page) {
        return static_cast<const OrvuWebView&>(*page.view).isMade();
    }

    std::unique_ptr<WebConfiguration> configuration =
        engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    std::vector<std::unique_ptr<Page>> pages;
};

TEST_F(TurnsTest, UntilItsTurnAPageHasAnAddressAndNothingElse) {
    const auto others = pageProcesses();
    fakes.activity.setMoving(true);
    const Page& page = wait(1);
    settle();

    EXPECT_EQ(page.view->url(), url("/1"));
    EXPECT_FALSE(page.view->isLoading());
    EXPECT_EQ(page.view->estimatedProgress(), 0);
    EXPECT_FALSE(isMade(page));
    EXPECT_TRUE(pageProcessesSince(others).empty());
}

TEST_F(TurnsTest, AllLoadInTheEndInTheirOrder) {
    for (std::size_t number = 6; number > 0; --number) wait(number);

    ASSERT_TRUE(waitFor([&] {
        return std::ranges::all_of(
            pages, [](const auto& page) { return !page->delegate.finishedTitles.empty(); });
    }));

    for (std::size_t number = 1; number <= 6; ++number) EXPECT_EQ(requests(number), 1);
    EXPECT_EQ(pages.back()->view->title(), "/1");
}

TEST_F(TurnsTest, TwoLoadAtATime) {
    for (std::size_t number = 1; number <= 4; ++number) wait(number, true);
    ASSERT_TRUE(waitFor([&] { return requests(1) == 1 && requests(2) == 1; }));
    settle();
    EXPECT_FALSE(isMade(*pages[2]));

    pages[0]->view->stopLoading();

    EXPECT_TRUE(waitFor([&] { return requests(3) == 1; }));
    settle();
    EXPECT_FALSE(isMade(*pages[3]));
}

TEST_F(TurnsTest, OneThatFailsMakesRoomForTheNext) {
    for (int i = 0; i < 2; ++i) {
        pages.push_back(std::make_unique<Page>(configuration->makeWebView()));
        pages.back()->view->loadInTurn(server.deadUrl("/nobody"), 0);
    }
    wait(1);

    EXPECT_TRUE(waitFor([&] { return requests(1) == 1; }));
}

TEST_F(TurnsTest, AllWaitForThePageThatThePersonWaitsFor) {
    const auto begin = loop.now();
    auto front = heldFront();
    const Page& page = wait(1);

    EXPECT_TRUE(waitFor([&] { return isMade(page); }));

    EXPECT_GE(loop.now().secondsSince(begin), 2);
}

TEST_F(TurnsTest, OnceThatPageIsThereTheyBegin) {
    server.serve("/front", "<title>Front</title>");
    const auto front = configuration->makeWebView();
    RecordingDelegate delegate{*front};
    front->load(url("/front"));
    const Page& page = wait(1);
    ASSERT_TRUE(waitFor([&] { return !delegate.finishedTitles.empty(); }));
    const auto there = loop.now();

    ASSERT_TRUE(waitFor([&] { return isMade(page); }));

    EXPECT_LT(loop.now().secondsSince(there), 2);
    EXPECT_TRUE(waitFor([&] { return requests(1) == 1; }));
}

TEST_F(TurnsTest, APageThatIsWantedBeginsAtOnce) {
    auto front = heldFront();
    Page& page = wait(1);

    static_cast<void>(static_cast<OrvuWebView&>(*page.view).widget());

    EXPECT_TRUE(page.view->isLoading());
    EXPECT_TRUE(waitFor([&] { return requests(1) == 1; }));
    EXPECT_EQ(page.view->url(), url("/1"));
}

TEST_F(TurnsTest, APageThatIsAskedForItsTextLoadsAndTellsIt) {
    auto front = heldFront();
    server.serve("/text", "<title>Text</title><p>Words of the page");
    Page& page = wait(1);
    page.view->loadInTurn(url("/text"), 0);

    const auto result = evaluate(*page.view, "document.body.innerText");

    EXPECT_EQ(result.text, "Words of the page");
}

TEST_F(TurnsTest, APageThatIsAskedForItsTextOnItsWayTellsItWhenItHasCome) {
    server.serve("/text", "<title>Text</title><p>Words of the page");
    Page& page = wait(1);
    page.view->loadInTurn(url("/text"), 0);
    ASSERT_TRUE(waitFor([&] { return isMade(page); }));

    const auto result = evaluate(*page.view, "document.body.innerText");

    EXPECT_EQ(result.text, "Words of the page");
}

TEST_F(TurnsTest, APageThatIsAskedForItsTextAndFailsTellsNone) {
    auto front = heldFront();
    Page& page = wait(1);
    page.view->loadInTurn(server.deadUrl("/nobody"), 0);

    const auto result = evaluate(*page.view, "document.body ? document.body.innerText : ''");

    EXPECT_EQ(result.text, "");
}

TEST_F(TurnsTest, NoneBeginsWhileThePersonTypes) {
    const Page& page = wait(1);
    for (int key = 0; key < 5; ++key) {
        fakes.activity.pressed(loop.now());
        settle();
    }
    EXPECT_FALSE(isMade(page));

    EXPECT_TRUE(waitFor([&] { return requests(1) == 1; }));
}

TEST_F(TurnsTest, AnotherAddressTakesThePlaceOfTheOneThatWaits) {
    fakes.activity.setMoving(true);
    server.serve("/other", "<title>Other</title>");
    Page& page = wait(1);

    page.view->load(url("/other"));
    fakes.activity.setMoving(false);

    ASSERT_TRUE(waitFor([&] { return !page.delegate.finishedTitles.empty(); }));
    EXPECT_EQ(page.view->url(), url("/other"));
    EXPECT_EQ(requests(1), 0);
}

TEST_F(TurnsTest, ReloadAndAScriptDoNotWait) {
    fakes.activity.setMoving(true);
    Page& reloaded = wait(1);
    Page& read = wait(2);

    reloaded.view->reload();
    EXPECT_TRUE(waitFor([&] { return requests(1) == 1; }));
    static_cast<void>(evaluate(*read.view, "1"));

    EXPECT_TRUE(waitFor([&] { return requests(2) == 1; }));
}

TEST_F(TurnsTest, AStopLeavesItWaitingAndTheEndOfTheViewEndsIt) {
    fakes.activity.setMoving(true);
    const Page& page = wait(1);
    wait(2);
    page.view->stopLoading();
    EXPECT_EQ(page.view->url(), url("/1"));
    pages.pop_back();

    fakes.activity.setMoving(false);

    EXPECT_TRUE(waitFor([&] { return requests(1) == 1; }));
    settle();
    EXPECT_EQ(requests(2), 0);
}

TEST_F(TurnsTest, WhatFailedWithTheNetworkComesBackInTurnWithIt) {
    int loads = 0;
    for (int i = 0; i < 4; ++i) {
        pages.push_back(std::make_unique<Page>(configuration->makeWebView()));
        pages.back()->view->load(server.deadUrl("/nobody"));
        ASSERT_TRUE(waitFor([&] { return pages.back()->view->failure().has_value(); }));
        pages.back()->view->connectPropertyChanged(
            [&loads, view = pages.back()->view.get()](WebViewProperty property) {
                if (property == WebViewProperty::isLoading && view->isLoading()) ++loads;
            });
    }
    fakes.activity.setMoving(true);

    network.cameBack.emit();
    settle();
    EXPECT_EQ(loads, 0);
    pages.front()->view->stopLoading();  // what the person stopped stays so
    fakes.activity.setMoving(false);

    EXPECT_TRUE(waitFor([&] { return loads == 3; }));
    settle();
    EXPECT_EQ(loads, 3);
}

TEST_F(TurnsTest, APageWhoseProcessEndsMakesRoom) {
    for (std::size_t number = 1; number <= 3; ++number) wait(number, true);

    ASSERT_TRUE(waitFor([&] { return requests(1) == 1 && requests(2) == 1; }));
    for (const int process : pageProcesses()) kill(process, SIGKILL);

    EXPECT_TRUE(waitFor([&] { return requests(3) == 1; }));
}

}  // namespace
}  // namespace orvu

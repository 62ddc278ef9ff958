#include "core/BrowserTab.h"

#include "site/icons/PageIcons.h"
#include "support/StoreWorld.h"

#include <chrono>

namespace orvu {
namespace {

using namespace std::chrono_literals;

class BrowserTabTest : public StoreTest {
protected:
    std::unique_ptr<WebConfiguration> configuration =
        world.engine.makeConfiguration(WebsiteDataStore::defaultDataStore());

    [[nodiscard]] std::shared_ptr<BrowserTab> openTab(const std::optional<Url>& address) {
        auto tab = std::make_shared<BrowserTab>(*configuration, address, world.loop, world.favicons,
                                                world.permissions, Persistence::persistent);
        tab->onOpenInNewTab = [this](const UrlRequest& request) { opened.push_back(request); };
        return tab;
    }
    [[nodiscard]] std::shared_ptr<BrowserTab> openTab(std::string_view address) {
        return openTab(std::optional{url(address)});
    }
    [[nodiscard]] static NavigationAction linkTo(std::string_view address) {
        return {.request = {url(address)}, .navigationType = NavigationType::linkActivated};
    }
    [[nodiscard]] static NavigationAction scriptTo(std::string_view address) {
        return {.request = {url(address)}, .navigationType = NavigationType::other};
    }

    std::vector<UrlRequest> opened;
};

TEST_F(BrowserTabTest, ANewTabWithoutAnAddressStandsAtItsInitialValues) {
    const auto tab = openTab(std::nullopt);

    EXPECT_TRUE(tab->isNewTab());
    EXPECT_EQ(tab->title(), "New tab");
    EXPECT_EQ(tab->path(), "");
    EXPECT_EQ(tab->pageTitle(), "");
    EXPECT_EQ(tab->progress(), 0.0);
    EXPECT_FALSE(tab->canGoBack() || tab->canGoForward() || tab->isLoading());
    EXPECT_FALSE(tab->isPinned() || tab->hasOnlySecureContent() || tab->isSecure());
    EXPECT_EQ(tab->groupID(), std::nullopt);
    EXPECT_TRUE(page(*tab).calls.empty());
    EXPECT_EQ(page(*tab).delegate(), tab.get());
}

TEST_F(BrowserTabTest, ATabWithAnAddressLoadsAtOnceAndKnowsItAlready) {
    const auto tab = openTab(a);

    EXPECT_EQ(page(*tab).calls, Strings{"load https://a.example/"});
    EXPECT_EQ(tab->url(), url(a));
    EXPECT_TRUE(tab->isLoading());
    EXPECT_FALSE(tab->isNewTab());
}

TEST_F(BrowserTabTest, EachTabHasAnIdentityOfItsOwn) {
    EXPECT_NE(openTab(a)->id(), openTab(a)->id());
}

TEST_F(BrowserTabTest, EveryPropertyOfThePageIsMirroredWithOneSignalEach) {
    const auto tab = openTab(std::nullopt);
    const ChangeCounter changes{*tab};
    FakeWebView& view = page(*tab);

    view.setTitle("Title");
    view.setUrl(url(a));
    view.setCanGoBack(true);
    view.setCanGoForward(true);
    view.setProgress(0.5);
    view.setSecure(true);
    EXPECT_EQ(changes.count(), 6);
    view.load(url(b));  // address and loading

    EXPECT_EQ(changes.count(), 8);
    EXPECT_EQ(tab->pageTitle(), "Title");
    EXPECT_EQ(tab->url(), url(b));
    EXPECT_TRUE(tab->canGoBack() && tab->canGoForward() && tab->isLoading());
    EXPECT_EQ(tab->progress(), 0.5);
    EXPECT_TRUE(tab->hasOnlySecureContent());
}

TEST_F(BrowserTabTest, SettingWhatStandsAlreadySignalsNothing) {
    const auto tab = openTab(std::nullopt);
    const Uuid group = Uuid::random();
    tab->setPinned(true);
    tab->setGroupID(group);
    const ChangeCounter changes{*tab};

    tab->setPinned(true);
    tab->setGroupID(group);

    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserTabTest, WithoutATitleTheTabIsNamedAfterItsSiteAndALateTitleReplacesThat) {
    const auto tab = openTab("https://www.gnu.org/software/");

    EXPECT_EQ(tab->title(), "gnu.org");
    page(*tab).setTitle("GNU Software");
    EXPECT_EQ(tab->title(), "GNU Software");
    page(*tab).setTitle("");

    EXPECT_EQ(tab->title(), "gnu.org");
}

TEST_F(BrowserTabTest, ASiteNameLosesEveryWww) {
    EXPECT_EQ(openTab("https://www.a.www.example/")->title(), "a.example");
    EXPECT_EQ(openTab("https://awww.example/")->title(), "aexample");
    EXPECT_EQ(openTab("https://WWW.example/")->title(), "WWW.example");
}

TEST_F(BrowserTabTest, AnAddressWithoutASiteReadsLikeAnEmptyTab) {
    EXPECT_EQ(openTab("about:blank")->title(), "New tab");
    EXPECT_EQ(openTab("file:///home/page.html")->title(), "New tab");
    EXPECT_EQ(openTab("https://www./")->title(), "New tab");
}

TEST_F(BrowserTabTest, ThePathIsDecodedAndEmptyForTheRoot) {
    EXPECT_EQ(openTab("https://a.example")->path(), "");
    EXPECT_EQ(openTab("https://a.example/")->path(), "");
    EXPECT_EQ(openTab("https://a.example/?q=1")->path(), "");
    EXPECT_EQ(openTab("https://a.example/b%20c/?q=%20")->path(), "/b c/");
    EXPECT_EQ(openTab("https://a.example/%E2%82%AC%FF")->path(), "/€%FF");
}

TEST_F(BrowserTabTest, OnlyExactlyHttpsWithSecureContentIsSecure) {
    for (const auto& [address, secure] :
         std::vector<std::pair<std::string, bool>>{{"https://a.example/", true},
                                                   {"http://a.example/", false},
                                                   {"HTTPS://a.example/", false},
                                                   {"about:blank", false}}) {
        const auto tab = openTab(address);
        EXPECT_FALSE(tab->isSecure()) << address;
        page(*tab).setSecure(true);
        EXPECT_EQ(tab->isSecure(), secure) << address;
    }
}

// --- Decisions --------------------------------------------------------------------------------

TEST_F(BrowserTabTest, ALinkWithTheCommandKeyOpensElsewhereAndLeavesThePage) {
    const auto tab = openTab(a);
    NavigationAction action = linkTo(b);
    action.commandKey = true;

    EXPECT_EQ(tab->decidePolicy(action), NavigationPolicy::cancel);

    EXPECT_EQ(opened, (std::vector<UrlRequest>{{url(b)}}));
}

TEST_F(BrowserTabTest, ALinkWithTheMiddleButtonOpensElsewhere) {
    const auto tab = openTab(a);
    NavigationAction action = linkTo(b);
    action.buttonNumber = 2;

    EXPECT_EQ(tab->decidePolicy(action), NavigationPolicy::cancel);

    EXPECT_EQ(opened, (std::vector<UrlRequest>{{url(b)}}));
}

TEST_F(BrowserTabTest, APlainClickNavigatesWithAnyOtherButton) {
    const auto tab = openTab(a);

    for (const int button : {0, 1, 3, 4}) {
        NavigationAction action = linkTo(b);
        action.buttonNumber = button;
        EXPECT_EQ(tab->decidePolicy(action), NavigationPolicy::allow);
    }

    EXPECT_TRUE(opened.empty());
}

TEST_F(BrowserTabTest, OnlyLinksOpenElsewhereWhateverKeyOrButtonWasUsed) {
    const auto tab = openTab(a);

    for (const auto type :
         {NavigationType::formSubmitted, NavigationType::backForward, NavigationType::reload,
          NavigationType::formResubmitted, NavigationType::other}) {
        const NavigationAction action{
            .request = {url(b)}, .navigationType = type, .commandKey = true, .buttonNumber = 2};
        EXPECT_EQ(tab->decidePolicy(action), NavigationPolicy::allow);
    }

    EXPECT_TRUE(opened.empty());
}

TEST_F(BrowserTabTest, NoSchemeIsFilteredOut) {
    const auto tab = openTab(a);

    for (const auto address : {"mailto:x@a.example", "javascript:1", "file:///x", "x-y:z"}) {
        EXPECT_EQ(tab->decidePolicy(linkTo(address)), NavigationPolicy::allow);
    }
}

TEST_F(BrowserTabTest, DecisionsWithoutListenersAreTakenAllTheSame) {
    const auto tab = openTab(a);
    tab->onOpenInNewTab = {};
    NavigationAction action = linkTo(b);
    action.commandKey = true;

    EXPECT_EQ(tab->decidePolicy(action), NavigationPolicy::cancel);
    tab->createWebView(linkTo(b));
    page(*tab).finish("A");

    EXPECT_EQ(tab->title(), "A");
}

TEST_F(BrowserTabTest, AnAttachmentInTheMainFrameIsDownloadedInAnyCaseOfLetters) {
    const auto tab = openTab(a);

    for (const auto header : {"attachment", "Attachment; filename=\"a.pdf\"", "ATTACHMENT;x",
                              "aTtAcHmEnT", "attachmentx"}) {
        EXPECT_EQ(tab->decidePolicy(NavigationResponse{true, true, header}),
                  ResponsePolicy::download)
            << header;
    }
}

TEST_F(BrowserTabTest, OtherDispositionsOfTheMainFrameAreShown) {
    const auto tab = openTab(a);

    for (const auto header : {"", "inline", "inline; attachment", " attachment", "attach"}) {
        EXPECT_EQ(tab->decidePolicy(NavigationResponse{true, true, header}), ResponsePolicy::allow)
            << header;
    }
}

TEST_F(BrowserTabTest, WhatCannotBeShownInTheMainFrameIsDownloaded) {
    const auto tab = openTab(a);

    for (const auto header : {"", "inline", "attachment"}) {
        EXPECT_EQ(tab->decidePolicy(NavigationResponse{true, false, header}),
                  ResponsePolicy::download);
    }
}

TEST_F(BrowserTabTest, ALoadThatBecomesADownloadIsToldOnceWhenThePreviousAddressIsBack) {
    const auto tab = openTab(a);
    std::vector<std::string> told;
    tab->onDownload = [&] { told.push_back(tab->url()->absoluteString()); };
    page(*tab).load(url(b));

    EXPECT_EQ(tab->decidePolicy(NavigationResponse{true, true, "attachment"}),
              ResponsePolicy::download);
    EXPECT_TRUE(told.empty());
    page(*tab).fail();
    page(*tab).load(url(b));

    EXPECT_EQ(told, (std::vector<std::string>{a}));
}

TEST_F(BrowserTabTest, ALoadThatFailsIsNoDownload) {
    const auto tab = openTab(a);
    int told = 0;
    tab->onDownload = [&] { ++told; };

    page(*tab).load(url(b));
    EXPECT_EQ(tab->decidePolicy(NavigationResponse{true, true, ""}), ResponsePolicy::allow);
    page(*tab).fail();

    EXPECT_EQ(told, 0);
}

TEST_F(BrowserTabTest, ASubframeNeverDownloads) {
    const auto tab = openTab(a);

    for (const bool canShow : {true, false}) {
        for (const auto header : {"", "Attachment"}) {
            EXPECT_EQ(tab->decidePolicy(NavigationResponse{false, canShow, header}),
                      ResponsePolicy::allow);
        }
    }
}

TEST_F(BrowserTabTest, TheFirstScriptedPopupOpensEvenAtTheBeginningOfTime) {
    world.loop.setNow(Date{0});
    const auto tab = openTab(a);

    tab->createWebView(scriptTo(b));

    EXPECT_EQ(opened, (std::vector<UrlRequest>{{url(b)}}));
}

TEST_F(BrowserTabTest, AScriptedPopupWithinThreeSecondsIsDroppedThreeIncluded) {
    for (const auto& [pause, count] : std::vector<std::pair<std::chrono::milliseconds, int>>{
             {0ms, 1}, {2999ms, 1}, {3000ms, 1}, {3001ms, 2}}) {
        opened.clear();
        world.loop.setNow(Date{780000000.0});
        const auto tab = openTab(a);

        tab->createWebView(scriptTo(b));
        world.loop.advance(pause);
        tab->createWebView(scriptTo(c));

        EXPECT_EQ(static_cast<int>(opened.size()), count) << pause.count();
    }
}

TEST_F(BrowserTabTest, ADroppedPopupDoesNotProlongThePause) {
    const auto tab = openTab(a);
    tab->createWebView(scriptTo(b));
    world.loop.advance(2s);
    tab->createWebView(scriptTo(c));

    world.loop.advance(1001ms);
    tab->createWebView(scriptTo(d));

    EXPECT_EQ(opened, (std::vector<UrlRequest>{{url(b)}, {url(d)}}));
}

TEST_F(BrowserTabTest, LinksForNewWindowsAlwaysOpenAndDoNotTouchThePause) {
    const auto tab = openTab(a);

    tab->createWebView(linkTo(b));
    tab->createWebView(linkTo(b));
    tab->createWebView(scriptTo(c));
    tab->createWebView(scriptTo(d));
    tab->createWebView(linkTo(b));

    EXPECT_EQ(opened, (std::vector<UrlRequest>{{url(b)}, {url(b)}, {url(c)}, {url(b)}}));
}

TEST_F(BrowserTabTest, EachTabHasAPopupPauseOfItsOwn) {
    const auto first = openTab(a);
    const auto second = openTab(a);

    first->createWebView(scriptTo(b));
    second->createWebView(scriptTo(c));

    EXPECT_EQ(opened, (std::vector<UrlRequest>{{url(b)}, {url(c)}}));
}

// --- Visits -----------------------------------------------------------------------------------

TEST_F(BrowserTabTest, AFinishedPageIsReportedOnceWithItsTitle) {
    const auto tab = openTab(a);
    Strings titles;
    tab->onVisit = [&](BrowserTab& visited) { titles.push_back(visited.title()); };

    page(*tab).finish("A");

    EXPECT_EQ(titles, Strings{"A"});
}

TEST_F(BrowserTabTest, AFailedLoadIsNotReportedAndThePreviousPageStays) {
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

TEST_F(BrowserTabTest, ATabMayGoWhileItReportsItsVisit) {
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

TEST_F(BrowserTabTest, ATabMayGoWhileItTellsOfAChange) {
    auto tab = openTab(a);
    FakeWebView& view = page(*tab);
    tab->connectChanged([&] { tab.reset(); });

    view.setTitle("A");

    EXPECT_TRUE(world.engine.views.empty());
}

// --- Page text --------------------------------------------------------------------------------

TEST_F(BrowserTabTest, ThePagesTextIsCutToTheLimitInCharacters) {
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

TEST_F(BrowserTabTest, WhatIsNoTextGivesAnEmptyText) {
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

TEST_F(BrowserTabTest, AnAnswerAfterTheReadWasDroppedHasNoEffect) {
    const auto tab = openTab(a);
    {
        auto text = tab->pageText(100);
        text.start();
    }

    EXPECT_FALSE(page(*tab).answers[0].isWanted());
    page(*tab).answers[0].resolve({ScriptResult::Kind::text, "late"});
}

/// A page that finished loading, with what its script tells of its icons.
class FaviconOfATabTest : public BrowserTabTest {
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

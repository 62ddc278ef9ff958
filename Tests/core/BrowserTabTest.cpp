#include "core/BrowserTab.h"

#include "fakes/FakeDownloadRequest.h"
#include "support/TabWorld.h"

#include <chrono>
#include <memory>
#include <string>

namespace orvu {
namespace {

using namespace std::chrono_literals;

using BrowserTabTest = TabTest;

TEST_F(BrowserTabTest, ANewTabWithoutAnAddressStandsAtItsInitialValues) {
    const auto tab = openTab(UrlRequest{});

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
    const auto tab = openTab(UrlRequest{});
    const ChangeCounter changes{*tab};
    FakeWebView& view = page(*tab);

    view.setTitle("Title");
    view.setUrl(url(a));
    view.setCanGoBack(true);
    view.setCanGoForward(true);
    view.setProgress(0.5);
    view.setSecure(true);
    view.setCapture({.camera = true});
    EXPECT_EQ(changes.count(), 7);
    view.load(url(b));  // address and loading

    EXPECT_EQ(changes.count(), 9);
    EXPECT_EQ(tab->activeCapture(), (ActiveCapture{.camera = true}));
    EXPECT_EQ(tab->pageTitle(), "Title");
    EXPECT_EQ(tab->url(), url(b));
    EXPECT_TRUE(tab->canGoBack() && tab->canGoForward() && tab->isLoading());
    EXPECT_EQ(tab->progress(), 0.5);
    EXPECT_TRUE(tab->hasOnlySecureContent());
}

TEST_F(BrowserTabTest, SettingWhatStandsAlreadySignalsNothing) {
    const auto tab = openTab(UrlRequest{});
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

// --- Decisions ---------------------------------------------------------------------------------

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
    page(*tab).becomeDownload();
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

// --- Capture and what is refused --------------------------------------------------------------

TEST_F(BrowserTabTest, StoppingEndsWhatIsOnAndNothingElse) {
    const auto tab = openTab(a);
    FakeWebView& view = page(*tab);
    view.setCapture({.microphone = true});
    view.calls.clear();

    tab->stopCapture();

    EXPECT_EQ(view.calls, Strings{"stop microphone"});
    EXPECT_FALSE(tab->activeCapture().any());
    tab->stopCapture();
    EXPECT_EQ(view.calls.size(), 1U);
}

TEST_F(BrowserTabTest, StoppingBothEndsBothEvenIfAnObserverDropsTheTab) {
    auto tab = openTab(a);
    FakeWebView& view = page(*tab);
    view.setCapture({.camera = true, .microphone = true});
    Strings calls;
    view.atEnd = [&] { calls = view.calls; };
    tab->connectChanged([&] { tab.reset(); });

    tab->stopCapture();

    EXPECT_EQ(calls, (Strings{"load https://a.example/", "stop camera", "stop microphone"}));
}

TEST_F(BrowserTabTest, AfterAStopAnAllowedSiteHasToAsk) {
    const auto tab = openTab(a);
    world.permissions.set(SitePermissions::Choice::allow, CaptureKind::camera, "a.example",
                          Persistence::persistent);
    page(*tab).setCapture({.camera = true});

    tab->stopCapture();
    tab->requestMediaCapture({MediaCaptureType::camera, "a.example", [](auto) {}});

    EXPECT_EQ(tab->captureQuestion(), (CaptureQuestion{MediaCaptureType::camera, "a.example"}));
}

TEST_F(BrowserTabTest, AFloodOfRefusedRequestsSignalsOnceForEachThing) {
    const auto tab = openTab(a);
    const ChangeCounter changes{*tab};

    for (int i = 0; i < 1000; ++i) {
        tab->permissionRefused(RefusedPermission::location);
        tab->permissionRefused(RefusedPermission::clipboard);
    }

    EXPECT_EQ(changes.count(), 2);
    EXPECT_TRUE(tab->refusedPermissions().contains(RefusedPermission::location));
    EXPECT_FALSE(tab->refusedPermissions().contains(RefusedPermission::screen));
}

TEST_F(BrowserTabTest, AnotherDocumentForgetsWhatWasRefusedWithOneSignal) {
    const auto tab = openTab(a);
    tab->permissionRefused(RefusedPermission::location);
    tab->requestMediaCapture({MediaCaptureType::camera, "a.example", [](auto) {}});
    const ChangeCounter changes{*tab};

    tab->documentUnloaded();

    EXPECT_EQ(changes.count(), 1);
    EXPECT_FALSE(tab->refusedPermissions().contains(RefusedPermission::location));
    tab->documentUnloaded();
    EXPECT_EQ(changes.count(), 1);
}

// --- Downloads ---------------------------------------------------------------------------------

class TabDownloadsTest : public BrowserTabTest {
protected:
    void ask(BrowserTab& tab, const std::string& name) {
        tab.requestDownload(std::make_unique<FakeDownloadRequest>(log, name, DownloadCause::page));
    }

    FakeDownloadRequest::Log log;
};

TEST_F(TabDownloadsTest, ThoseThatAPageBeginsUnaskedAreAskedAboutOnce) {
    const auto tab = openTab(a);
    int changes = 0;
    tab->connectChanged([&] { ++changes; });

    for (const auto name : {"1", "2", "3"}) ask(*tab, name);
    ASSERT_TRUE(tab->question());
    EXPECT_EQ(changes, 1);
    tab->answer(*tab->question(), PageAnswer::allow);

    EXPECT_EQ(log, (FakeDownloadRequest::Log{"1 begun", "2 begun", "3 begun"}));
    EXPECT_FALSE(tab->question());
    EXPECT_EQ(changes, 2);
}

TEST_F(TabDownloadsTest, TheQuestionAboutTheCameraComesFirst) {
    const auto tab = openTab(a);
    for (const auto name : {"1", "2"}) ask(*tab, name);
    const auto downloads = tab->question();

    tab->requestMediaCapture({MediaCaptureType::camera, "a.example", [](auto) {}});
    EXPECT_EQ(tab->question()->text, "“a.example” wants to use your camera");
    tab->answer(*tab->question(), PageAnswer::refuse);

    EXPECT_EQ(tab->question(), downloads);
    EXPECT_EQ(log, FakeDownloadRequest::Log{"1 begun"});
}

TEST_F(TabDownloadsTest, AnAnswerToAnotherQuestionHasNoEffect) {
    const auto tab = openTab(a);
    for (const auto name : {"1", "2"}) ask(*tab, name);
    const PageQuestion downloads = *tab->question();
    tab->requestMediaCapture({MediaCaptureType::camera, "a.example", [](auto) {}});

    tab->answer(downloads, PageAnswer::allow);

    EXPECT_EQ(log, FakeDownloadRequest::Log{"1 begun"});
    EXPECT_TRUE(tab->captureQuestion());
}

TEST_F(TabDownloadsTest, TheEndOfTheTabDropsWhatWaits) {
    auto tab = openTab(a);
    for (const auto name : {"1", "2"}) ask(*tab, name);

    tab.reset();

    EXPECT_EQ(log, (FakeDownloadRequest::Log{"1 begun", "2 dropped"}));
}

TEST_F(TabDownloadsTest, WhereThePersonLedThePageBeginsAnew) {
    const auto tab = openTab(a);
    ask(*tab, "1");
    auto action = linkTo(b);
    action.byPerson = true;
    static_cast<void>(tab->decidePolicy(action));
    tab->documentUnloaded();

    ask(*tab, "2");

    EXPECT_EQ(log, (FakeDownloadRequest::Log{"1 begun", "2 begun"}));
}

}  // namespace
}  // namespace orvu

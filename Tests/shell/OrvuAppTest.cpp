#include "shell/OrvuApp.h"

#include "fakes/FakeBrowserWindow.h"
#include "fakes/FakeDownload.h"
#include "fakes/FakeImportWindow.h"
#include "support/StoreWorld.h"
#include "support/UpdateWorld.h"

#include <deque>
#include <limits>
#include <optional>

namespace orvu {
namespace {

/// Counts what was asked of the program as a whole.
class FakeApplicationHost : public ApplicationHost {
public:
    void terminate() override { ++terminations; }
    [[nodiscard]] Future<bool> mayTerminate(const std::string& reason) override {
        reasons.push_back(reason);
        answers.emplace_back();
        return answers.back().future();
    }
    void orderFrontStandardAboutPanel() override { ++aboutPanels; }

    int terminations = 0;
    std::vector<std::string> reasons;   ///< why the person was asked
    std::deque<Promise<bool>> answers;  ///< one for each, to be resolved
    int aboutPanels = 0;
};

class FakeSettingsWindow : public SettingsWindow {
public:
    void show(const Actions& acts) override {
        ++shows;
        actions = acts;
    }

    int shows = 0;
    Actions actions;
};

class FakeOnboardingWindow : public OnboardingWindow {
public:
    void showIfNeeded(const MakeDefault& act) override {
        ++asked;
        makeDefault = act;
        if (whenAsked) whenAsked();
    }

    int asked = 0;
    MakeDefault makeDefault;
    std::function<void()> whenAsked;
};

class OrvuAppTest : public StoreTest {
protected:
    [[nodiscard]] BrowserStore& storeAt(std::size_t index) {
        return *windows.windows().at(index).store;
    }
    [[nodiscard]] FakeWebView& pageAt(std::size_t index, std::string_view address) {
        return page(*tabAt(storeAt(index), address));
    }
    /// Opens a page in a window that asks before it is closed.
    void askingPage(std::size_t index) {
        page(storeAt(index).newTab(url(a), Select::yes)).asksBeforeClosing = true;
    }
    void startDownload() {
        static FakeDownload::Facts facts;  // outlives the program
        world.services.downloads().add(std::make_unique<FakeDownload>(facts));
    }
    [[nodiscard]] std::int64_t launchCount() const {
        return world.defaults.integer("launchCount").value_or(-1);
    }

    static constexpr const char* whatsNew = "https://updates.example/orvu/whats-new/";

    FakeScreen screen;
    BrowserWindowController windows{world.services, screen.factory()};
    FakeApplicationHost host;
    FakeSettingsWindow settingsWindow;
    FakeImportWindow import;
    UpdateWorld updates;
    FakeOnboardingWindow onboarding;
    AppDelegate app{
        world.services, {windows, settingsWindow, import, onboarding}, updates.updater, host};
};

TEST_F(OrvuAppTest, LaunchingOpensOneWindowWithTheRestoredTabsAndCountsTheStart) {
    world.storeRecords<SavedTab>("browserSession", {{url(a), false, std::nullopt}});

    app.applicationDidFinishLaunching();

    EXPECT_TRUE(app.launched());
    ASSERT_EQ(windows.windows().size(), 1U);
    EXPECT_FALSE(storeAt(0).isPrivate());
    EXPECT_EQ(addresses(storeAt(0).tabs()), Strings{a});
    EXPECT_EQ(launchCount(), 1);
}

TEST_F(OrvuAppTest, AddressesFromBeforeTheLaunchStandInFrontBehindTheRestoredTabs) {
    world.storeRecords<SavedTab>("browserSession", {{url(a), false, std::nullopt}});
    app.open({url(b)});
    app.open({url(c), url(d)});
    EXPECT_EQ(app.pendingURLs(), (std::vector{url(b), url(c), url(d)}));
    EXPECT_TRUE(windows.windows().empty());

    app.applicationDidFinishLaunching();

    EXPECT_EQ(addresses(storeAt(0).tabs()), (Strings{a, b, c, d}));
    EXPECT_EQ(front(storeAt(0)), d);
    EXPECT_TRUE(app.pendingURLs().empty());
}

TEST_F(OrvuAppTest, AddressesAfterTheLaunchGoToTheWindowsAndNeverIntoAPrivateOne) {
    app.applicationDidFinishLaunching();
    app.newPrivateWindow();

    app.open({url(a)});

    EXPECT_TRUE(app.pendingURLs().empty());
    EXPECT_EQ(windows.windows().size(), 2U);
    EXPECT_EQ(addresses(storeAt(0).tabs()), (Strings{"", a}));
    EXPECT_EQ(addresses(storeAt(1).tabs()), Strings{""});
}

TEST_F(OrvuAppTest, TheStartsAreCountedOnFromAnyStoredNumber) {
    const auto largest = std::numeric_limits<std::int64_t>::max();
    std::vector<std::int64_t> counts;

    for (const std::int64_t stored : {std::int64_t{41}, std::int64_t{-5}, largest}) {
        world.defaults.setInteger("launchCount", stored);
        app.applicationDidFinishLaunching();
        counts.push_back(launchCount());
    }
    world.defaults.setString("launchCount", "many");
    app.applicationDidFinishLaunching();
    counts.push_back(launchCount());

    EXPECT_EQ(counts, (std::vector<std::int64_t>{42, 1, largest, 1}));
}

TEST_F(OrvuAppTest, StartingAgainWithoutAVisibleWindowOpensOne) {
    app.applicationDidFinishLaunching();
    screen.windows[0]->close();

    app.applicationShouldHandleReopen();
    EXPECT_EQ(windows.windows().size(), 1U);
    screen.windows[0]->visible = false;
    app.applicationShouldHandleReopen();

    EXPECT_EQ(windows.windows().size(), 2U);
}

TEST_F(OrvuAppTest, StartingAgainWithAVisibleWindowBringsItToTheFront) {
    app.applicationDidFinishLaunching();
    screen.windows[0]->calls.clear();

    app.applicationShouldHandleReopen();

    EXPECT_EQ(windows.windows().size(), 1U);
    EXPECT_EQ(screen.windows[0]->calls, Strings{"present"});
}

TEST_F(OrvuAppTest, TheProgramStaysWhenItsLastWindowCloses) {
    app.applicationDidFinishLaunching();

    screen.windows[0]->close();

    EXPECT_FALSE(app.applicationShouldTerminateAfterLastWindowClosed());
    app.newWindow();
    EXPECT_EQ(windows.windows().size(), 1U);
}

TEST_F(OrvuAppTest, TheMenuMakesOrdinaryAndPrivateWindows) {
    app.newWindow();
    app.newPrivateWindow();

    EXPECT_FALSE(storeAt(0).isPrivate());
    EXPECT_TRUE(storeAt(1).isPrivate());
}

TEST_F(OrvuAppTest, TheMenuAsksTheDesktopToMakeThisTheDefaultBrowser) {
    app.makeDefaultBrowser();

    EXPECT_EQ(world.workspace.defaultBrowserRequests, 1);
}

TEST_F(OrvuAppTest, TheSettingsWindowCanMakeThisTheDefaultBrowser) {
    app.openSettings();
    EXPECT_EQ(settingsWindow.shows, 1);
    EXPECT_TRUE(windows.windows().empty());

    settingsWindow.actions.makeDefault();

    EXPECT_EQ(world.workspace.defaultBrowserRequests, 1);
}

TEST_F(OrvuAppTest, TheSettingsWindowMayOutliveTheProgramThatOpenedIt) {
    std::optional<AppDelegate> other;
    other.emplace(world.services, AppDelegate::Windows{windows, settingsWindow, import, onboarding},
                  updates.updater, host);
    other->openSettings();
    other.reset();

    settingsWindow.actions.makeDefault();

    EXPECT_EQ(world.workspace.defaultBrowserRequests, 0);
}

TEST_F(OrvuAppTest, ImportingIsIntoTheProfileOfTheWindowInFront) {
    app.importBookmarks();
    windows.newWindow(BrowserWindowController::Private::no, world.work, {});
    app.importBookmarks();

    EXPECT_EQ(import.shown, (std::vector<std::optional<Profile>>{std::nullopt, world.work}));
}

// --- The first run ------------------------------------------------------------------------------

TEST_F(OrvuAppTest, TheFirstRunComesOverTheFirstWindowBeforeTheLaunchIsCounted) {
    onboarding.whenAsked = [this] {
        EXPECT_EQ(windows.windows().size(), 1U);
        EXPECT_EQ(launchCount(), -1);
    };

    app.applicationDidFinishLaunching();
    app.newWindow();

    EXPECT_EQ(onboarding.asked, 1);
}

TEST_F(OrvuAppTest, BecomingTheDefaultBrowserSaysWhatCameOfIt) {
    app.applicationDidFinishLaunching();
    EXPECT_EQ(onboarding.makeDefault(), "Links from other programs open in Orvu now.");
    EXPECT_EQ(world.workspace.defaultBrowserRequests, 1);
    world.workspace.becomesDefault = false;

    EXPECT_EQ(onboarding.makeDefault(),
              "Your desktop kept its default browser. Its settings can change that.");
}

// --- Updates ------------------------------------------------------------------------------------

TEST_F(OrvuAppTest, TheNotesOfAnUpdateOpenOnceInFront) {
    updates.settings.showWhatsNewFor.set("1.0");

    app.applicationDidFinishLaunching();

    EXPECT_EQ(front(storeAt(0)), whatsNew);
    EXPECT_FALSE(updates.settings.showWhatsNewFor.isSet());
}

TEST_F(OrvuAppTest, AnUpdateThatDidntComeHasItsNotesWait) {
    updates.settings.showWhatsNewFor.set("1.2");

    app.applicationDidFinishLaunching();

    EXPECT_EQ(addresses(storeAt(0).tabs()).size(), 1U);
    EXPECT_NE(front(storeAt(0)), whatsNew);
    EXPECT_TRUE(updates.settings.showWhatsNewFor.isSet());
}

TEST_F(OrvuAppTest, TheFirstCheckComesAfterTheLaunch) {
    updates.loop.advance(Updater::firstCheck);
    EXPECT_TRUE(updates.transport.asked.empty());
    app.applicationDidFinishLaunching();

    updates.loop.advance(Updater::firstCheck);

    EXPECT_EQ(updates.transport.asked, Strings{UpdateWorld::feed});
}

TEST_F(OrvuAppTest, WhoAsksForUpdatesSeesTheSettings) {
    app.checkForUpdates();

    EXPECT_EQ(settingsWindow.shows, 1);
    EXPECT_EQ(updates.transport.asked, Strings{UpdateWorld::feed});
}

TEST_F(OrvuAppTest, TheNotesOpenInTheWindowInFrontOrInOneOfTheirOwn) {
    app.showWhatsNew();
    ASSERT_EQ(windows.windows().size(), 1U);
    EXPECT_EQ(front(storeAt(0)), whatsNew);
    storeAt(0).newTab(url(a), Select::yes);

    app.showWhatsNew();

    ASSERT_EQ(windows.windows().size(), 1U);
    EXPECT_EQ(front(storeAt(0)), whatsNew);
    EXPECT_FALSE(storeAt(0).isPrivate());
}

TEST_F(OrvuAppTest, RestartingForAnUpdateAsksThePagesBeforeItsFirstStep) {
    app.applicationDidFinishLaunching();
    askingPage(0);
    updates.makeReady();
    updates.installer.calls.clear();

    app.restartToUpdate();
    pageAt(0, a).askBeforeClosing();
    EXPECT_TRUE(updates.installer.calls.empty());
    EXPECT_FALSE(updates.settings.showWhatsNewFor.isSet());
    pageAt(0, a).answerDialog({.isAccepted = true});
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_EQ(updates.installer.calls, Strings{"swap and start"});
    EXPECT_EQ(host.terminations, 1);
}

TEST_F(OrvuAppTest, APageThatStaysKeepsTheUpdateReady) {
    app.applicationDidFinishLaunching();
    askingPage(0);
    updates.makeReady();
    app.restartToUpdate();
    pageAt(0, a).askBeforeClosing();

    pageAt(0, a).answerDialog({});
    world.loop.advance(std::chrono::seconds{10});

    EXPECT_EQ(host.terminations, 0);
    EXPECT_EQ(updates.kind(), UpdateWorld::Kind::ready);
}

TEST_F(OrvuAppTest, WithoutAnUpdateThereIsNothingToRestartFor) {
    app.applicationDidFinishLaunching();

    app.restartToUpdate();

    EXPECT_EQ(host.terminations, 0);
}

TEST_F(OrvuAppTest, TheEndPutsInWhatMayComeByItself) {
    updates.settings.autoUpdate.set(true);
    updates.makeReady();
    updates.installer.calls.clear();

    app.applicationWillTerminate();

    EXPECT_EQ(updates.installer.calls, Strings{"swap"});
}

TEST_F(OrvuAppTest, AStartCountsAsWellOnceAWindowWasShown) {
    app.windowDidShow();
    app.windowDidShow();

    EXPECT_EQ(updates.installer.calls, Strings{"confirm"});
}

// --- Quitting -----------------------------------------------------------------------------------

TEST_F(OrvuAppTest, QuittingAsksNothingWhereNothingWouldBeLost) {
    app.applicationDidFinishLaunching();

    app.terminate();

    EXPECT_EQ(host.terminations, 1);
    EXPECT_TRUE(host.reasons.empty());
}

TEST_F(OrvuAppTest, QuittingAsksOnceAboutDownloadsThatRun) {
    app.applicationDidFinishLaunching();
    startDownload();
    startDownload();

    app.terminate();
    EXPECT_EQ(host.reasons, Strings{"2 downloads are still running. Quitting ends them."});
    EXPECT_EQ(host.terminations, 0);
    host.answers.back().resolve(true);

    EXPECT_EQ(host.terminations, 1);
    EXPECT_EQ(host.reasons.size(), 1U);
}

TEST_F(OrvuAppTest, WhoKeepsADownloadKeepsTheProgramAndIsAskedAgainTheNextTime) {
    app.applicationDidFinishLaunching();
    startDownload();
    app.terminate();

    host.answers.back().resolve(false);
    EXPECT_EQ(host.terminations, 0);
    app.terminate();

    const std::string reason = "A download is still running. Quitting ends it.";
    EXPECT_EQ(host.reasons, (Strings{reason, reason}));
}

TEST_F(OrvuAppTest, ADownloadThatEndedIsNotAskedAbout) {
    app.applicationDidFinishLaunching();
    startDownload();
    world.services.downloads().items().front()->cancel();

    app.terminate();

    EXPECT_EQ(host.terminations, 1);
}

TEST_F(OrvuAppTest, QuittingAsksThePagesOfAllWindowsAndBringsEachToTheFront) {
    app.applicationDidFinishLaunching();
    app.newWindow();
    for (std::size_t i = 0; i < 2; ++i) {
        askingPage(i);
        storeAt(i).newTab(url(b), Select::yes);
    }
    screen.windows[0]->calls.clear();
    screen.windows[1]->calls.clear();

    app.terminate();
    pageAt(0, a).askBeforeClosing();
    pageAt(1, a).askBeforeClosing();
    EXPECT_EQ(front(storeAt(0)), a);
    EXPECT_EQ(front(storeAt(1)), b);
    EXPECT_EQ(screen.windows[0]->calls, Strings{"present"});
    EXPECT_TRUE(screen.windows[1]->calls.empty());
    pageAt(0, a).answerDialog({.isAccepted = true});
    EXPECT_EQ(front(storeAt(1)), a);
    EXPECT_EQ(host.terminations, 0);
    pageAt(1, a).answerDialog({.isAccepted = true});
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_EQ(host.terminations, 1);
}

TEST_F(OrvuAppTest, OneStayEndsTheQuitting) {
    app.applicationDidFinishLaunching();
    askingPage(0);
    app.terminate();
    pageAt(0, a).askBeforeClosing();

    pageAt(0, a).answerDialog({});
    world.loop.advance(std::chrono::seconds{10});

    EXPECT_EQ(host.terminations, 0);
    EXPECT_EQ(windows.windows().size(), 1U);
}

TEST_F(OrvuAppTest, TheDownloadsAreAskedAboutBeforeThePages) {
    app.applicationDidFinishLaunching();
    askingPage(0);
    startDownload();

    app.terminate();
    EXPECT_TRUE(pageAt(0, a).closings.empty());
    host.answers.back().resolve(true);

    EXPECT_EQ(pageAt(0, a).closings.size(), 1U);
    EXPECT_EQ(host.terminations, 0);
}

TEST_F(OrvuAppTest, AWindowMayCloseWhileTheProgramAsks) {
    app.applicationDidFinishLaunching();
    app.newWindow();
    askingPage(0);
    askingPage(1);
    app.terminate();
    pageAt(0, a).askBeforeClosing();
    const auto asked = pageAt(0, a).closings.back();

    screen.windows[0]->close();
    asked.resolve(true);
    pageAt(0, a).askBeforeClosing();
    pageAt(0, a).answerDialog({.isAccepted = true});
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_EQ(host.terminations, 1);
}

}  // namespace
}  // namespace orvu

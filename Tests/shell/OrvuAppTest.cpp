#include "shell/OrvuApp.h"

#include "fakes/FakeBrowserWindow.h"
#include "support/StoreWorld.h"

#include <limits>

namespace orvu {
namespace {

/// Counts what was asked of the program as a whole.
class FakeApplicationHost : public ApplicationHost {
public:
    void terminate() override { ++terminations; }
    void orderFrontStandardAboutPanel() override { ++aboutPanels; }

    int terminations = 0;
    int aboutPanels = 0;
};

class OrvuAppTest : public StoreTest {
protected:
    [[nodiscard]] BrowserStore& storeAt(std::size_t index) {
        return *windows.windows().at(index).store;
    }
    [[nodiscard]] std::int64_t launchCount() const {
        return world.defaults.integer("launchCount").value_or(-1);
    }

    FakeScreen screen;
    BrowserWindowController windows{world.services, screen.factory()};
    FakeApplicationHost host;
    AppDelegate app{world.services, windows, host};
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

}  // namespace
}  // namespace orvu

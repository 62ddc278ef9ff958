#include "shell/menus/WindowCommands.h"

#include "fakes/FakePasteboard.h"
#include "fakes/FakeWorkspace.h"
#include "support/StoreWorld.h"

#include <set>

namespace orvu {
namespace {

/// A window without widgets that writes down what it was asked.
class FakeTarget : public WindowCommandTarget {
public:
    explicit FakeTarget(BrowserStore& store) : store_(store) {}
    [[nodiscard]] BrowserStore& store() override { return store_; }
    void editAddress(const std::string& text) override { calls.push_back("edit " + text); }
    bool endEditing() override { return false; }
    void focusNextArea() override { calls.emplace_back("next area"); }
    void focusPreviousArea() override { calls.emplace_back("previous area"); }
    void switchProfile(const Profile& profile) override {
        calls.push_back("switch " + profile.name);
    }

    void openFind() override { calls.emplace_back("open find"); }
    void findAgain(bool backwards) override {
        calls.emplace_back(backwards ? "find previous" : "find next");
    }
    void openRewind() override { calls.emplace_back("open rewind"); }

    [[nodiscard]] Pasteboard& pasteboard() override { return pasteboard_; }
    [[nodiscard]] Workspace& workspace() override { return workspace_; }

    /// Also what lies on the pasteboard and what the desktop was to open.
    [[nodiscard]] std::vector<std::string> allCalls() const {
        auto all = calls;
        if (!pasteboard_.text.empty()) all.push_back("copy " + pasteboard_.text);
        for (const auto& opened : workspace_.opened) all.push_back("open " + opened);
        return all;
    }

    std::vector<std::string> calls;

private:
    BrowserStore& store_;
    FakePasteboard pasteboard_;
    FakeWorkspace workspace_;
};

class WindowCommandsTest : public StoreTest {
protected:
    WindowCommandsTest() {
        world.storeRecords<Profile>("orvuProfiles", {Profile::personal(), world.work});
        profiles = std::make_unique<ProfileStore>(world.defaults, [](const Uuid&) {});
    }
    /// Runs the one command with these keys. Gives what the window was asked.
    Strings press(BrowserStore& store, std::string_view keys) const {
        return runWhere(store, [&](const WindowCommand& command) {
            return std::ranges::find(command.keys, keys) != command.keys.end();
        });
    }
    Strings run(BrowserStore& store, std::string_view name) const {
        return runWhere(store, [&](const WindowCommand& command) { return command.name == name; });
    }

    std::unique_ptr<ProfileStore> profiles;

private:
    Strings runWhere(BrowserStore& store,
                     const std::function<bool(const WindowCommand&)>& condition) const {
        FakeTarget target{store};
        int found = 0;
        for (const auto& command : windowCommands(*profiles)) {
            if (!condition(command)) continue;
            ++found;
            command.run(target);
        }
        EXPECT_EQ(found, 1);
        return target.allCalls();
    }
};

TEST_F(WindowCommandsTest, EveryNameAndEveryKeyStandsOnce) {
    std::set<std::string> names;
    std::set<std::string> keys;
    std::size_t keyCount = 0;
    const auto commands = windowCommands(*profiles);

    for (const auto& command : commands) {
        names.insert(command.name);
        keys.insert(command.keys.begin(), command.keys.end());
        keyCount += command.keys.size();
    }

    EXPECT_EQ(names.size(), commands.size());
    EXPECT_EQ(keys.size(), keyCount);
}

TEST_F(WindowCommandsTest, CommandTOpensAnEmptyTabInFrontAndEditsTheEmptyAddress) {
    const auto store = openStoreWith({a});

    EXPECT_EQ(press(*store, "⌘T"), Strings{"edit "});

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, ""}));
    EXPECT_EQ(front(*store), "");
}

TEST_F(WindowCommandsTest, CommandWClosesTheFrontTabAndShiftCommandTReopensIt) {
    const auto store = openStoreWith({a, b});

    press(*store, "⌘W");
    EXPECT_EQ(addresses(store->tabs()), Strings{a});
    press(*store, "⇧⌘T");

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b}));
}

TEST_F(WindowCommandsTest, ShiftCommandRAsksTheFrontPageForItsArticle) {
    const auto store = openStoreWith({a, b});

    press(*store, "⇧⌘R");

    EXPECT_EQ(page(*store->active()).scripts.size(), 1U);
    EXPECT_TRUE(page(*tabAt(*store, a)).scripts.empty());
}

TEST_F(WindowCommandsTest, CommandLEditsTheAddressOfTheFrontTabOrAnEmptyText) {
    const auto store = openStoreWith({"https://a.example/x?y#z"});

    EXPECT_EQ(press(*store, "⌘L"), Strings{"edit https://a.example/x?y#z"});
    store->newTab(std::nullopt, Select::yes);

    EXPECT_EQ(press(*store, "⌘L"), Strings{"edit "});
}

TEST_F(WindowCommandsTest, ReloadBackAndForwardActOnTheFrontPage) {
    const auto store = openStoreWith({a, b});
    page(*store->active()).calls.clear();

    for (const auto keys : {"⌘R", "F5", "⌘[", "⌘]"}) press(*store, keys);

    EXPECT_EQ(page(*store->active()).calls, (Strings{"reload", "reload", "goBack", "goForward"}));
    EXPECT_EQ(page(*tabAt(*store, a)).calls, Strings{"load https://a.example/"});
}

TEST_F(WindowCommandsTest, OptionCommandSTogglesThePair) {
    const auto store = openStoreWith({a, b});

    press(*store, "⌥⌘S");
    EXPECT_EQ(addresses(store->splitTabs()), (Strings{b, a}));
    press(*store, "⌥⌘S");

    EXPECT_TRUE(store->split().empty());
}

TEST_F(WindowCommandsTest, CommandDTogglesTheBookmarkOfTheFrontPage) {
    const auto store = openStoreWith({a});
    page(*store->active()).setTitle("A");

    press(*store, "⌘D");
    ASSERT_EQ(store->bookmarks().items().size(), 1U);
    EXPECT_EQ(store->bookmarks().items()[0].title, "A");
    EXPECT_EQ(store->bookmarks().items()[0].url, url(a));
    press(*store, "⌘D");

    EXPECT_TRUE(store->bookmarks().items().empty());
}

TEST_F(WindowCommandsTest, CommandDInAPrivateWindowDoesNothing) {
    const auto store = openPrivateStore();
    store->newTab(url(a), Select::yes);

    press(*store, "⌘D");

    EXPECT_TRUE(store->bookmarks().items().empty());
}

TEST_F(WindowCommandsTest, TheDigitsSelectTabs) {
    const auto store = openStoreWith({a, b, c});
    Strings fronts;

    for (const auto keys : {"⌘1", "⌘2", "⌘9", "⌘8"}) {
        press(*store, keys);
        fronts.push_back(front(*store));
    }

    EXPECT_EQ(fronts, (Strings{a, b, c, c}));
}

TEST_F(WindowCommandsTest, TabAndPageKeysGoFromTabToTabAsTheColumnShowsThem) {
    const auto store = openStoreWith({a, b, c});
    store->togglePin(*tabAt(*store, b));
    Strings fronts;

    for (const auto keys : {"⌘Tab", "⌘Tab", "⌘Page_Down", "⇧⌘Tab", "⌘Page_Up", "⇧⌘ISO_Left_Tab"}) {
        press(*store, keys);
        fronts.push_back(front(*store));
    }

    EXPECT_EQ(fronts, (Strings{b, a, c, a, b, c}));
}

TEST_F(WindowCommandsTest, TabKeyWithOneTabDoesNothing) {
    const auto store = openStoreWith({a});
    const ChangeCounter changes{*store};

    press(*store, "⌘Tab");
    press(*store, "⇧⌘Tab");

    EXPECT_EQ(changes.count(), 0);
}

TEST_F(WindowCommandsTest, ControlAndADigitSwitchToThatProfileUnlessItIsTheWindowsOwn) {
    const auto store = openStoreWith({a});

    EXPECT_EQ(press(*store, "⌃1"), Strings{});
    EXPECT_EQ(press(*store, "⌃2"), Strings{"switch Work"});
    EXPECT_EQ(press(*store, "⌃3"), Strings{});
    EXPECT_EQ(press(*store, "⌃9"), Strings{});
}

TEST_F(WindowCommandsTest, TheDigitsOfProfilesFollowTheListAsItStands) {
    const auto store = openStoreWith({a});
    FakeTarget target{*store};
    const auto commands = windowCommands(*profiles);
    profiles->remove(world.work);

    for (const auto& command : commands) {
        if (command.name.starts_with("profile")) command.run(target);
    }

    EXPECT_EQ(target.calls, Strings{});
}

TEST_F(WindowCommandsTest, ParkingPinningAndGroupingActOnTheFrontTab) {
    const auto store = openStoreWith({a, b});

    run(*store, "togglePin");
    EXPECT_EQ(addresses(store->pinned()), Strings{b});
    run(*store, "toggleGroup");
    EXPECT_EQ(store->groups().size(), 1U);
    EXPECT_TRUE(store->pinned().empty());
    run(*store, "toggleGroup");
    EXPECT_TRUE(store->groups().empty());
    run(*store, "park");
    EXPECT_EQ(addresses(store->shelf()), Strings{b});
    run(*store, "unpark");

    EXPECT_TRUE(store->shelf().empty());
    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b}));
    run(*store, "unpark");
    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b}));
}

TEST_F(WindowCommandsTest, ATabWhoseGroupEndedCountsAsUngrouped) {
    const auto store = openStoreWith({a});
    const auto group = store->newGroup(*store->active());
    store->togglePin(*store->active());
    store->closeGroup(*group);

    run(*store, "toggleGroup");

    ASSERT_EQ(store->groups().size(), 1U);
    EXPECT_EQ(store->active()->groupID(), store->groups()[0].id);
}

// --- Zoom -------------------------------------------------------------------------------------

TEST_F(WindowCommandsTest, TheZoomKeysActOnTheFrontPageAlone) {
    const auto store = openStoreWith({a, b});
    std::vector<double> zooms;

    for (const auto keys : {"⌘=", "⌘+", "⌘-", "⌘-", "⌘-", "⌘0"}) {
        press(*store, keys);
        zooms.push_back(page(*store->active()).pageZoom());
    }

    EXPECT_EQ(zooms, (std::vector{1.1, 1.2, 1.1, 1.0, 0.9, 1.0}));
    EXPECT_EQ(page(*tabAt(*store, a)).pageZoom(), 1.0);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(WindowCommandsTest, TheZoomStopsAtItsLimits) {
    const auto store = openStoreWith({a});
    FakeWebView& view = page(*store->active());

    for (int time = 0; time < 40; ++time) press(*store, "⌘=");
    EXPECT_EQ(view.pageZoom(), 3.0);
    for (int time = 0; time < 40; ++time) press(*store, "⌘-");

    EXPECT_EQ(view.pageZoom(), 0.5);
}

TEST(PageZoomTest, StepsAddUpWithoutDriftBothWays) {
    double zoom = PageZoom::smallest;
    std::vector<double> up;
    for (int time = 0; time < 25; ++time) up.push_back(zoom = PageZoom::stepped(zoom, 1));

    EXPECT_EQ(up.back(), 3.0);
    EXPECT_EQ(up[4], 1.0);
    for (int time = 0; time < 25; ++time) zoom = PageZoom::stepped(zoom, -1);
    EXPECT_EQ(zoom, 0.5);
}

TEST(PageZoomTest, AnyZoomComesWithinTheLimits) {
    EXPECT_EQ(PageZoom::stepped(100, 1), 3.0);
    EXPECT_EQ(PageZoom::stepped(-100, -1), 0.5);
    EXPECT_EQ(PageZoom::stepped(2.96, 1), 3.0);
    EXPECT_EQ(PageZoom::stepped(0.54, -1), 0.5);
}

TEST_F(WindowCommandsTest, NewEmptyTabOfTheMenuEditsNoAddress) {
    const auto store = openStoreWith({a});

    EXPECT_EQ(run(*store, "newEmptyTab"), Strings{});

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, ""}));
    EXPECT_TRUE(store->active()->isNewTab());
}

TEST_F(WindowCommandsTest, ZoomOfTheMenuGoesBeyondTheLimitsOfTheKeys) {
    const auto store = openStoreWith({a});
    WebView& view = store->active()->webView();

    view.setPageZoom(0.5);
    run(*store, "zoomOutFurther");
    EXPECT_DOUBLE_EQ(view.pageZoom(), 0.4);
    view.setPageZoom(3.0);
    run(*store, "zoomInFurther");
    EXPECT_DOUBLE_EQ(view.pageZoom(), 3.1);
}

TEST_F(WindowCommandsTest, ZoomOfTheMenuNeverMakesThePageVanish) {
    const auto store = openStoreWith({a});
    WebView& view = store->active()->webView();

    for (int i = 0; i < 20; ++i) run(*store, "zoomOutFurther");

    EXPECT_DOUBLE_EQ(view.pageZoom(), 0.1);
}

TEST_F(WindowCommandsTest, KeysBringAZoomBeyondTheirLimitsBack) {
    const auto store = openStoreWith({a});
    WebView& view = store->active()->webView();
    view.setPageZoom(0.2);

    press(*store, "⌘-");

    EXPECT_DOUBLE_EQ(view.pageZoom(), 0.5);
}

TEST_F(WindowCommandsTest, CopyLinkPutsTheWholeAddressOnThePasteboard) {
    const auto store = openStoreWith({"https://a.example/p?q=1#f"});

    EXPECT_EQ(run(*store, "copyLink"), Strings{"copy https://a.example/p?q=1#f"});
}

TEST_F(WindowCommandsTest, OpenInDefaultBrowserHandsTheAddressToTheDesktop) {
    const auto store = openStoreWith({a});

    EXPECT_EQ(run(*store, "openInDefaultBrowser"), Strings{std::string{"open "} + a});
}

TEST_F(WindowCommandsTest, LinkCommandsDoNothingOnAnEmptyTab) {
    const auto store = openStore();

    EXPECT_EQ(run(*store, "copyLink"), Strings{});
    EXPECT_EQ(run(*store, "openInDefaultBrowser"), Strings{});
}

TEST_F(WindowCommandsTest, TheKeyboardMovesAmongTheAreas) {
    const auto store = openStore();

    EXPECT_EQ(press(*store, "F6"), Strings{"next area"});
    EXPECT_EQ(press(*store, "⇧F6"), Strings{"previous area"});
}

TEST_F(WindowCommandsTest, CommandFOpensTheSearchInThePage) {
    const auto store = openStore();

    EXPECT_EQ(press(*store, "⌘F"), Strings{"open find"});
}

TEST_F(WindowCommandsTest, CommandGAndF3GoOnToTheNextMatchAndWithShiftToThePreviousOne) {
    const auto store = openStore();

    for (const auto* const keys : {"⌘G", "F3"}) {
        EXPECT_EQ(press(*store, keys), Strings{"find next"}) << keys;
    }
    for (const auto* const keys : {"⇧⌘G", "⇧F3"}) {
        EXPECT_EQ(press(*store, keys), Strings{"find previous"}) << keys;
    }
}

TEST_F(WindowCommandsTest, ShiftCommandHOrTheKeyOfBackWithShiftShowsTheTimeLineOfTheDay) {
    const auto store = openStore();

    for (const auto* const keys : {"⇧⌘[", "⇧⌘H"}) {
        EXPECT_EQ(press(*store, keys), Strings{"open rewind"}) << keys;
    }
}

}  // namespace
}  // namespace orvu

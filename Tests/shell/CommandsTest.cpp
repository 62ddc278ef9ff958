#include "shell/menus/Commands.h"

#include "ProjectPaths.h"
#include "shell/menus/BrowserMenu.h"
#include "shell/menus/KeySigns.h"
#include "shell/menus/MainMenu.h"
#include "support/ViewWorld.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

namespace orvu {
namespace {

class CommandsTest : public ViewTest {
protected:
    /// Runs the one command with these keys.
    static void pressIn(BrowserView& view, std::string_view keys) {
        const auto has = [&](const Command& each) {
            return std::ranges::find(each.keys, keys) != each.keys.end() ||
                   std::ranges::find(each.alias, keys) != each.alias.end();
        };
        ASSERT_EQ(std::ranges::count_if(commands(), has), 1) << keys;
        std::ranges::find_if(commands(), has)->runIn(view);
    }
    /// The same in a view of its own. Gives what was asked of the window's parts.
    Strings press(const std::shared_ptr<BrowserStore>& store, std::string_view keys) {
        const auto view = viewOf(store);
        asked.clear();
        pressIn(*view, keys);
        world.loop.advance(std::chrono::milliseconds{0});
        return asked;
    }
    Strings run(const std::shared_ptr<BrowserStore>& store, std::string_view name) {
        const auto view = viewOf(store);
        asked.clear();
        command(name).runIn(*view);
        return asked;
    }
};

// --- The table as a whole ---------------------------------------------------------------------

TEST_F(CommandsTest, EveryNameAndEveryKeyStandsOnce) {
    std::set<std::string> names;
    std::set<std::string> triggers;
    std::size_t keyCount = 0;

    for (const auto& command : commands()) {
        EXPECT_TRUE(names.insert(command.name).second) << command.name;
        for (const auto* const keys : {&command.keys, &command.alias}) {
            for (const auto& key : *keys) {
                ++keyCount;
                EXPECT_TRUE(triggers.insert(shortcutTrigger(key)).second)
                    << command.name << ": " << key;
            }
        }
    }

    EXPECT_EQ(names.size(), commands().size());
    EXPECT_EQ(triggers.size(), keyCount);
}

TEST_F(CommandsTest, ATitleThatChangesAndAKeyThatIsShownBelongToCommandsThatHaveThem) {
    for (const auto& command : commands()) {
        EXPECT_EQ(command.titleOn.empty(), command.isOn == nullptr) << command.name;
        if (!command.showsKeyOf.empty()) {
            ASSERT_NE(findCommand(command.showsKeyOf), nullptr) << command.name;
            EXPECT_FALSE(command.shownKey().empty()) << command.name;
        }
        EXPECT_TRUE(command.help.empty() || !command.keys.empty()) << command.name;
    }
}

TEST_F(CommandsTest, KeysThatAreNotAboutTabsWindowsAndTheNotchGoToThePageFirst) {
    std::set<std::string> pageFirst;
    for (const auto& command : commands()) {
        if (command.keysOf == Command::KeysOf::pageFirst) pageFirst.insert(command.name);
    }

    EXPECT_EQ(pageFirst, (std::set<std::string>{"goBack", "goForward", "rewind", "find", "findNext",
                                                "findPrevious", "zoomIn", "zoomOut", "actualSize",
                                                "inspect", "print", "savePage", "showSource",
                                                "showHistory", "showBookmarks"}));
}

TEST_F(CommandsTest, EveryLineOfTheMenusIsACommandWithATitle) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    std::vector<MenuItem> items = browserMenu(*store);
    for (const auto& menu : makeMenu()) {
        std::ranges::copy(menu.items, std::back_inserter(items));
    }

    for (const auto& item : items) {
        if (item.isSeparator()) continue;
        const Command* const found = findCommand(item.action.substr(item.action.find('.') + 1));
        ASSERT_NE(found, nullptr) << item.action;
        EXPECT_EQ(found->action(), item.action);
        EXPECT_FALSE(item.title.empty()) << item.action;
    }
}

/// The files below a folder whose names end so.
std::vector<std::filesystem::path> filesBelow(const std::filesystem::path& folder,
                                              std::initializer_list<std::string_view> endings) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{folder}) {
        const std::string ending = entry.path().extension().string();
        if (std::ranges::find(endings, ending) != endings.end()) files.push_back(entry.path());
    }
    return files;
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream{file};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

TEST_F(CommandsTest, EveryActionThatTheSourcesNameIsACommand) {
    const std::regex action{R"re("(app|win)\.(\w+)")re"};
    std::size_t count = 0;

    for (const auto& file : filesBelow(ProjectPaths::sources, {".cpp", ".h"})) {
        const std::string text = contentOf(file);
        for (std::sregex_iterator match{text.begin(), text.end(), action}, end; match != end;
             ++match) {
            ++count;
            const Command* const found = findCommand((*match)[2].str());
            ASSERT_NE(found, nullptr) << file << ": " << match->str();
            EXPECT_EQ('"' + found->action() + '"', match->str()) << file;
        }
    }

    EXPECT_GE(count, 10U);
}

TEST_F(CommandsTest, TheReadmeHasTheListOfKeysAsItStandsHere) {
    EXPECT_TRUE(contentOf(ProjectPaths::readme).contains(keyTable())) << keyTable();
}

// --- What the commands do ---------------------------------------------------------------------

TEST_F(CommandsTest, CommandTOpensAnEmptyTabInFrontAndEditsTheEmptyAddress) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});

    EXPECT_EQ(press(store, "⌘T"), Strings{"edit "});

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, ""}));
    EXPECT_EQ(front(*store), "");
}

TEST_F(CommandsTest, CommandWClosesTheFrontTabAndShiftCommandTReopensIt) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a, b});

    press(store, "⌘W");
    EXPECT_EQ(addresses(store->tabs()), Strings{a});
    press(store, "⇧⌘T");

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b}));
}

TEST_F(CommandsTest, ShiftCommandRAsksTheFrontPageForItsArticle) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a, b});

    press(store, "⇧⌘R");

    EXPECT_EQ(page(*store->active()).scripts.size(), 1U);
    EXPECT_TRUE(page(*tabAt(*store, a)).scripts.empty());
}

TEST_F(CommandsTest, CommandLEditsTheAddressOfTheFrontTabOrAnEmptyText) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({"https://a.example/x?y#z"});

    EXPECT_EQ(press(store, "⌘L"), Strings{"edit https://a.example/x?y#z"});
    store->newTab(std::nullopt, Select::yes);

    EXPECT_EQ(press(store, "⌘L"), Strings{"edit "});
}

TEST_F(CommandsTest, ReloadBackAndForwardActOnTheFrontPage) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a, b});
    page(*store->active()).calls.clear();

    for (const auto keys : {"⌘R", "F5", "⌘[", "⌘]"}) press(store, keys);

    EXPECT_EQ(page(*store->active()).calls, (Strings{"reload", "reload", "goBack", "goForward"}));
    EXPECT_EQ(page(*tabAt(*store, a)).calls, Strings{"load https://a.example/"});
}

TEST_F(CommandsTest, OptionCommandSTogglesThePair) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a, b});

    press(store, "⌥⌘S");
    EXPECT_EQ(addresses(store->splitTabs()), (Strings{b, a}));
    press(store, "⌥⌘S");

    EXPECT_TRUE(store->split().empty());
}

TEST_F(CommandsTest, CommandDTogglesTheBookmarkOfTheFrontPage) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    page(*store->active()).setTitle("A");

    press(store, "⌘D");
    ASSERT_EQ(store->bookmarks().items().size(), 1U);
    EXPECT_EQ(store->bookmarks().items()[0].title, "A");
    EXPECT_EQ(store->bookmarks().items()[0].url, url(a));
    press(store, "⌘D");

    EXPECT_TRUE(store->bookmarks().items().empty());
}

TEST_F(CommandsTest, CommandDInAPrivateWindowDoesNothing) {
    const std::shared_ptr<BrowserStore> store = openPrivateStore();
    store->newTab(url(a), Select::yes);

    press(store, "⌘D");

    EXPECT_TRUE(store->bookmarks().items().empty());
}

TEST_F(CommandsTest, TheDigitsSelectTabs) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a, b, c});
    Strings fronts;

    for (const auto keys : {"⌘1", "⌘2", "⌘9", "⌘8"}) {
        press(store, keys);
        fronts.push_back(front(*store));
    }

    EXPECT_EQ(fronts, (Strings{a, b, c, c}));
}

TEST_F(CommandsTest, TabAndPageKeysGoFromTabToTabAsTheColumnShowsThem) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a, b, c});
    store->togglePin(*tabAt(*store, b));
    Strings fronts;

    for (const auto keys : {"⌘Tab", "⌘Tab", "⌘Page_Down", "⇧⌘Tab", "⌘Page_Up", "⇧⌘ISO_Left_Tab"}) {
        press(store, keys);
        fronts.push_back(front(*store));
    }

    EXPECT_EQ(fronts, (Strings{b, a, c, a, b, c}));
}

TEST_F(CommandsTest, TabKeyWithOneTabDoesNothing) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    const ChangeCounter changes{*store};

    press(store, "⌘Tab");
    press(store, "⇧⌘Tab");

    EXPECT_EQ(changes.count(), 0);
}

TEST_F(CommandsTest, ControlAndADigitSwitchToThatProfileUnlessItIsTheWindowsOwn) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});

    EXPECT_EQ(press(store, "⌃1"), Strings{});
    EXPECT_EQ(press(store, "⌃2"), Strings{"switch Work"});
    EXPECT_EQ(press(store, "⌃3"), Strings{});
    EXPECT_EQ(press(store, "⌃9"), Strings{});
}

TEST_F(CommandsTest, TheDigitsOfProfilesFollowTheListAsItStands) {
    const auto view = viewOf(openStoreWith({a}));
    services->profiles().remove(world.work);

    for (const auto& command : commands()) {
        if (command.name.starts_with("profile")) command.runIn(*view);
        world.loop.advance(std::chrono::milliseconds{0});
    }

    EXPECT_EQ(asked, Strings{});
}

TEST_F(CommandsTest, ParkingPinningAndGroupingActOnTheFrontTab) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a, b});

    run(store, "togglePin");
    EXPECT_EQ(addresses(store->pinned()), Strings{b});
    run(store, "toggleGroup");
    EXPECT_EQ(store->groups().size(), 1U);
    EXPECT_TRUE(store->pinned().empty());
    run(store, "toggleGroup");
    EXPECT_TRUE(store->groups().empty());
    run(store, "park");
    EXPECT_EQ(addresses(store->shelf()), Strings{b});
    run(store, "unpark");

    EXPECT_TRUE(store->shelf().empty());
    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b}));
    run(store, "unpark");
    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b}));
}

TEST_F(CommandsTest, ATabWhoseGroupEndedCountsAsUngrouped) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    const auto group = store->newGroup(*store->active());
    store->togglePin(*store->active());
    store->closeGroup(*group);

    run(store, "toggleGroup");

    ASSERT_EQ(store->groups().size(), 1U);
    EXPECT_EQ(store->active()->groupID(), store->groups()[0].id);
}

// --- Zoom -------------------------------------------------------------------------------------

TEST_F(CommandsTest, TheZoomKeysActOnTheFrontPageAlone) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a, b});
    std::vector<double> zooms;

    for (const auto keys : {"⌘=", "⌘+", "⌘-", "⌘-", "⌘-", "⌘0"}) {
        press(store, keys);
        zooms.push_back(page(*store->active()).pageZoom());
    }

    EXPECT_EQ(zooms, (std::vector{1.1, 1.2, 1.1, 1.0, 0.9, 1.0}));
    EXPECT_EQ(page(*tabAt(*store, a)).pageZoom(), 1.0);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(CommandsTest, TheZoomStopsAtItsLimits) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    FakeWebView& view = page(*store->active());

    for (int time = 0; time < 40; ++time) press(store, "⌘=");
    EXPECT_EQ(view.pageZoom(), 3.0);
    for (int time = 0; time < 40; ++time) press(store, "⌘-");

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

TEST_F(CommandsTest, NewEmptyTabOfTheMenuEditsNoAddress) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});

    EXPECT_EQ(run(store, "newEmptyTab"), Strings{});

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, ""}));
    EXPECT_TRUE(store->active()->isNewTab());
}

TEST_F(CommandsTest, ZoomOfTheMenuGoesBeyondTheLimitsOfTheKeys) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    WebView& view = store->active()->webView();

    view.setPageZoom(0.5);
    run(store, "zoomOutFurther");
    EXPECT_DOUBLE_EQ(view.pageZoom(), 0.4);
    view.setPageZoom(3.0);
    run(store, "zoomInFurther");
    EXPECT_DOUBLE_EQ(view.pageZoom(), 3.1);
}

TEST_F(CommandsTest, ZoomOfTheMenuNeverMakesThePageVanish) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    WebView& view = store->active()->webView();

    for (int i = 0; i < 20; ++i) run(store, "zoomOutFurther");

    EXPECT_DOUBLE_EQ(view.pageZoom(), 0.1);
}

TEST_F(CommandsTest, KeysBringAZoomBeyondTheirLimitsBack) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    WebView& view = store->active()->webView();
    view.setPageZoom(0.2);

    press(store, "⌘-");

    EXPECT_DOUBLE_EQ(view.pageZoom(), 0.5);
}

TEST_F(CommandsTest, CopyLinkPutsTheWholeAddressOnThePasteboard) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({"https://a.example/p?q=1#f"});

    run(store, "copyLink");

    EXPECT_EQ(pasteboard.text, "https://a.example/p?q=1#f");
}

TEST_F(CommandsTest, OpenInDefaultBrowserHandsTheAddressToTheDesktop) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});

    run(store, "openInDefaultBrowser");

    EXPECT_EQ(workspace.opened, Strings{a});
}

TEST_F(CommandsTest, LinkCommandsDoNothingOnAnEmptyTab) {
    const std::shared_ptr<BrowserStore> store = openStore();

    run(store, "copyLink");
    run(store, "openInDefaultBrowser");

    EXPECT_EQ(pasteboard.text, "");
    EXPECT_EQ(workspace.opened, Strings{});
}

TEST_F(CommandsTest, TheKeyboardMovesAmongTheAreas) {
    const std::shared_ptr<BrowserStore> store = openStore();

    EXPECT_EQ(press(store, "F6"), Strings{"areas 1"});
    EXPECT_EQ(press(store, "⇧F6"), Strings{"areas -1"});
}

TEST_F(CommandsTest, CommandPPrintsThePageInFront) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    page(*store->active()).calls.clear();

    press(store, "⌘P");

    EXPECT_EQ(page(*store->active()).calls, Strings{"print"});
}

TEST_F(CommandsTest, CommandSSavesThePageInFront) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    page(*store->active()).calls.clear();

    press(store, "⌘S");

    EXPECT_EQ(page(*store->active()).calls, Strings{"savePage"});
}

TEST_F(CommandsTest, CommandUShowsThePagesSourceInATabInFront) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    auto& shown = page(*store->active());

    press(store, "⌘U");
    ASSERT_EQ(shown.sources.size(), 1U);
    shown.sources.front().resolve("<p>text");

    ASSERT_EQ(store->tabs().size(), 2U);
    EXPECT_EQ(page(*store->active()).calls, Strings{"showSource " + std::string{a} + " <p>text"});
}

TEST_F(CommandsTest, APageWithoutASourceOpensNoTab) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    auto& shown = page(*store->active());

    press(store, "⌘U");
    shown.sources.front().resolve(std::nullopt);

    EXPECT_EQ(store->tabs().size(), 1U);
}

TEST_F(CommandsTest, ASourceThatComesAfterItsTabWentIsShownAllTheSame) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a, b});
    const auto promise = [&] {
        press(store, "⌘U");
        return page(*store->active()).sources.front();
    }();

    store->close(*store->active());
    promise.resolve("<p>text");

    EXPECT_EQ(store->tabs().size(), 2U);
}

TEST_F(CommandsTest, WhatClosesTabsAsksTheirPagesFirst) {
    const std::shared_ptr<BrowserStore> store = openStoreWith({a});
    auto& front = page(*store->active());
    front.asksBeforeClosing = true;
    const auto group = store->newGroup(*store->active());

    run(store, "closeTab");
    run(store, "park");
    std::get<Command::ForGroup>(command("closeGroup").run)(*store, *group);

    EXPECT_EQ(front.closings.size(), 3U);
    EXPECT_EQ(addresses(store->tabs()), Strings{a});
}

TEST_F(CommandsTest, CommandFOpensTheSearchInThePage) {
    const std::shared_ptr<BrowserStore> store = openStore();

    EXPECT_EQ(press(store, "⌘F"), Strings{"find"});
}

TEST_F(CommandsTest, CommandGAndF3GoOnToTheNextMatchAndWithShiftToThePreviousOne) {
    const auto view = viewOf(openStore());
    view->openFind();

    for (const auto* const keys : {"⌘G", "F3", "⇧⌘G", "⇧F3"}) pressIn(*view, keys);

    EXPECT_EQ(asked, (Strings{"find", "find next", "find next", "find previous", "find previous"}));
}

TEST_F(CommandsTest, ShiftCommandHOrTheKeyOfBackWithShiftShowsTheTimeLineOfTheDay) {
    const std::shared_ptr<BrowserStore> store = openStore();

    for (const auto* const keys : {"⇧⌘[", "⇧⌘H"}) {
        EXPECT_EQ(press(store, keys), Strings{"rewind"}) << keys;
    }
}

}  // namespace
}  // namespace orvu

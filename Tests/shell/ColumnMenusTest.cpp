#include "shell/menus/ColumnMenus.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

using Kind = MenuEntry::Kind;
using Menu = std::vector<MenuEntry>;

class ColumnMenusTest : public StoreTest {
protected:
    /// The lines of a menu: "-" for a separator, brackets around what is greyed, and the lines of
    /// a submenu behind its title.
    static Strings lines(const Menu& menu) {
        Strings result;
        for (const auto& entry : menu) {
            std::string line = entry.kind == Kind::separator ? "-" : entry.title;
            if (!entry.enabled) line = "(" + line + ")";
            for (const auto& inner : entry.entries) line += " > " + inner.title;
            result.push_back(line);
        }
        return result;
    }
    static const MenuEntry& entry(const Menu& menu, std::string_view title) {
        for (const auto& each : menu) {
            if (each.title == title) return each;
            for (const auto& inner : each.entries) {
                if (inner.title == title) return inner;
            }
        }
        ADD_FAILURE() << "no line " << title;
        return menu.front();
    }
    static void choose(const Menu& menu, std::string_view title) { entry(menu, title).run(); }
};

// --- The menu of a tab ------------------------------------------------------------------------

TEST_F(ColumnMenusTest, TabMenuHasItsLinesInOrder) {
    const auto store = openStoreWith({a, b});

    EXPECT_EQ(lines(tabMenu(*store, tabAt(*store, a))),
              (Strings{"Open Side by Side", "-", "Add to New Group", "(Remove from Group)", "-",
                       "Pin Tab", "Park on the Shelf", "Duplicate Tab", "-", "Close Tab"}));
}

TEST_F(ColumnMenusTest, OpenSideBySideIsDisabledForTheActiveTab) {
    const auto store = openStoreWith({a, b});

    EXPECT_FALSE(entry(tabMenu(*store, tabAt(*store, b)), "Open Side by Side").enabled);
    EXPECT_TRUE(entry(tabMenu(*store, tabAt(*store, a)), "Open Side by Side").enabled);
}

TEST_F(ColumnMenusTest, NewTabPageCanNeitherPairNorParkNorDuplicate) {
    const auto store = openStoreWith({a});
    const auto empty = store->newTab(std::nullopt, Select::no).shared_from_this();

    EXPECT_EQ(lines(tabMenu(*store, empty)),
              (Strings{"(Open Side by Side)", "-", "Add to New Group", "(Remove from Group)", "-",
                       "Pin Tab", "(Park on the Shelf)", "(Duplicate Tab)", "-", "Close Tab"}));
}

TEST_F(ColumnMenusTest, OpenSideBySidePairsTheActiveTabWithThisOneAndBringsItToTheFront) {
    const auto store = openStoreWith({a, b});

    choose(tabMenu(*store, tabAt(*store, a)), "Open Side by Side");

    EXPECT_EQ(addresses(store->splitTabs()), (Strings{b, a}));
    EXPECT_EQ(front(*store), a);
}

TEST_F(ColumnMenusTest, MoveToGroupLeavesOutTheTabsOwnGroup) {
    const auto store = openStoreWith({a, b, c});
    store->newGroup(*tabAt(*store, a));
    store->newGroup(*tabAt(*store, b));

    const auto ofLoose = tabMenu(*store, tabAt(*store, c));
    const auto ofGrouped = tabMenu(*store, tabAt(*store, a));

    EXPECT_EQ(lines(ofLoose)[3], "Move to Group > a.example > b.example");
    EXPECT_EQ(lines(ofGrouped)[3], "Move to Group > b.example");
    EXPECT_EQ(lines(ofGrouped)[4], "Remove from Group");
}

TEST_F(ColumnMenusTest, MoveToGroupIsGreyedWhereTheOwnGroupIsTheOnlyOne) {
    const auto store = openStoreWith({a, b});
    store->newGroup(*tabAt(*store, a));

    EXPECT_EQ(lines(tabMenu(*store, tabAt(*store, a)))[3], "(Move to Group)");
}

TEST_F(ColumnMenusTest, GroupLinesMoveTheTabAndTakeItOut) {
    const auto store = openStoreWith({a, b});
    const auto group = store->newGroup(*tabAt(*store, a));

    choose(tabMenu(*store, tabAt(*store, b)), "a.example");
    EXPECT_EQ(addresses(store->tabs(*group)), (Strings{a, b}));
    choose(tabMenu(*store, tabAt(*store, a)), "Remove from Group");
    EXPECT_EQ(addresses(store->tabs(*group)), Strings{b});
    choose(tabMenu(*store, tabAt(*store, a)), "Add to New Group");

    EXPECT_EQ(store->groups().size(), 2U);
}

TEST_F(ColumnMenusTest, TabWhoseGroupEndedHasNothingToLeave) {
    const auto store = openStoreWith({a, b});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->togglePin(*tabAt(*store, a));
    store->closeGroup(*group);

    EXPECT_FALSE(entry(tabMenu(*store, tabAt(*store, a)), "Remove from Group").enabled);
}

TEST_F(ColumnMenusTest, PinnedTabOffersToUnpin) {
    const auto store = openStoreWith({a, b});

    choose(tabMenu(*store, tabAt(*store, a)), "Pin Tab");
    EXPECT_EQ(addresses(store->pinned()), Strings{a});
    choose(tabMenu(*store, tabAt(*store, a)), "Unpin Tab");

    EXPECT_TRUE(store->pinned().empty());
}

TEST_F(ColumnMenusTest, ParkDuplicateAndCloseActOnTheTab) {
    const auto store = openStoreWith({a, b, c});

    choose(tabMenu(*store, tabAt(*store, a)), "Park on the Shelf");
    EXPECT_EQ(addresses(store->shelf()), Strings{a});
    choose(tabMenu(*store, tabAt(*store, b)), "Duplicate Tab");
    EXPECT_EQ(addresses(store->tabs()), (Strings{b, c, b}));
    EXPECT_EQ(front(*store), b);
    choose(tabMenu(*store, tabAt(*store, c)), "Close Tab");

    EXPECT_EQ(addresses(store->tabs()), (Strings{b, b}));
}

TEST_F(ColumnMenusTest, NoLineDoesAnythingOnceItsTabIsClosed) {
    const auto store = openStoreWith({a, b, c});
    store->newGroup(*tabAt(*store, c));
    auto tab = tabAt(*store, a);
    const auto menu = tabMenu(*store, tab);
    store->close(*tab);
    const auto held = tab;  // as a page that is still ending may hold it
    const ChangeCounter changes{*store};

    const auto chooseAll = [&] {
        for (const auto& each : menu) {
            if (each.run) each.run();
            for (const auto& inner : each.entries) inner.run();
        }
    };
    chooseAll();
    tab.reset();
    chooseAll();

    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(addresses(store->tabs()), (Strings{b, c}));
}

TEST_F(ColumnMenusTest, ATabThatCapturesOffersFirstToEndThat) {
    const auto store = openStoreWith({a, b});
    page(*tabAt(*store, a)).setCapture({.camera = true, .microphone = true});

    const auto menu = tabMenu(*store, tabAt(*store, a));

    EXPECT_EQ(lines(menu)[0], "Stop Camera and Microphone");
    EXPECT_EQ(lines(menu)[1], "-");
    choose(menu, "Stop Camera and Microphone");
    EXPECT_FALSE(tabAt(*store, a)->activeCapture().any());
    EXPECT_EQ(lines(tabMenu(*store, tabAt(*store, a)))[0], "Open Side by Side");
}

// --- The menu of a group ----------------------------------------------------------------------

TEST_F(ColumnMenusTest, GroupMenuHasItsLinesInOrder) {
    const auto store = openStoreWith({a});
    const auto group = store->newGroup(*tabAt(*store, a));

    EXPECT_EQ(lines(groupMenu(*store, *group, [] {})),
              (Strings{"Rename…", "Change Colour", "Ungroup", "-", "Close Group"}));
}

TEST_F(ColumnMenusTest, AGroupWithTabsThatCaptureOffersFirstToEndAllOfThat) {
    const auto store = openStoreWith({a, b, c});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->moveToGroup(*tabAt(*store, b), *group);
    page(*tabAt(*store, a)).setCapture({.camera = true});
    page(*tabAt(*store, b)).setCapture({.camera = true});
    page(*tabAt(*store, c)).setCapture({.microphone = true});

    const auto menu = groupMenu(*store, *group, [] {});

    EXPECT_EQ(lines(menu)[0], "Stop Camera");
    choose(menu, "Stop Camera");
    EXPECT_FALSE(tabAt(*store, a)->activeCapture().any());
    EXPECT_FALSE(tabAt(*store, b)->activeCapture().any());
    EXPECT_TRUE(tabAt(*store, c)->activeCapture().any());
}

TEST_F(ColumnMenusTest, WithoutRoomForAFieldRenamingIsGreyed) {
    const auto store = openStoreWith({a});
    const auto group = store->newGroup(*tabAt(*store, a));

    EXPECT_EQ(lines(groupMenu(*store, *group, {}))[0], "(Rename…)");
}

TEST_F(ColumnMenusTest, GroupLinesRenameRecolourUngroupAndClose) {
    const auto store = openStoreWith({a, b, c});
    const auto first = store->newGroup(*tabAt(*store, a));
    const auto second = store->newGroup(*tabAt(*store, b));
    int renames = 0;

    choose(groupMenu(*store, *first, [&] { ++renames; }), "Rename…");
    choose(groupMenu(*store, *first, [] {}), "Change Colour");
    EXPECT_EQ(renames, 1);
    EXPECT_EQ(store->groups()[0].color, first->color + 1);
    choose(groupMenu(*store, *first, [] {}), "Ungroup");
    EXPECT_EQ(store->groups().size(), 1U);
    choose(groupMenu(*store, *second, [] {}), "Close Group");

    EXPECT_TRUE(store->groups().empty());
    EXPECT_EQ(addresses(store->tabs()), (Strings{a, c}));
}

TEST_F(ColumnMenusTest, NoLineDoesAnythingOnceItsGroupIsGone) {
    const auto store = openStoreWith({a});
    const auto group = store->newGroup(*tabAt(*store, a));
    const auto menu = groupMenu(*store, *group, [] {});
    store->ungroup(*group);
    const ChangeCounter changes{*store};

    for (const auto& each : menu) {
        if (each.run) each.run();
    }

    EXPECT_EQ(changes.count(), 0);
}

// --- The menu of the shelf --------------------------------------------------------------------

TEST_F(ColumnMenusTest, EmptyShelfSaysWhatItIsFor) {
    const auto store = openStoreWith({a});

    const auto menu = shelfMenu(*store);

    EXPECT_EQ(lines(menu), (Strings{"Park This Tab on the Shelf", "-", shelfHelp}));
    EXPECT_EQ(menu.back().kind, Kind::text);
}

TEST_F(ColumnMenusTest, NewTabPageCannotBeParked) {
    const auto store = openStore();

    EXPECT_EQ(lines(shelfMenu(*store)), Strings{shelfHelp});
}

TEST_F(ColumnMenusTest, ParkedTabsStandNewestFirstWithTitleAndHost) {
    const auto store = openStoreWith({a, "https://www.b.example/page", c});
    page(*tabAt(*store, a)).setTitle("First");
    page(*tabAt(*store, "https://www.b.example/page")).setTitle("Second");
    store->park(*tabAt(*store, a));

    choose(tabMenu(*store, tabAt(*store, "https://www.b.example/page")), "Park on the Shelf");
    const auto menu = shelfMenu(*store);

    EXPECT_EQ(lines(menu), (Strings{"Park This Tab on the Shelf", "-", "Second", "First"}));
    EXPECT_EQ(menu[2].host, "www.b.example");
    EXPECT_EQ(menu[3].host, "a.example");
}

TEST_F(ColumnMenusTest, ShelfLinesParkAndOpenAgain) {
    const auto store = openStoreWith({a, b});

    choose(shelfMenu(*store), "Park This Tab on the Shelf");
    EXPECT_EQ(addresses(store->shelf()), Strings{b});
    choose(shelfMenu(*store), "b.example");

    EXPECT_TRUE(store->shelf().empty());
    EXPECT_EQ(front(*store), b);
}

TEST_F(ColumnMenusTest, ParkedTabThatWasOpenedMeanwhileIsNotOpenedTwice) {
    const auto store = openStoreWith({a, b});
    store->park(*tabAt(*store, a));
    const auto menu = shelfMenu(*store);

    choose(menu, "a.example");
    choose(menu, "a.example");

    EXPECT_EQ(addresses(store->tabs()), (Strings{b, a}));
}

}  // namespace
}  // namespace orvu

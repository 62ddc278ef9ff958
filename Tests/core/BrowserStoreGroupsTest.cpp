#include "support/StoreWorld.h"

namespace orvu {
namespace {

class BrowserStoreGroupsTest : public StoreTest {
protected:
    [[nodiscard]] static Strings names(const BrowserStore& store) {
        Strings result;
        for (const auto& group : store.groups()) result.push_back(group.name);
        return result;
    }
    [[nodiscard]] static std::vector<int> colors(const BrowserStore& store) {
        std::vector<int> result;
        for (const auto& group : store.groups()) result.push_back(group.color);
        return result;
    }
    const Strings sessionKeys{"browserSession", "browserGroups"};
};

TEST_F(BrowserStoreGroupsTest, ANewGroupTakesTheSitesNameAndSavesWithOneSignal) {
    const auto store = openStoreWith({"https://www.gnu.org/software/", b});
    const auto tab = store->tabs()[0];
    const ChangeCounter changes{*store};

    const auto group = store->newGroup(*tab);

    ASSERT_TRUE(group);
    EXPECT_EQ(*group, (TabGroup{group->id, "gnu.org", 0, false}));
    EXPECT_EQ(store->groups(), std::vector{*group});
    EXPECT_EQ(tab->groupID(), group->id);
    EXPECT_EQ(addresses(store->tabs(*group)), Strings{"https://www.gnu.org/software/"});
    EXPECT_EQ(addresses(store->ungrouped()), Strings{b});
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, sessionKeys);
    EXPECT_EQ(
        world.stored("browserGroups"),
        R"([{"id":")" + group->id.string() + R"(","name":"gnu.org","color":0,"collapsed":false}])");
}

TEST_F(BrowserStoreGroupsTest, AGroupFromAnEmptyTabIsNumberedBehindTheGroupsThatExist) {
    const auto store = openStoreWith({a, b});
    store->newGroup(*tabAt(*store, a));
    store->newGroup(*tabAt(*store, b));

    store->newGroup(store->newTab(std::nullopt, Select::no));

    EXPECT_EQ(names(*store), (Strings{"a.example", "b.example", "Group 3"}));
}

TEST_F(BrowserStoreGroupsTest, AGroupFromAPageWithoutAHostIsNumbered) {
    const auto store = openStoreWith({"about:blank", "file:///tmp/x"});

    store->newGroup(*store->tabs()[0]);
    store->newGroup(*store->tabs()[1]);

    EXPECT_EQ(names(*store), (Strings{"Group 1", "Group 2"}));
}

TEST_F(BrowserStoreGroupsTest, ColoursGoRoundWithTheNumberOfGroups) {
    const auto store = openStore();

    for (int number = 0; number < 8; ++number) {
        store->newGroup(store->newTab(url(numbered(number)), Select::no));
    }

    EXPECT_EQ(colors(*store), (std::vector{0, 1, 2, 3, 4, 5, 0, 1}));
}

TEST_F(BrowserStoreGroupsTest, AfterAGroupEndedTwoGroupsMayShareAColour) {
    const auto store = openStoreWith({a, b, c});
    const auto first = store->newGroup(*tabAt(*store, a));
    store->newGroup(*tabAt(*store, b));
    store->ungroup(*first);

    store->newGroup(*tabAt(*store, c));

    EXPECT_EQ(colors(*store), (std::vector{1, 1}));
}

TEST_F(BrowserStoreGroupsTest, ANewGroupUnpinsItsTabButLeavesItsPlace) {
    const auto store = openStoreWith({a, b, c});
    store->togglePin(*tabAt(*store, b));
    store->togglePin(*tabAt(*store, c));

    store->newGroup(*tabAt(*store, b));

    EXPECT_EQ(addresses(store->tabs()), (Strings{b, c, a}));
    EXPECT_EQ(addresses(store->pinned()), Strings{c});
    store->togglePin(*tabAt(*store, a));
    EXPECT_EQ(addresses(store->tabs()), (Strings{c, a, b}));
}

TEST_F(BrowserStoreGroupsTest, ANewGroupOfAGroupedTabEndsTheGroupThatItLeavesEmpty) {
    const auto store = openStoreWith({a});
    const auto first = store->newGroup(*tabAt(*store, a));

    const auto second = store->newGroup(*tabAt(*store, a));

    EXPECT_NE(first->id, second->id);
    EXPECT_EQ(second->color, 1);
    EXPECT_EQ(store->groups(), std::vector{*second});
}

TEST_F(BrowserStoreGroupsTest, MovingIntoAGroupChangesMembershipAloneAndPrunesThePreviousGroup) {
    const auto store = openStoreWith({a, b, c});
    const auto first = store->newGroup(*tabAt(*store, a));
    const auto second = store->newGroup(*tabAt(*store, c));
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->moveToGroup(*tabAt(*store, a), *second);

    EXPECT_EQ(addresses(store->tabs()), (Strings{a, b, c}));
    EXPECT_EQ(addresses(store->tabs(*second)), (Strings{a, c}));
    EXPECT_TRUE(store->tabs(*first).empty());
    EXPECT_EQ(store->groups(), std::vector{*second});
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, sessionKeys);
}

TEST_F(BrowserStoreGroupsTest, RemovingTheLastMemberEndsTheGroupAtOnce) {
    const auto store = openStoreWith({a, b});
    store->newGroup(*tabAt(*store, a));
    const ChangeCounter changes{*store};

    store->removeFromGroup(*tabAt(*store, a));

    EXPECT_TRUE(store->groups().empty());
    EXPECT_EQ(addresses(store->ungrouped()), (Strings{a, b}));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.stored("browserGroups"), "[]");
}

TEST_F(BrowserStoreGroupsTest, RenamingTrimsBlanksAndKeepsLineEnds) {
    const auto store = openStoreWith({a});
    const auto group = store->newGroup(*tabAt(*store, a));
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->rename(*group, " \t\u00A0Recipes\u3000 ");
    EXPECT_EQ(names(*store), Strings{"Recipes"});
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, sessionKeys);
    store->rename(*group, " \nTwo ");

    EXPECT_EQ(names(*store), Strings{"\nTwo"});
}

TEST_F(BrowserStoreGroupsTest, ABlankNameKeepsTheOldOneAndStillSaves) {
    const auto store = openStoreWith({a});
    const auto group = store->newGroup(*tabAt(*store, a));

    for (const std::string_view blank : {"", "   ", "\t \u2003"}) {
        world.defaults.written.clear();
        store->rename(*group, blank);
        EXPECT_EQ(names(*store), Strings{"a.example"});
        EXPECT_EQ(world.defaults.written, sessionKeys);
    }
}

TEST_F(BrowserStoreGroupsTest, ALongNameIsCutToFortyCharactersNotBytes) {
    const auto store = openStoreWith({a});
    const auto group = store->newGroup(*tabAt(*store, a));
    const auto repeated = [](std::string_view part, int times) {
        std::string text;
        for (int time = 0; time < times; ++time) text.append(part);
        return text;
    };

    for (const std::string_view part : {"x", "é", "e\u0301", "👩‍👩‍👧‍👦", "🇩🇪"}) {
        store->rename(*group, repeated(part, 50));
        EXPECT_EQ(names(*store), Strings{repeated(part, 40)});
    }
}

TEST_F(BrowserStoreGroupsTest, RecolouringGoesRoundOneStepAtATime) {
    const auto store = openStoreWith({a});
    const auto group = store->newGroup(*tabAt(*store, a));
    std::vector<int> seen;

    for (int time = 0; time < 7; ++time) {
        store->recolor(*group);
        seen.push_back(store->groups()[0].color);
    }

    EXPECT_EQ(seen, (std::vector{1, 2, 3, 4, 5, 0, 1}));
}

TEST_F(BrowserStoreGroupsTest, AStoredColourOutOfRangeComesIntoRange) {
    std::vector<int> seen;
    for (const std::string_view color :
         {"6", "-1", "9223372036854775807", "-9223372036854775808"}) {
        const Uuid id = Uuid::random();
        world.store("browserGroups", R"([{"id":")" + id.string() + R"(","name":"G","color":)" +
                                         std::string{color} + R"(,"collapsed":false}])");
        world.storeRecords<SavedTab>("browserSession", {{url(a), false, id}});
        const auto store = openStore();
        ASSERT_EQ(store->groups().size(), 1U);
        seen.push_back(store->groups()[0].color);
    }

    EXPECT_EQ(seen, (std::vector{0, 5, 1, 4}));
}

TEST_F(BrowserStoreGroupsTest, CollapsingFlipsAndSaves) {
    const auto store = openStoreWith({a});
    const auto group = store->newGroup(*tabAt(*store, a));
    const ChangeCounter changes{*store};

    store->toggleCollapsed(*group);
    EXPECT_TRUE(store->groups()[0].collapsed);
    EXPECT_TRUE(world.stored("browserGroups").contains(R"("collapsed":true)"));
    store->toggleCollapsed(*group);

    EXPECT_FALSE(store->groups()[0].collapsed);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(BrowserStoreGroupsTest, AfterUngroupingTheTabsStandUngroupedInTheirOrder) {
    const auto store = openStoreWith({a, b, c});
    const auto group = store->newGroup(*tabAt(*store, c));
    store->moveToGroup(*tabAt(*store, a), *group);
    store->togglePin(*tabAt(*store, c));
    const ChangeCounter changes{*store};

    store->ungroup(*group);

    EXPECT_EQ(addresses(store->tabs()), (Strings{c, a, b}));
    EXPECT_EQ(addresses(store->ungrouped()), (Strings{a, b}));
    EXPECT_EQ(tabAt(*store, c)->groupID(), std::nullopt);
    EXPECT_TRUE(store->groups().empty());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreGroupsTest, ClosingAGroupClosesItsTabsInOrderAndKeepsPinnedOnes) {
    const auto store = openStoreWith({a, b, c, d});
    const auto group = store->newGroup(*tabAt(*store, d));
    store->moveToGroup(*tabAt(*store, a), *group);
    store->moveToGroup(*tabAt(*store, c), *group);
    store->togglePin(*tabAt(*store, c));
    const ChangeCounter changes{*store};

    store->closeGroup(*group);

    EXPECT_EQ(addresses(store->tabs()), (Strings{c, b}));
    EXPECT_EQ(addresses(store->closedTabs()), (Strings{a, d}));
    EXPECT_EQ(tabAt(*store, c)->groupID(), group->id);
    EXPECT_TRUE(store->groups().empty());
    EXPECT_EQ(front(*store), b);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreGroupsTest, AnUnpinnedTabWhoseGroupIsGoneShowsAmongTheUngrouped) {
    const auto store = openStoreWith({a, b});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->togglePin(*tabAt(*store, a));
    store->closeGroup(*group);

    store->togglePin(*tabAt(*store, a));

    EXPECT_EQ(addresses(store->ungrouped()), (Strings{a, b}));
}

TEST_F(BrowserStoreGroupsTest, ClosingTheGroupOfAllTabsLeavesOneEmptyTab) {
    const auto store = openStoreWith({a, b});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->moveToGroup(*tabAt(*store, b), *group);
    const ChangeCounter changes{*store};

    store->closeGroup(store->groups()[0]);

    EXPECT_EQ(addresses(store->tabs()), Strings{""});
    EXPECT_EQ(store->activeID(), store->tabs()[0]->id());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.stored("browserSession"), "[]");
    EXPECT_EQ(world.stored("browserGroups"), "[]");
}

TEST_F(BrowserStoreGroupsTest, AGroupEmptiedByClosingStaysSavedUntilTheNextGroupChange) {
    const auto store = openStoreWith({a, b});
    const auto group = store->newGroup(*tabAt(*store, a));

    store->close(*tabAt(*store, a));
    EXPECT_EQ(store->groups(), std::vector{*group});
    EXPECT_EQ(world.storedRecords<TabGroup>("browserGroups"), std::vector{*group});
    store->removeFromGroup(*tabAt(*store, b));

    EXPECT_TRUE(store->groups().empty());
}

TEST_F(BrowserStoreGroupsTest, AGroupEmptiedByClosingIsDroppedAtTheNextStart) {
    const auto store = openStoreWith({a, b});
    store->newGroup(*tabAt(*store, a));
    store->close(*tabAt(*store, a));

    const auto next = openStore();

    EXPECT_TRUE(next->groups().empty());
    EXPECT_EQ(addresses(next->tabs()), Strings{b});
}

TEST_F(BrowserStoreGroupsTest, OperationsOnAGroupThatEndedDoNothing) {
    const auto store = openStoreWith({a, b});
    const auto gone = store->newGroup(*tabAt(*store, a));
    store->ungroup(*gone);
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->rename(*gone, "New");
    store->recolor(*gone);
    store->toggleCollapsed(*gone);
    store->moveToGroup(*tabAt(*store, b), *gone);
    store->ungroup(*gone);
    store->closeGroup(*gone);

    EXPECT_EQ(addresses(store->ungrouped()), (Strings{a, b}));
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreGroupsTest, OperationsOnATabThatLeftDoNothing) {
    const auto store = openStoreWith({a, b});
    const auto group = store->newGroup(*tabAt(*store, b));
    const auto gone = tabAt(*store, a);
    store->close(*gone);
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    EXPECT_EQ(store->newGroup(*gone), std::nullopt);
    store->moveToGroup(*gone, *group);
    store->removeFromGroup(*gone);

    EXPECT_EQ(gone->groupID(), std::nullopt);
    EXPECT_EQ(store->groups(), std::vector{*group});
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreGroupsTest, AStaleCopyOfAGroupStillNamesTheStoredOne) {
    const auto store = openStoreWith({a});
    const auto copy = store->newGroup(*tabAt(*store, a));
    store->rename(*copy, "New");

    store->recolor(*copy);

    EXPECT_EQ(store->groups(), (std::vector<TabGroup>{{copy->id, "New", 1, false}}));
}

TEST_F(BrowserStoreGroupsTest, AnObserverOfATabMayOpenTabsWhileItsGroupIsDissolved) {
    const auto store = openStoreWith({a, b});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->moveToGroup(*tabAt(*store, b), *group);
    tabAt(*store, a)->connectChanged([&] {
        for (int number = 0; number < 20; ++number) store->newTab(url(c), Select::no);
    });

    store->ungroup(*group);

    EXPECT_EQ(store->ungrouped().size(), 22U);
    EXPECT_TRUE(store->groups().empty());
}

TEST_F(BrowserStoreGroupsTest, AnObserverOfATabMayCloseItWhileItEntersAGroup) {
    const auto store = openStoreWith({a, b});
    BrowserTab& tab = *tabAt(*store, a);
    tab.connectChanged([&] {
        if (store->tabs().size() == 2) store->close(tab);
    });

    const auto group = store->newGroup(tab);

    EXPECT_TRUE(group);
    EXPECT_EQ(addresses(store->tabs()), Strings{b});
    EXPECT_TRUE(store->groups().empty());
}

}  // namespace
}  // namespace orvu

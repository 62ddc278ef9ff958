#include "shell/column/ColumnItems.h"

#include "support/StoreWorld.h"

#include <sstream>

namespace orvu {
namespace {

class ColumnItemsTest : public StoreTest {
protected:
    /// The list in words: "[name count]" for a header, addresses of tabs, "UNGROUPED".
    static Strings list(const BrowserStore& store) {
        Strings result;
        for (const auto& item : columnItems(store)) result.push_back(inWords(store, item));
        return result;
    }
    /// The addresses of the tabs in front after each of `count` steps.
    static Strings walk(BrowserStore& store, ColumnStep step, int count) {
        Strings fronts;
        for (int time = 0; time < count; ++time) {
            store.select(*neighbourTab(store, step));
            fronts.push_back(front(store));
        }
        return fronts;
    }

private:
    static std::string inWords(const BrowserStore& store, const ColumnItem& item) {
        if (item.key.kind == ColumnKey::Kind::ungroupedHeading) return "UNGROUPED";
        if (item.key.kind == ColumnKey::Kind::group) {
            const auto group = std::ranges::find(store.groups(), item.key.id, &TabGroup::id);
            return (std::ostringstream{} << '[' << group->name << ' ' << item.count << ']').str();
        }
        const auto& tabs = store.tabs();
        const auto tab =
            std::ranges::find_if(tabs, [&](const auto& each) { return each->id() == item.key.id; });
        return addresses({*tab}).front();
    }
};

TEST_F(ColumnItemsTest, WithoutGroupsTheListIsTheTabsWithoutAHeading) {
    const auto store = openStoreWith({a, b});

    EXPECT_EQ(list(*store), (Strings{a, b}));
}

TEST_F(ColumnItemsTest, GroupsComeFirstAndTheOthersBehindTheHeading) {
    const auto store = openStoreWith({a, b, c, d});
    const auto first = store->newGroup(*tabAt(*store, c));
    store->newGroup(*tabAt(*store, a));

    store->moveToGroup(*tabAt(*store, d), *first);

    EXPECT_EQ(list(*store), (Strings{"[c.example 2]", c, d, "[a.example 1]", a, "UNGROUPED", b}));
}

TEST_F(ColumnItemsTest, WithEveryTabInAGroupThereIsNoHeading) {
    const auto store = openStoreWith({a, b});
    const auto group = store->newGroup(*tabAt(*store, a));

    store->moveToGroup(*tabAt(*store, b), *group);

    EXPECT_EQ(list(*store), (Strings{"[a.example 2]", a, b}));
}

TEST_F(ColumnItemsTest, CollapsedGroupShowsItsHeaderAndCountOnly) {
    const auto store = openStoreWith({a, b, c});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->moveToGroup(*tabAt(*store, b), *group);

    store->toggleCollapsed(*group);

    EXPECT_EQ(list(*store), (Strings{"[a.example 2]", "UNGROUPED", c}));
}

TEST_F(ColumnItemsTest, PinnedTabsOfAGroupAreInNoRow) {
    const auto store = openStoreWith({a, b, c});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->moveToGroup(*tabAt(*store, b), *group);

    store->togglePin(*tabAt(*store, a));

    EXPECT_EQ(list(*store), (Strings{"[a.example 1]", b, "UNGROUPED", c}));
}

TEST_F(ColumnItemsTest, AGroupThatShowsNoTabHasNoRow) {
    const auto store = openStoreWith({a});
    store->newGroup(*tabAt(*store, a));

    store->togglePin(*tabAt(*store, a));
    EXPECT_EQ(list(*store), Strings{});

    store->togglePin(*tabAt(*store, a));
    EXPECT_EQ(list(*store), (Strings{"[a.example 1]", a}));
}

TEST_F(ColumnItemsTest, AGroupWithoutARowMakesNoHeadingOverTheOtherTabs) {
    const auto store = openStoreWith({a, b, c});
    store->newGroup(*tabAt(*store, a));

    store->close(*tabAt(*store, a));

    EXPECT_EQ(list(*store), (Strings{b, c}));
}

TEST_F(ColumnItemsTest, OnlyPinnedTabsMakeAnEmptyList) {
    const auto store = openStoreWith({a});

    store->togglePin(*tabAt(*store, a));

    EXPECT_EQ(list(*store), Strings{});
}

// --- From tab to tab --------------------------------------------------------------------------

TEST_F(ColumnItemsTest, StepsFollowTheColumnRoundAndRound) {
    const auto store = openStoreWith({a, b, c, d});
    store->togglePin(*tabAt(*store, d));
    store->newGroup(*tabAt(*store, c));
    store->select(*tabAt(*store, d));

    EXPECT_EQ(walk(*store, ColumnStep::next, 5), (Strings{c, a, b, d, c}));
    store->select(*tabAt(*store, d));
    EXPECT_EQ(walk(*store, ColumnStep::previous, 5), (Strings{b, a, c, d, b}));
}

TEST_F(ColumnItemsTest, StepsPassOverCollapsedGroups) {
    const auto store = openStoreWith({a, b, c});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->toggleCollapsed(*group);
    store->select(*tabAt(*store, b));

    EXPECT_EQ(walk(*store, ColumnStep::next, 3), (Strings{c, b, c}));
    EXPECT_EQ(walk(*store, ColumnStep::previous, 3), (Strings{b, c, b}));
}

TEST_F(ColumnItemsTest, FromACollapsedGroupTheStepsLeadOut) {
    const auto store = openStoreWith({a, b, c});
    const auto group = store->newGroup(*tabAt(*store, b));
    store->toggleCollapsed(*group);
    store->select(*tabAt(*store, b));

    EXPECT_EQ(walk(*store, ColumnStep::next, 1), Strings{a});
}

TEST_F(ColumnItemsTest, StepsGoThroughACollapsedGroupIfThereIsNothingElse) {
    const auto store = openStoreWith({a, b, c});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->moveToGroup(*tabAt(*store, b), *group);
    store->moveToGroup(*tabAt(*store, c), *group);
    store->toggleCollapsed(*group);
    store->select(*tabAt(*store, a));

    EXPECT_EQ(walk(*store, ColumnStep::next, 3), (Strings{b, c, a}));
}

TEST_F(ColumnItemsTest, OnlyTabHasNoNeighbour) {
    const auto store = openStoreWith({a});

    EXPECT_EQ(neighbourTab(*store, ColumnStep::next), nullptr);
    EXPECT_EQ(neighbourTab(*store, ColumnStep::previous), nullptr);
}

}  // namespace
}  // namespace orvu

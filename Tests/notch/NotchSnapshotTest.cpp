#include "notch/candidates/NotchSnapshot.h"

#include "NotchWorld.h"
#include "support/StoreWorld.h"

namespace orvu {
namespace {

/// A snapshot of a real store, asked over and over.
class NotchSnapshotTest : public StoreTest {
protected:
    [[nodiscard]] Strings ask(const BrowserStore& store, std::string query) {
        snapshot.take(store, store.active().get());
        const NotchCandidates candidates{
            snapshot, {.query = std::move(query), .shortTime = [](Date) { return "noon"; }}};
        Strings titles;
        for (const auto& entry : candidates.entries()) {
            titles.push_back(entry.section + ": " + entry.rest);
        }
        return titles;
    }

    NotchSnapshot snapshot;
};

TEST_F(NotchSnapshotTest, TakesOverHistoryBookmarksAndOtherTabs) {
    const auto store = openStoreWith({a, b});
    visit(*tabAt(*store, a), a, "First page");
    visit(*tabAt(*store, b), b, "Second page");
    store->bookmarks().toggle(url(c), "Third page");

    EXPECT_EQ(ask(*store, "page"), (Strings{"Open tabs: First page", "Bookmarks: Third page",
                                            "History: Second page", "History: First page"}));
}

TEST_F(NotchSnapshotTest, AnEmptyFieldShowsTheLatestOfToday) {
    const auto store = openStoreWith({a});
    auto& tab = *store->active();
    for (const auto* const address : {a, b, c, d, a}) visit(tab, address, address);

    EXPECT_EQ(ask(*store, ""),
              (Strings{"Earlier today: https://a.example/", "Earlier today: https://d.example/",
                       "Earlier today: https://c.example/", "Earlier today: https://b.example/"}));
}

TEST_F(NotchSnapshotTest, FollowsTheStoreFromOneTakeToTheNext) {
    const auto store = openStoreWith({a});
    visit(*store->active(), a, "First page");
    EXPECT_EQ(ask(*store, "page"), Strings{"History: First page"});

    visit(*store->active(), b, "Second page");
    EXPECT_EQ(ask(*store, "page"), (Strings{"History: Second page", "History: First page"}));

    store->removeVisit(Visit{store->visits().front()});
    store->bookmarks().toggle(url(c), "Third page");
    EXPECT_EQ(ask(*store, "page"), (Strings{"Bookmarks: Third page", "History: Second page"}));

    store->clearHistory(std::nullopt);
    store->newTab(url(d), Select::yes);
    EXPECT_EQ(ask(*store, "page"), (Strings{"Open tabs: Second page", "Bookmarks: Third page"}));
}

TEST_F(NotchSnapshotTest, FollowsAnImportIntoTheMiddleOfTheHistory) {
    const auto store = openStoreWith({a});
    visit(*store->active(), a, "First page");
    world.loop.advance(std::chrono::hours{2});
    visit(*store->active(), b, "Second page");
    EXPECT_EQ(ask(*store, "page").size(), 2U);

    BrowserStore::importVisits(
        {{Uuid::random(), url(c), "Page between", world.loop.now().after(std::chrono::hours{-1})}},
        Profile::personal(), world.defaults, world.notifications);

    EXPECT_EQ(ask(*store, "page"),
              (Strings{"History: Second page", "History: Page between", "History: First page"}));
}

TEST_F(NotchSnapshotTest, APrivateWindowKnowsItsTabsAndTheBookmarksOfTheProfile) {
    visit(*openStoreWith({a})->active(), a, "First page");
    world.bookmarks.store(Profile::personal()).toggle(url(c), "Third page");
    const auto store = openPrivateStore();
    visit(*store->active(), b, "Second page");
    store->newTab(std::nullopt, Select::yes);

    EXPECT_EQ(ask(*store, "page"), (Strings{"Open tabs: Second page", "Bookmarks: Third page"}));
}

TEST_F(NotchSnapshotTest, WithoutACurrentTabEveryTabIsOffered) {
    const auto store = openStoreWith({a, b});

    snapshot.take(*store, nullptr);

    EXPECT_EQ(snapshot.currentTab(), std::nullopt);
    EXPECT_EQ(snapshot.tabs().size(), 2U);
}

}  // namespace
}  // namespace orvu

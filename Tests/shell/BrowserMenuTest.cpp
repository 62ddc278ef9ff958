#include "shell/menus/BrowserMenu.h"

#include "support/StoreWorld.h"

#include <chrono>

namespace orvu {
namespace {

class BrowserMenuTest : public StoreTest {
protected:
    /// The titles in order; "-" for a separator.
    static Strings titles(const BrowserStore& store) {
        Strings result;
        for (const auto& item : browserMenu(store)) {
            result.emplace_back(item.isSeparator() ? "-" : item.title);
        }
        return result;
    }
};

TEST_F(BrowserMenuTest, TabWithAnAddressHasAllItems) {
    const auto store = openStoreWith({a});

    EXPECT_EQ(titles(*store),
              (Strings{"New Tab", "New Private Window", "Reopen Closed Tab", "-", "Side by Side",
                       "Reader", "Find in Page…", "-", "History", "Bookmarks", "Recently Closed",
                       "Zoom In", "Zoom Out", "Actual Size", "-", "Copy Link",
                       "Open in Default Browser"}));
}

TEST_F(BrowserMenuTest, TabWithoutAnAddressHasNoLinkItems) {
    const auto store = openStore();

    EXPECT_EQ(titles(*store).back(), "Actual Size");
}

TEST_F(BrowserMenuTest, PairOffersTheWayBack) {
    const auto store = openStoreWith({a, b});

    store->toggleSideBySide();

    EXPECT_EQ(titles(*store)[4], "Back to One Page");
}

TEST_F(BrowserMenuTest, EndedPairOffersAnother) {
    const auto store = openStoreWith({a, b});

    store->toggleSideBySide();
    store->toggleSideBySide();

    EXPECT_EQ(titles(*store)[4], "Side by Side");
}

TEST_F(BrowserMenuTest, ReaderThatShowsOffersTheWayOut) {
    const auto store = openStoreWith({a, b});

    store->toggleReader();
    page(*store->active())
        .answers.back()
        .resolve({ScriptResult::Kind::json, R"({"title":"T","blocks":[]})"});
    world.loop.advance(std::chrono::milliseconds{0});
    EXPECT_EQ(titles(*store)[5], "Exit Reader");
    store->select(*tabAt(*store, a));

    EXPECT_EQ(titles(*store)[5], "Reader");
}

}  // namespace
}  // namespace orvu

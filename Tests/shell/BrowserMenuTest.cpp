#include "shell/BrowserMenu.h"

#include "support/StoreWorld.h"

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
                       "Find in Page…", "-", "Zoom In", "Zoom Out", "Actual Size", "-", "Copy Link",
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

}  // namespace
}  // namespace orvu

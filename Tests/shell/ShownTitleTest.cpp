#include "shell/column/ShownTitle.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

using ShownTitleTest = StoreTest;

TEST_F(ShownTitleTest, BlankTitleGivesWayToTheSiteAndThenToNewTab) {
    const auto store = openStoreWith({"https://www.a.example/x", "about:blank"});
    const auto site = tabAt(*store, "https://www.a.example/x");
    const auto blank = tabAt(*store, "about:blank");

    page(*site).setTitle(" \n\t ");
    page(*blank).setTitle("\u200B");

    EXPECT_EQ(shownTitle(*site), "a.example");
    EXPECT_EQ(shownTitle(*blank), "New tab");
    page(*site).setTitle("Page\none");
    EXPECT_EQ(shownTitle(*site), "Page one");
}

}  // namespace
}  // namespace orvu

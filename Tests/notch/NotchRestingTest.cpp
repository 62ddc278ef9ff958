#include "notch/NotchResting.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

using NotchRestingTest = StoreTest;

TEST_F(NotchRestingTest, AHostThatPassesForAnotherStandsAsItsServerIsAsked) {
    const auto siteAt = [this](std::string_view address) {
        return NotchResting::of(*openStoreWith({std::string{address}})->active()).site;
    };

    EXPECT_EQ(siteAt("https://p\u0430ypal.example/x"), "xn--pypal-4ve.example");
    EXPECT_EQ(siteAt("https://www.xn--mnchen-3ya.example/x"), "m\u00FCnchen.example");
}

TEST_F(NotchRestingTest, EmptyTabSaysWhatTheFieldIsFor) {
    const auto store = openStore();

    const auto resting = NotchResting::of(*store->active());

    EXPECT_EQ(resting.site, "");
    EXPECT_EQ(resting.quiet, "Search, type a site, or ask Kesto");
    EXPECT_EQ(resting.name, "Search or type a site");
    EXPECT_EQ(resting.address, "");
}

TEST_F(NotchRestingTest, PageShowsItsSiteAndItsPath) {
    const auto store = openStoreWith({"https://www.a.example/on/b%C3%A9es?x=1#y"});

    const auto resting = NotchResting::of(*store->active());

    EXPECT_EQ(resting.site, "a.example");
    EXPECT_EQ(resting.quiet, "/on/bées");
    EXPECT_EQ(resting.name, "Address: https://www.a.example/on/b%C3%A9es?x=1#y");
    EXPECT_EQ(resting.address, "https://www.a.example/on/b%C3%A9es?x=1#y");
}

TEST_F(NotchRestingTest, RootPathIsNotShown) {
    const auto store = openStoreWith({a});

    EXPECT_EQ(NotchResting::of(*store->active()).quiet, "");
}

TEST(NotchBookmarkTest, ButtonSaysWhatItWillDo) {
    EXPECT_EQ(NotchBookmark::of(false),
              (NotchBookmark{"star", "Bookmark this page (⌘D)", "Bookmark this page", false}));
    EXPECT_EQ(NotchBookmark::of(true),
              (NotchBookmark{"star.fill", "Remove bookmark (⌘D)", "Remove bookmark", true}));
}

TEST(NotchReaderTest, ButtonSaysWhatItWillDo) {
    EXPECT_EQ(NotchReader::of(false), (NotchReader{"book", "Reader (⇧⌘R)", "Reader", false}));
    EXPECT_EQ(NotchReader::of(true),
              (NotchReader{"book.fill", "Exit Reader (⇧⌘R)", "Exit Reader", true}));
}

}  // namespace
}  // namespace orvu

#include "import/KnownBrowsers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace orvu {
namespace {

using Strings = std::vector<std::string>;

const KnownBrowser& browser(std::string_view id) {
    const auto all = KnownBrowser::all();
    return *std::ranges::find(all, id, &KnownBrowser::id);
}

TEST(KnownBrowsersTest, TheMenuEntryOfThePackageGoesBeforeThoseOfSnapAndFlatpak) {
    EXPECT_EQ(browser("firefox").desktopFiles(),
              (Strings{"firefox.desktop", "firefox-esr.desktop", "firefox_firefox.desktop",
                       "org.mozilla.firefox.desktop"}));
}

TEST(KnownBrowsersTest, ABrowserThatDoesNotExistHereHasNoMenuEntry) {
    EXPECT_EQ(browser("arc").desktopFiles(), Strings{});
    EXPECT_EQ(browser("safari").desktopFiles(), Strings{});
}

TEST(KnownBrowsersTest, NoTwoBrowsersShareAnIdentifierANameOrAMenuEntry) {
    std::set<std::string> seen;
    for (const KnownBrowser& each : KnownBrowser::all()) {
        EXPECT_TRUE(seen.insert(std::string{each.id}).second) << each.id;
        EXPECT_TRUE(seen.insert(std::string{each.name}).second) << each.name;
        for (const auto& file : each.desktopFiles()) EXPECT_TRUE(seen.insert(file).second) << file;
    }
}

}  // namespace
}  // namespace orvu

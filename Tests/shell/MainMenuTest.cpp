#include "shell/menus/MainMenu.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace orvu {
namespace {

/// One line of text for each line of a menu: "Quit Orvu [⌘Q]".
std::vector<std::string> lines(const Menu& menu) {
    std::vector<std::string> result;
    for (const auto& item : menu.items) {
        std::string line{item.isSeparator() ? "-" : item.title};
        if (!item.keys.empty()) line.append(" [").append(item.keys).append("]");
        result.push_back(std::move(line));
    }
    return result;
}

TEST(MainMenuTest, TheMenusHoldTheirItemsInOrderWithTheirKeys) {
    const auto menus = makeMenu();
    ASSERT_EQ(menus.size(), 5U);

    using Lines = std::vector<std::string>;
    EXPECT_EQ(menus[0].title, "Orvu");
    EXPECT_EQ(lines(menus[0]),
              (Lines{"About Orvu", "What's New in Orvu", "Check for Updates…", "-",
                     "Settings… [⌘,]", "Make Orvu Your Default Browser", "-", "Quit Orvu [⌘Q]"}));
    EXPECT_EQ(menus[1].title, "File");
    EXPECT_EQ(lines(menus[1]), (Lines{"New Window [⌘N]", "New Private Window [⇧⌘N]", "-",
                                      "Import from Another Browser…", "-", "Close Window [⇧⌘W]"}));
    EXPECT_EQ(menus[2].title, "Edit");
    EXPECT_EQ(lines(menus[2]), (Lines{"Undo [⌘Z]", "Redo [⇧⌘Z]", "-", "Cut [⌘X]", "Copy [⌘C]",
                                      "Paste [⌘V]", "Select All [⌘A]"}));
    EXPECT_EQ(menus[3].title, "View");
    EXPECT_EQ(lines(menus[3]), (Lines{"Enter Full Screen [⌃⌘F]"}));
    EXPECT_EQ(menus[4].title, "Window");
    EXPECT_EQ(lines(menus[4]), (Lines{"Minimize [⌘M]", "Zoom"}));
}

TEST(MainMenuTest, EveryItemHasAnActionOfItsOwnAndSeparatorsHaveNone) {
    std::set<std::string_view> actions;
    std::size_t items = 0;

    for (const auto& menu : makeMenu()) {
        for (const auto& item : menu.items) {
            if (item.isSeparator()) {
                EXPECT_TRUE(item.action.empty() && item.keys.empty());
                continue;
            }
            ++items;
            actions.insert(item.action);
            EXPECT_TRUE(item.action.starts_with("app.") || item.action.starts_with("win."));
        }
    }

    EXPECT_EQ(actions.size(), items);
}

TEST(MainMenuTest, TheKeysOfTabsAreNotInTheMenu) {
    const std::set<std::string_view> tabKeys{"⌘T", "⌘W", "⇧⌘T", "⌘L", "⌘R", "⌘D", "⌘1", "⌘9"};

    for (const auto& menu : makeMenu()) {
        for (const auto& item : menu.items) EXPECT_FALSE(tabKeys.contains(item.keys));
    }
}

}  // namespace
}  // namespace orvu

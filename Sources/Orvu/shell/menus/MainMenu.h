#pragma once

#include <string_view>
#include <vector>

namespace orvu {

/// One line of a menu. Without a title it is a separator.
struct MenuItem {
    std::string_view title;
    std::string_view action;  ///< name of an action of the application or the window
    std::string_view keys;    ///< key signs such as "⇧⌘N"; empty without a key

    [[nodiscard]] bool isSeparator() const { return title.empty(); }
};

struct Menu {
    std::string_view title;
    std::vector<MenuItem> items;
};

/// The program's main menu. It has no tab commands: those are the window's own keys.
[[nodiscard]] std::vector<Menu> makeMenu();

}  // namespace orvu

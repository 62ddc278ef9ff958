#pragma once

#include "shell/menus/Commands.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// One line of a menu. Without a title it is a separator.
struct MenuItem {
    std::string title = {};
    std::string action = {};     ///< as `Command::action` names it
    std::string_view keys = {};  ///< key signs such as "⇧⌘N"; empty without a key

    MenuItem() = default;
    /// The line of a command, of which a menu without a subject shows the ordinary title.
    explicit MenuItem(const Command& command);
    MenuItem(const Command& command, const CommandSubject& subject);

    [[nodiscard]] bool isSeparator() const { return title.empty(); }
};

struct Menu {
    std::string_view title;
    std::vector<MenuItem> items;
};

/// The program's main menu. It has no tab commands: those are the window's own keys.
[[nodiscard]] std::vector<Menu> makeMenu();

}  // namespace orvu

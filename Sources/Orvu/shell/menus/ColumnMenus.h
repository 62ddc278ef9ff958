#pragma once

#include "core/BrowserStore.h"
#include "foundation/text/Translation.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvu {

/// One line of a menu of the column or of the shelf.
struct MenuEntry {
    enum class Kind { action, submenu, separator, text };

    Kind kind = Kind::action;
    std::string title = {};
    bool enabled = true;                  ///< disabled lines stay visible, greyed
    std::function<void()> run = {};       ///< of an action; does nothing once its target is gone
    std::vector<MenuEntry> entries = {};  ///< of a submenu
    std::string host = {};                ///< whose icon stands beside the title; empty: no icon
};

/// The context menu of a tab. `store` must outlive the menu.
[[nodiscard]] std::vector<MenuEntry> tabMenu(BrowserStore& store,
                                             const std::shared_ptr<BrowserTab>& tab);

/// The context menu of a group's header. `rename` begins the editing of its name; without it that
/// line is greyed. `store` must outlive the menu.
[[nodiscard]] std::vector<MenuEntry> groupMenu(BrowserStore& store, const TabGroup& group,
                                               std::function<void()> rename);

/// What an empty shelf says, and what the shelf's button helps with.
inline constexpr Phrase shelfHelp =
    phrase("Park tabs in the notch; they use no memory until you open them");

/// The menu of parked tabs. `store` must outlive the menu.
[[nodiscard]] std::vector<MenuEntry> shelfMenu(BrowserStore& store);

}  // namespace orvu

#pragma once

#include "core/BrowserStore.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"
#include "profiles/Profiles.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The limits that the zoom keys respect, and their step.
struct PageZoom {
    static constexpr double smallest = 0.5;
    static constexpr double largest = 3.0;
    static constexpr double step = 0.1;

    /// `zoom` changed by `steps` steps, within the limits and rounded to one decimal.
    [[nodiscard]] static double stepped(double zoom, int steps);
    /// The same for the menu, which goes beyond the limits; but nothing is drawn at zero or
    /// below, so one step is the least.
    [[nodiscard]] static double steppedFreely(double zoom, int steps);
};

/// What a window does beside its store when a command asks for it.
class WindowCommandTarget {
public:
    virtual ~WindowCommandTarget() = default;

    [[nodiscard]] virtual BrowserStore& store() = 0;
    /// Puts the keyboard into the address field, with `text` in it, selected.
    virtual void editAddress(const std::string& text) = 0;
    /// Ends the editing of the address and the search in the page. False if there was neither.
    virtual bool endEditing() = 0;
    /// Moves the keyboard on among the address, the column of tabs and the page: to the next of
    /// them, or the previous one.
    virtual void focusNextArea() = 0;
    virtual void focusPreviousArea() = 0;
    virtual void switchProfile(const Profile& profile) = 0;
    /// Opens the search bar over the page and gives it the keyboard.
    virtual void openFind() = 0;
    /// Goes on to the next match, or the previous one; opens the bar if it is closed.
    virtual void findAgain(bool backwards) = 0;
    /// Shows the time line of the day and gives it the keyboard.
    virtual void openRewind() = 0;
    [[nodiscard]] virtual Pasteboard& pasteboard() = 0;
    [[nodiscard]] virtual Workspace& workspace() = 0;
};

/// One command of a window, with the keys that give it.
struct WindowCommand {
    std::string name;  ///< as an action of the window
    /// Key signs such as "⇧⌘T". The first is the one to show.
    std::vector<std::string> keys;
    std::function<void(WindowCommandTarget&)> run;
};

/// The commands of a browser window. `profiles` must outlive them.
[[nodiscard]] std::vector<WindowCommand> windowCommands(const ProfileStore& profiles);

}  // namespace orvu

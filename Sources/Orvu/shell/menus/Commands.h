#pragma once

#include "core/BrowserStore.h"
#include "foundation/text/Translation.h"

#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvu {

class AppDelegate;
class BrowserView;

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

/// What a condition or a title of a command is asked about. Without a tab that is the window.
struct CommandSubject {
    const BrowserStore& store;
    const BrowserTab* tab = nullptr;  ///< the one in front, or the one whose menu it is
};

/// Something that a person can ask the program for: by key, in a menu, or by a button. This is all
/// that the program knows of it, told once.
struct Command {
    using Condition = std::function<bool(const CommandSubject&)>;
    using ForApplication = std::function<void(AppDelegate&)>;
    using ForWindow = std::function<void(BrowserView&)>;
    /// As an action of a window it is about the tab in front, and nothing happens without one.
    using ForTab = std::function<void(BrowserStore&, BrowserTab&)>;
    /// Only the group's own menu has it.
    using ForGroup = std::function<void(BrowserStore&, const TabGroup&)>;
    using Run = std::variant<ForApplication, ForWindow, ForTab, ForGroup>;

    /// Who takes the keys: the window, before the page, as for all that is about tabs, windows and
    /// the notch; the window, but only what the page doesn't take, as a web application may well want
    /// them; or whatever has the keyboard, by itself.
    enum class KeysOf { window, pageFirst, focus };

    std::string name = {};  ///< unique; of its action, in the application or the window
    Run run = ForWindow{};
    Phrase title = {};                    ///< in menus
    Phrase titleOn = {};                  ///< the same while `isOn`
    std::vector<std::string> keys = {};   ///< signs such as "⇧⌘T"; menus show the first
    std::vector<std::string> alias = {};  ///< the same keys as some keyboards name them
    KeysOf keysOf = KeysOf::window;
    std::string showsKeyOf = {};    ///< the command whose key menus show beside this one's title
    std::string help = {};          ///< what the keys do, for the list of keys; empty: not in it
    Condition isEnabled = nullptr;  ///< always without one
    Condition isOn = nullptr;       ///< never without one

    [[nodiscard]] bool enabled(const CommandSubject& subject) const {
        return !isEnabled || isEnabled(subject);
    }
    [[nodiscard]] std::string titleFor(const CommandSubject& subject) const {
        return isOn && isOn(subject) ? titleOn : title;
    }
    /// The key that menus show, as signs; empty without one.
    [[nodiscard]] std::string_view shownKey() const;
    [[nodiscard]] bool isForApplication() const {
        return std::holds_alternative<ForApplication>(run);
    }
    [[nodiscard]] bool isForGroup() const { return std::holds_alternative<ForGroup>(run); }
    /// The action as menus and buttons name it, such as "win.reload".
    [[nodiscard]] std::string action() const {
        return (isForApplication() ? "app." : "win.") + name;
    }
    /// Does it as an action of the window.
    void runIn(BrowserView& view) const;
};

/// All commands of the program.
[[nodiscard]] const std::vector<Command>& commands();
/// The command of that name; null if there is none.
[[nodiscard]] const Command* findCommand(std::string_view name);
/// The command of that name, which there must be.
[[nodiscard]] const Command& command(std::string_view name);

/// The list of keys for people, as rows of a Markdown table, in the order of the commands.
[[nodiscard]] std::string keyTable();

}  // namespace orvu

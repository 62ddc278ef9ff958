#pragma once

#include "core/BrowserStore.h"
#include "look/view/FrameRefresh.h"
#include "core/ActiveTabWatch.h"
#include "look/controls/view/BrowserChromeButton.h"
#include "shell/rewind/view/RewindPopover.h"

#include <gtkmm/box.h>

#include <memory>

namespace orvu {

/// Back, forward and reload for the tab in front. The pointer on the back button opens the time
/// line of the day.
class BrowserNavButtons : public Gtk::Box {
public:
    explicit BrowserNavButtons(std::shared_ptr<BrowserStore> store);
    ~BrowserNavButtons() override;

    /// Shows the time line and gives it the keyboard.
    void openRewind() { rewind_.open(RewindPopover::Keyboard::comes); }
    /// Called when the time line had the keyboard and closed.
    void setOnKeyboardLeft(std::function<void()> slot) { rewind_.onKeyboardLeft = std::move(slot); }

private:
    void addRewind();
    void pointerCame();
    bool keyPressed(guint key);
    void refresh();

    const std::shared_ptr<BrowserStore> store_;
    static constexpr std::string_view backHelp = "Back (⌘[) — hover to rewind";

    Gtk::Box backPlace_;  ///< feels the pointer even while the button is off
    BrowserChromeButton back_{"arrow.left", backHelp};
    RewindPopover rewind_;
    BrowserChromeButton forward_{"arrow.right", "Forward (⌘])"};
    BrowserChromeButton reload_{"arrow.clockwise", "Reload (⌘R)"};
    FrameRefresh refresh_;
    ActiveTabWatch watch_;
    bool showsStop_ = false;
};

}  // namespace orvu

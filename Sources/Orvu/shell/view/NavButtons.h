#pragma once

#include "core/BrowserStore.h"
#include "look/view/FrameRefresh.h"
#include "shell/view/ActiveTabWatch.h"
#include "shell/view/ChromeButton.h"

#include <gtkmm/box.h>

#include <memory>

namespace orvu {

/// Back, forward and reload for the tab in front.
class NavButtons : public Gtk::Box {
public:
    explicit NavButtons(std::shared_ptr<BrowserStore> store);

private:
    void refresh();

    const std::shared_ptr<BrowserStore> store_;
    ChromeButton back_{"arrow.left", "Back (⌘[)"};
    ChromeButton forward_{"arrow.right", "Forward (⌘])"};
    ChromeButton reload_{"arrow.clockwise", "Reload (⌘R)"};
    FrameRefresh refresh_;
    ActiveTabWatch watch_;
    bool showsStop_ = false;
};

}  // namespace orvu

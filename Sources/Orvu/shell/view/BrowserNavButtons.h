#pragma once

#include "core/BrowserStore.h"
#include "look/view/FrameRefresh.h"
#include "core/ActiveTabWatch.h"
#include "shell/view/BrowserChromeButton.h"

#include <gtkmm/box.h>

#include <memory>

namespace orvu {

/// Back, forward and reload for the tab in front.
class BrowserNavButtons : public Gtk::Box {
public:
    explicit BrowserNavButtons(std::shared_ptr<BrowserStore> store);

private:
    void refresh();

    const std::shared_ptr<BrowserStore> store_;
    BrowserChromeButton back_{"arrow.left", "Back (⌘[)"};
    BrowserChromeButton forward_{"arrow.right", "Forward (⌘])"};
    BrowserChromeButton reload_{"arrow.clockwise", "Reload (⌘R)"};
    FrameRefresh refresh_;
    ActiveTabWatch watch_;
    bool showsStop_ = false;
};

}  // namespace orvu

#pragma once

#include "foundation/text/Translation.h"
#include "look/view/FrameRefresh.h"
#include "core/ActiveTabWatch.h"
#include "look/controls/view/BrowserChromeButton.h"
#include "shell/BrowserView.h"
#include "shell/rewind/view/RewindPopover.h"

#include <gtkmm/box.h>

namespace orvu {

/// Back, forward and reload for the tab in front. The pointer on the back button opens the time
/// line of the day.
class BrowserNavButtons : public Gtk::Box {
public:
    /// `view` must outlive the buttons.
    explicit BrowserNavButtons(BrowserView& view);
    ~BrowserNavButtons() override;

private:
    void addRewind();
    void pointerCame();
    bool keyPressed(guint key);
    void rewindChanged();
    void refresh();

    BrowserView& view_;
    BrowserStore& store_;
    static constexpr Phrase backHelp = phrase("Back (⌘[) — hover to rewind");

    Gtk::Box backPlace_;  ///< feels the pointer even while the button is off
    BrowserChromeButton back_{"arrow.left", backHelp};
    RewindPopover rewind_;
    BrowserChromeButton forward_{"arrow.right", phrase("Forward (⌘])")};
    BrowserChromeButton reload_{"arrow.clockwise", phrase("Reload (⌘R)")};
    FrameRefresh refresh_;
    ActiveTabWatch watch_;
    bool showsStop_ = false;
};

}  // namespace orvu

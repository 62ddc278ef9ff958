#pragma once

#include "foundation/text/Translation.h"
#include "look/view/DotFaceView.h"
#include "shell/BrowserView.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/togglebutton.h>

namespace orvu {

/// Opens and closes the assistant's panel.
class KestoButton : public Gtk::ToggleButton {
public:
    static constexpr Phrase help = phrase("Ask Kesto about this page (⌘J)");

    /// `view` must outlive the button.
    explicit KestoButton(BrowserView& view);
    ~KestoButton() override { notify_callbacks(); }

private:
    void wakeUnderPointer();

    BrowserView& view_;
    Gtk::Box line_;
    Gtk::Box tile_;
    DotFaceView face_;
    Gtk::Label name_;
};

}  // namespace orvu

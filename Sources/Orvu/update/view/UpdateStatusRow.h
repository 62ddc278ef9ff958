#pragma once

#include "update/UpdateStatus.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

namespace orvu {

/// The row of the settings about the running version and what updates are up to.
class UpdateStatusRow : public Gtk::Box {
public:
    /// `status` must outlive this.
    explicit UpdateStatusRow(UpdateStatus& status);
    ~UpdateStatusRow() override { notify_callbacks(); }

private:
    void refresh();
    void setEnabled(bool enabled);

    UpdateStatus& status_;
    Gtk::Box texts_{Gtk::Orientation::VERTICAL};
    Gtk::Label title_;
    Gtk::Label line_;
    Gtk::Button button_;
    bool hadKeyboard_ = false;  ///< the button, before it was disabled
};

}  // namespace orvu

#pragma once

#include "update/UpdatePill.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

namespace orvu {

/// The small control of the top bar that shows an update under way. It takes no room while there is
/// none.
class UpdatePillView : public Gtk::Box {
public:
    /// The action of the application that asks the pages and restarts.
    static constexpr const char* restartAction = "app.restartToUpdate";

    /// Both must outlive this.
    UpdatePillView(Updater& updater, Settings& settings);
    ~UpdatePillView() override;

private:
    void refresh();
    void showCapsule(const UpdatePill::Look& look);
    void press();

    Updater& updater_;
    UpdatePill pill_;
    UpdatePill::Look shown_;
    Gtk::Button capsule_;
    Gtk::Box line_;
    Gtk::Image symbol_;
    Gtk::Label label_;
    Gtk::Box wheel_;
};

}  // namespace orvu

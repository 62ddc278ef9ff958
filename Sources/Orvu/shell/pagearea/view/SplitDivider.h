#pragma once

#include <gtkmm/box.h>

namespace orvu {

/// The handle between two pages. The widget around it lets it be dragged; it takes the arrow keys.
class SplitDivider : public Gtk::Widget {
public:
    SplitDivider();
    ~SplitDivider() override { handle_.unparent(); }

    /// Calls `slot` with -1 or +1 for a press of an arrow key.
    sigc::connection connectStepped(const sigc::slot<void(int)>& slot) {
        return stepped_.connect(slot);
    }

private:
    bool keyPressed(guint key, guint code, Gdk::ModifierType state);

    Gtk::Box handle_;
    sigc::signal<void(int)> stepped_;
};

}  // namespace orvu

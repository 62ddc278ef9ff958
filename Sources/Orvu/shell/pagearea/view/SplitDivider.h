#pragma once

#include <gtkmm/box.h>

#include <functional>

namespace orvu {

/// The handle between two pages. The widget around it lets it be dragged; it takes the arrow keys.
class SplitDivider : public Gtk::Widget {
public:
    SplitDivider();
    ~SplitDivider() override { handle_.unparent(); }

    /// Called with -1 or +1 for a press of an arrow key.
    std::function<void(int)> onStepped;

private:
    bool keyPressed(guint key, guint code, Gdk::ModifierType state);

    Gtk::Box handle_;
};

}  // namespace orvu

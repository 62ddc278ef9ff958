#pragma once

#include <gtkmm/root.h>
#include <gtkmm/widget.h>

namespace orvu {

/// What has the keyboard in the window of `widget`; null if nothing has, or without a window.
[[nodiscard]] inline Gtk::Widget* focusOf(const Gtk::Widget& widget) {
    auto* const root = const_cast<Gtk::Widget&>(widget).get_root();
    return root ? root->get_focus() : nullptr;
}

/// Whether `widget`, or something in it, has the keyboard of its window.
[[nodiscard]] inline bool holdsKeyboard(const Gtk::Widget& widget) {
    const Gtk::Widget* const focus = focusOf(widget);
    return focus && (focus == &widget || focus->is_ancestor(const_cast<Gtk::Widget&>(widget)));
}

/// Whether a key is one of those that mean Return.
[[nodiscard]] bool isReturnKey(guint key);

}  // namespace orvu

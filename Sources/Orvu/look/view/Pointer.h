#pragma once

#include <gtkmm/widget.h>

namespace orvu {

/// Whether the pointer really is over a widget of a window that is on the display. After a popup of
/// a page closes by key, an enter event with the popup's coordinates reaches whatever lies at these
/// in the window behind it.
[[nodiscard]] bool isPointerOver(const Gtk::Widget& widget);

}  // namespace orvu

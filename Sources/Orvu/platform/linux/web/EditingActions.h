#pragma once

#include <gtkmm/window.h>

#include <string_view>

namespace orvu {

/// Does one of "undo", "redo", "cut", "copy", "paste" and "selectAll" where the keyboard is: in
/// a page or in a text field.
void editInFocus(Gtk::Window& window, std::string_view action);

}  // namespace orvu

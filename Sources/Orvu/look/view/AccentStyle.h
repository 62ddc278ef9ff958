#pragma once

#include "foundation/Color.h"

#include <gtkmm/widget.h>

#include <string>

namespace orvu {

/// The style rules of what is in a window's accent: the default one, and one of each look.
[[nodiscard]] std::string accentRules();
/// The accent of the window in which a widget is.
[[nodiscard]] Color accentOf(const Gtk::Widget& widget);

}  // namespace orvu

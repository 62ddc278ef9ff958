#pragma once

#include <gtkmm/scrolledwindow.h>

namespace orvu {

/// Scrolls up or down as little as brings `widget`, which stands in the scrolled box and is laid
/// out, into sight.
void scrollTo(Gtk::ScrolledWindow& scroll, Gtk::Widget& widget);

}  // namespace orvu

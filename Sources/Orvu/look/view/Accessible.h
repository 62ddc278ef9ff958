#pragma once

#include <gtkmm/widget.h>

#include <string>

namespace orvu {

/// Gives a widget the name by which assistive technology calls it.
void setAccessibleLabel(Gtk::Widget& widget, const std::string& label);
/// What assistive technology says of a widget beside its name.
void setAccessibleDescription(Gtk::Widget& widget, const std::string& text);
/// Says whether an item of a list is the chosen one.
void setAccessibleSelected(Gtk::Widget& widget, bool selected);
/// Says whether what a widget opens and closes is open.
void setAccessibleExpanded(Gtk::Widget& widget, bool expanded);
/// Takes a widget, and what is in it, out of what assistive technology sees.
void hideFromAccessibility(Gtk::Widget& widget);

/// Names the scroll bars of all that stands in a widget: they would go by the name of their type.
void nameScrollBars(Gtk::Widget& within);

}  // namespace orvu

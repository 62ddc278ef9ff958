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
/// The value of what can be moved along a range, and how it is to be said.
struct AccessibleValue {
    double now = 0;
    double least = 0;
    double most = 1;
    std::string text = {};
};
void setAccessibleValue(Gtk::Widget& widget, const AccessibleValue& value);
/// Takes a widget, and what is in it, out of what assistive technology sees.
void hideFromAccessibility(Gtk::Widget& widget);

/// Names the scroll bars of all that stands in a widget: they would go by the name of their type.
void nameScrollBars(Gtk::Widget& within);

}  // namespace orvu

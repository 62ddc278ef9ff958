#pragma once

#include <gtkmm/box.h>

#include <vector>

namespace orvu {

/// Puts exactly these into a box, in this order. Those that were in it and stay are not touched, so
/// they keep the keyboard and what is selected in them. What is not shown is better taken out than
/// hidden: assistive technology goes on seeing hidden things where another took their place.
void setChildren(Gtk::Box& box, const std::vector<Gtk::Widget*>& children);

}  // namespace orvu

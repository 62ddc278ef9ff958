#pragma once

#include <gtkmm/widget.h>

#include <string>

namespace orvu {

/// Gives a widget a style class, or takes it away.
inline void setCssClass(Gtk::Widget& widget, const std::string& name, bool isSet) {
    if (isSet) {
        widget.add_css_class(name);
    } else {
        widget.remove_css_class(name);
    }
}

}  // namespace orvu

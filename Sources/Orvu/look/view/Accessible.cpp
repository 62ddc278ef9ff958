#include "look/view/Accessible.h"

#include <gtkmm/scrollbar.h>

namespace orvu {

void setAccessibleLabel(Gtk::Widget& widget, const std::string& label) {
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   label.c_str(), -1);
}

void setAccessibleSelected(Gtk::Widget& widget, bool selected) {
    gtk_accessible_update_state(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_STATE_SELECTED,
                                static_cast<gboolean>(selected), -1);
}

void setAccessibleExpanded(Gtk::Widget& widget, bool expanded) {
    gtk_accessible_update_state(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_STATE_EXPANDED,
                                static_cast<gboolean>(expanded), -1);
}

void hideFromAccessibility(Gtk::Widget& widget) {
    gtk_accessible_update_state(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_STATE_HIDDEN,
                                static_cast<gboolean>(true), -1);
}

void nameScrollBars(Gtk::ScrolledWindow& window) {
    if (auto* const bar = window.get_vscrollbar()) setAccessibleLabel(*bar, "Scroll up and down");
    if (auto* const bar = window.get_hscrollbar()) setAccessibleLabel(*bar, "Scroll sideways");
}

}  // namespace orvu

#include "look/view/Accessible.h"

#include "foundation/text/Translation.h"

#include <gtkmm/scrollbar.h>

namespace orvu {

void setAccessibleLabel(Gtk::Widget& widget, const std::string& label) {
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   label.c_str(), -1);
}

void setAccessibleDescription(Gtk::Widget& widget, const std::string& text) {
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()),
                                   GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, text.c_str(), -1);
}

void setAccessibleSelected(Gtk::Widget& widget, bool selected) {
    gtk_accessible_update_state(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_STATE_SELECTED,
                                static_cast<gboolean>(selected), -1);
}

void setAccessibleExpanded(Gtk::Widget& widget, bool expanded) {
    gtk_accessible_update_state(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_STATE_EXPANDED,
                                static_cast<gboolean>(expanded), -1);
}

void setAccessibleValue(Gtk::Widget& widget, const AccessibleValue& value) {
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_VALUE_NOW,
                                   value.now, GTK_ACCESSIBLE_PROPERTY_VALUE_MIN, value.least,
                                   GTK_ACCESSIBLE_PROPERTY_VALUE_MAX, value.most,
                                   GTK_ACCESSIBLE_PROPERTY_VALUE_TEXT, value.text.c_str(), -1);
}

void hideFromAccessibility(Gtk::Widget& widget) {
    gtk_accessible_update_state(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_STATE_HIDDEN,
                                static_cast<gboolean>(true), -1);
}

void nameScrollBars(Gtk::Widget& within) {
    if (const auto* const bar = dynamic_cast<Gtk::Scrollbar*>(&within)) {
        const bool sideways = bar->get_orientation() == Gtk::Orientation::HORIZONTAL;
        setAccessibleLabel(within,
                           sideways ? phrase("Scroll sideways") : phrase("Scroll up and down"));
        return;
    }
    for (Gtk::Widget* child = within.get_first_child(); child; child = child->get_next_sibling()) {
        nameScrollBars(*child);
    }
}

}  // namespace orvu

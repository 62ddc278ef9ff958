#include "look/view/Children.h"

#include <algorithm>

namespace orvu {

void setChildren(Gtk::Box& box, const std::vector<Gtk::Widget*>& children) {
    for (Gtk::Widget* child = box.get_first_child(); child;) {
        Gtk::Widget* const next = child->get_next_sibling();
        if (std::ranges::find(children, child) == children.end()) box.remove(*child);
        child = next;
    }
    Gtk::Widget* previous = nullptr;
    for (Gtk::Widget* const child : children) {
        if (!child->get_parent()) {
            if (previous) {
                box.insert_child_after(*child, *previous);
            } else {
                box.prepend(*child);
            }
        }
        previous = child;
    }
}

}  // namespace orvu

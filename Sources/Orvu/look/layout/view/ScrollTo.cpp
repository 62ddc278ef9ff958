#include "look/layout/view/ScrollTo.h"

#include <gtkmm/adjustment.h>

namespace orvu {

void scrollTo(Gtk::ScrolledWindow& scroll, Gtk::Widget& widget) {
    constexpr double margin = 4;
    double x = 0;
    double y = 0;
    if (!widget.translate_coordinates(scroll, 0, 0, x, y)) return;
    const auto adjustment = scroll.get_vadjustment();
    const double top = adjustment->get_value() + y;
    adjustment->clamp_page(top - margin, top + widget.get_height() + margin);
}

}  // namespace orvu

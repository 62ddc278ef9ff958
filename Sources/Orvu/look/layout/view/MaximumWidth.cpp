#include "look/layout/view/MaximumWidth.h"

#include <algorithm>

namespace orvu {

MaximumWidth::MaximumWidth(Gtk::Widget& child, int width) : child_(child), width_(width) {
    add_css_class("maximum-width");
    child_.set_parent(*this);
}

MaximumWidth::~MaximumWidth() { child_.unparent(); }

Gtk::SizeRequestMode MaximumWidth::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::HEIGHT_FOR_WIDTH;
}

void MaximumWidth::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum,
                                 int& natural, int& minimumBaseline, int& naturalBaseline) const {
    const bool heightForWidth = orientation == Gtk::Orientation::VERTICAL && forSize > width_;
    child_.measure(orientation, heightForWidth ? width_ : forSize, minimum, natural,
                   minimumBaseline, naturalBaseline);
    if (orientation == Gtk::Orientation::HORIZONTAL) natural = std::max(minimum, width_);
}

void MaximumWidth::size_allocate_vfunc(int width, int height, int baseline) {
    const int taken = std::min(width, width_);
    child_.size_allocate({(width - taken) / 2, 0, taken, height}, baseline);
}

}  // namespace orvu

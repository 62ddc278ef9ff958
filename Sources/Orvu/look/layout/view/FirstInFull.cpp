#include "look/layout/view/FirstInFull.h"

#include <algorithm>

namespace orvu {
namespace {

struct Lengths {
    int minimum = 0;
    int natural = 0;
};

Lengths measured(const Gtk::Widget& widget, Gtk::Orientation orientation) {
    Lengths lengths;
    int ignored = -1;
    if (widget.get_visible()) {
        widget.measure(orientation, -1, lengths.minimum, lengths.natural, ignored, ignored);
    }
    return lengths;
}

}  // namespace

FirstInFull::FirstInFull(Gtk::Widget& first, Gtk::Widget& second) : first_(first), second_(second) {
    first_.set_parent(*this);
    second_.set_parent(*this);
}

FirstInFull::~FirstInFull() {
    second_.unparent();
    first_.unparent();
}

Gtk::SizeRequestMode FirstInFull::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

void FirstInFull::measure_vfunc(Gtk::Orientation orientation, int, int& minimum, int& natural,
                                int& minimumBaseline, int& naturalBaseline) const {
    const Lengths first = measured(first_, orientation);
    const Lengths second = measured(second_, orientation);
    const bool isWidth = orientation == Gtk::Orientation::HORIZONTAL;
    minimum = isWidth ? first.minimum : std::max(first.minimum, second.minimum);
    natural = isWidth ? first.natural + second.natural : std::max(first.natural, second.natural);
    minimumBaseline = naturalBaseline = -1;
}

void FirstInFull::size_allocate_vfunc(int width, int height, int) {
    const Lengths first = measured(first_, Gtk::Orientation::HORIZONTAL);
    const Lengths second = measured(second_, Gtk::Orientation::HORIZONTAL);
    const int taken = std::clamp(first.natural, 0, width);
    const int left = width - taken;
    if (first_.get_visible()) first_.size_allocate({0, 0, taken, height}, -1);
    // Less than it can be drawn in is as good as none.
    const bool fits = left >= second.minimum;
    second_.set_child_visible(fits);
    if (second_.get_visible() && fits) second_.size_allocate({taken, 0, left, height}, -1);
}

}  // namespace orvu

#include "look/layout/view/WrappingRow.h"

#include <algorithm>

namespace orvu {

WrappingRow::WrappingRow(int spacing) : spacing_(spacing) { add_css_class("wrapping-row"); }

WrappingRow::~WrappingRow() { clear(); }

void WrappingRow::append(Gtk::Widget& child) { child.set_parent(*this); }

void WrappingRow::clear() {
    while (Gtk::Widget* const child = get_first_child()) child->unparent();
}

WrappingRow::Cells WrappingRow::cells() const {
    Cells cells;
    auto* const self = const_cast<WrappingRow*>(this);
    for (Gtk::Widget* child = self->get_first_child(); child; child = child->get_next_sibling()) {
        Gtk::Requisition minimum;
        Gtk::Requisition natural;
        child->get_preferred_size(minimum, natural);
        ++cells.count;
        cells.width = std::max(cells.width, natural.get_width());
        cells.height = std::max(cells.height, natural.get_height());
    }
    return cells;
}

int WrappingRow::Cells::perRow(int room, int spacing) const {
    if (count == 0) return 1;
    return std::clamp((room + spacing) / std::max(width + spacing, 1), 1, count);
}

Gtk::SizeRequestMode WrappingRow::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::HEIGHT_FOR_WIDTH;
}

void WrappingRow::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum,
                                int& natural, int& minimumBaseline, int& naturalBaseline) const {
    minimumBaseline = naturalBaseline = -1;
    const Cells cells = this->cells();
    const auto length = [&](int number, int each) {
        return std::max(number * (each + spacing_) - spacing_, 0);
    };
    if (orientation == Gtk::Orientation::HORIZONTAL) {
        minimum = cells.width;
        natural = length(cells.count, cells.width);
        return;
    }
    const int perRow = forSize < 0 ? std::max(cells.count, 1) : cells.perRow(forSize, spacing_);
    minimum = natural = length((cells.count + perRow - 1) / perRow, cells.height);
}

void WrappingRow::size_allocate_vfunc(int width, int, int) {
    const Cells cells = this->cells();
    const int perRow = cells.perRow(width, spacing_);
    int index = 0;
    for (Gtk::Widget* child = get_first_child(); child; child = child->get_next_sibling()) {
        const int inRow = std::min(perRow, cells.count - index / perRow * perRow);
        const int taken = inRow * (cells.width + spacing_) - spacing_;
        const int x = (width - taken) / 2 + index % perRow * (cells.width + spacing_);
        const int y = index / perRow * (cells.height + spacing_);
        child->size_allocate({x, y, cells.width, cells.height}, -1);
        ++index;
    }
}

}  // namespace orvu

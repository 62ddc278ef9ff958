#include "shell/column/view/LineBox.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace orvu {

LineBox::LineBox(const Glib::RefPtr<Gtk::Adjustment>& scroll)
    : scroll_(scroll), scrolled_(*this, [this] { queue_allocate(); }) {
    // Other lines come into sight, though this box keeps its size. Before the next frame, since
    // the layout itself may scroll.
    scroll_->signal_value_changed().connect(sigc::mem_fun(scrolled_, &FrameRefresh::mark));
    scroll_->property_page_size().signal_changed().connect(
        sigc::mem_fun(scrolled_, &FrameRefresh::mark));
}

void LineBox::setLines(std::vector<ColumnLine*> lines) {
    if (lines == lines_) return;
    lines_ = std::move(lines);
    if (std::ranges::find(lines_, ready_) == lines_.end()) ready_ = nullptr;
    queue_resize();
}

void LineBox::keepReady(ColumnLine* line) {
    if (line == ready_) return;
    ready_ = line;
    if (line) line->widget().set_child_visible(true);
    queue_allocate();
}

void LineBox::reveal(const ColumnLine& line) {
    constexpr int margin = 4;
    forEachPlace(get_width(), [&](const ColumnLine& each, int top, int height) {
        if (&each == &line) scroll_->clamp_page(top - margin, top + height + margin);
    });
}

int LineBox::forEachPlace(int width, const auto& visit) const {
    std::optional<int> rowHeight;  // one for all rows: most of them are never looked at
    int end = 0;
    for (ColumnLine* const line : lines_) {
        if (!line->widget().get_visible()) continue;
        int height = 0;
        if (line->isTab() && rowHeight) {
            height = *rowHeight;
        } else {
            int natural = 0;
            int baseline = 0;
            line->widget().measure(Gtk::Orientation::VERTICAL, width, height, natural, baseline,
                                   baseline);
            if (line->isTab()) rowHeight = height;
        }
        if (end > 0) end += spacing;
        visit(*line, end, height);
        end += height;
    }
    return end;
}

Gtk::SizeRequestMode LineBox::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

void LineBox::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                            int& minimumBaseline, int& naturalBaseline) const {
    minimumBaseline = naturalBaseline = -1;
    minimum = natural = 0;  // as wide as the column, whatever stands in the lines
    if (orientation == Gtk::Orientation::HORIZONTAL) return;
    minimum = natural = forEachPlace(forSize, [](const ColumnLine&, int, int) {});
}

void LineBox::size_allocate_vfunc(int width, int, int) {
    const double page = scroll_->get_page_size();
    const double begin = scroll_->get_value() - page / 2;
    const double end = scroll_->get_value() + page * 3 / 2;
    forEachPlace(width, [&](ColumnLine& line, int top, int height) {
        const bool isShown = (top < end && top + height > begin) || &line == ready_;
        if (line.widget().get_child_visible() != isShown) line.widget().set_child_visible(isShown);
        if (isShown) line.widget().size_allocate({0, top, width, height}, -1);
    });
}

}  // namespace orvu

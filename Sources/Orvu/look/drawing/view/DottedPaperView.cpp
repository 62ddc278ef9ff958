#include "look/drawing/view/DottedPaperView.h"

#include "look/drawing/view/Drawing.h"

#include <gtkmm/snapshot.h>

namespace orvu {

void drawDots(const Glib::RefPtr<Gtk::Snapshot>& snapshot, const DotGrid& grid, Paint dots,
              int width, int height) {
    const auto pitch = static_cast<float>(grid.pitch);
    // Whole tiles only: a dot whose centre lies beyond the size must not show its near half.
    const auto columns = static_cast<float>(grid.count(width));
    const auto rows = static_cast<float>(grid.count(height));
    if (columns == 0 || rows == 0) return;

    const graphene_rect_t area{{0, 0}, {columns * pitch, rows * pitch}};
    const graphene_rect_t tile{{0, 0}, {pitch, pitch}};
    snapshot->push_repeat(&area, &tile);
    const auto context = snapshot->append_cairo(&tile);
    setSource(context, dots);
    fillDot(context, {grid.first, grid.first}, grid.diameter);
    snapshot->pop();
}

DottedPaperView::DottedPaperView(Paint dots) : dots_(dots) {
    add_css_class("dotted-paper");
    set_can_target(false);
}

void DottedPaperView::setDots(Paint dots) {
    if (dots == dots_) return;
    dots_ = dots;
    queue_draw();
}

void DottedPaperView::setGround(std::optional<Color> ground) {
    if (ground == ground_) return;
    ground_ = ground;
    queue_draw();
}

void DottedPaperView::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    const int width = get_width();
    const int height = get_height();
    if (ground_) {
        const Gdk::Rectangle area{0, 0, width, height};
        snapshot->append_color(rgba({*ground_}), area);
    }
    drawDots(snapshot, DottedPaper::grid, dots_, width, height);
}

}  // namespace orvu

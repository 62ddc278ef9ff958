#include "search/answers/view/ShimmerLine.h"

#include "look/Desk.h"
#include "look/motion/view/WindowTicker.h"
#include "look/view/Accessible.h"
#include "look/view/CssColor.h"
#include "search/answers/SearchAnswerCard.h"

#include <gtkmm/snapshot.h>

#include <utility>

namespace orvu {

ShimmerLine::ShimmerLine(double fraction, Clock clock)
    : fraction_(fraction), clock_(std::move(clock)) {
    set_can_target(false);
    set_hexpand(true);
    hideFromAccessibility(*this);
}

ShimmerLine::~ShimmerLine() {
    if (ticker_) ticker_->remove(*this);
}

void ShimmerLine::on_map() {
    Gtk::Widget::on_map();
    ticker_ = WindowTicker::of(gtk_widget_get_root(gobj()));
    ticker_->add(*this);
}

void ShimmerLine::on_unmap() {
    if (ticker_) ticker_->remove(*this);
    ticker_.reset();
    Gtk::Widget::on_unmap();
}

void ShimmerLine::measure_vfunc(Gtk::Orientation orientation, int, int& minimum, int& natural,
                                int& minimumBaseline, int& naturalBaseline) const {
    minimum = natural = orientation == Gtk::Orientation::VERTICAL ? height : 0;
    minimumBaseline = naturalBaseline = -1;
}

void ShimmerLine::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    const double time = animationsEnabled() ? clock_().secondsSinceReference() : 0;
    const GdkRGBA color{1, 1, 1, static_cast<float>(SearchAnswerCard::shimmer(time))};
    const auto width = static_cast<float>(get_width() * fraction_);
    graphene_rect_t bounds{{0, 0}, {width, static_cast<float>(height)}};
    if (get_direction() == Gtk::TextDirection::RTL) {
        bounds.origin.x = static_cast<float>(get_width()) - width;
    }
    GskRoundedRect capsule;
    gsk_rounded_rect_init_from_rect(&capsule, &bounds, static_cast<float>(height) / 2);
    gtk_snapshot_push_rounded_clip(snapshot->gobj(), &capsule);
    gtk_snapshot_append_color(snapshot->gobj(), &color, &bounds);
    gtk_snapshot_pop(snapshot->gobj());
}

}  // namespace orvu

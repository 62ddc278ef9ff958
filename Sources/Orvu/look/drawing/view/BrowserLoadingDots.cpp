#include "look/drawing/view/BrowserLoadingDots.h"

#include "look/Desk.h"
#include "look/view/Accessible.h"
#include "look/drawing/view/Drawing.h"
#include "look/motion/view/WindowTicker.h"

#include <gtkmm/snapshot.h>

#include <cmath>

namespace orvu {

BrowserLoadingDots::BrowserLoadingDots(int count, Clock clock)
    : dots_{.count = count}, clock_(std::move(clock)) {
    add_css_class("loading-dots");
    set_can_target(false);
    hideFromAccessibility(*this);
}

BrowserLoadingDots::~BrowserLoadingDots() {
    if (ticker_) ticker_->remove(*this);
}

void BrowserLoadingDots::setProgress(double progress) {
    if (progress == dots_.progress) return;
    dots_.progress = progress;
    queue_draw();
}

void BrowserLoadingDots::on_map() {
    Gtk::Widget::on_map();
    ticker_ = WindowTicker::of(gtk_widget_get_root(gobj()));
    ticker_->add(*this);
}

void BrowserLoadingDots::on_unmap() {
    if (ticker_) ticker_->remove(*this);
    ticker_.reset();
    Gtk::Widget::on_unmap();
}

void BrowserLoadingDots::measure_vfunc(Gtk::Orientation orientation, int, int& minimum,
                                       int& natural, int& minimumBaseline,
                                       int& naturalBaseline) const {
    const bool across = orientation == Gtk::Orientation::HORIZONTAL;
    minimum = across ? 0 : static_cast<int>(LoadingDots::diameter);
    natural = minimum;
    minimumBaseline = naturalBaseline = -1;
}

void BrowserLoadingDots::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    const int width = get_width();
    const graphene_rect_t bounds{{0, 0},
                                 {static_cast<float>(width), static_cast<float>(get_height())}};
    const auto context = snapshot->append_cairo(&bounds);
    // A phase is all that the wave takes of the time; few digits keep it exact.
    const double time = std::fmod(clock_().secondsSinceReference(), 24 * 60 * 60);
    const bool moves = animationsEnabled();
    for (int dot = 0; dot < dots_.count; ++dot) {
        const double opacity = moves ? dots_.opacity(dot, time) : dots_.stillOpacity(dot);
        setSource(context, {Desk::sky, opacity});
        fillDot(context, {dots_.centre(dot, width), LoadingDots::diameter / 2},
                LoadingDots::diameter);
    }
}

}  // namespace orvu

#include "assistant/view/BrowserThinkingDots.h"

#include "assistant/KestoPanel.h"
#include "assistant/ThinkingDots.h"
#include "look/Desk.h"
#include "look/drawing/view/Drawing.h"
#include "look/motion/view/WindowTicker.h"
#include "look/view/Accessible.h"

#include <gtkmm/snapshot.h>

#include <cmath>
#include <utility>

namespace orvu {

BrowserThinkingDots::BrowserThinkingDots(Clock clock) : clock_(std::move(clock)) {
    set_can_target(false);
    set_halign(Gtk::Align::START);
    property_accessible_role() = Gtk::Accessible::Role::STATUS;
    setAccessibleLabel(*this, std::string{KestoPanel::thinkingLabel});
}

BrowserThinkingDots::~BrowserThinkingDots() {
    if (ticker_) ticker_->remove(*this);
}

void BrowserThinkingDots::on_map() {
    Gtk::Widget::on_map();
    ticker_ = WindowTicker::of(gtk_widget_get_root(gobj()));
    ticker_->add(*this);
}

void BrowserThinkingDots::on_unmap() {
    if (ticker_) ticker_->remove(*this);
    ticker_.reset();
    Gtk::Widget::on_unmap();
}

void BrowserThinkingDots::measure_vfunc(Gtk::Orientation orientation, int, int& minimum,
                                        int& natural, int& minimumBaseline,
                                        int& naturalBaseline) const {
    using Dots = ThinkingDots;
    const bool across = orientation == Gtk::Orientation::HORIZONTAL;
    const double width = Dots::count * Dots::diameter + (Dots::count - 1) * Dots::spacing;
    minimum = natural = static_cast<int>(std::ceil(across ? width : Dots::diameter));
    minimumBaseline = naturalBaseline = -1;
}

void BrowserThinkingDots::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    using Dots = ThinkingDots;
    const graphene_rect_t bounds{
        {0, 0}, {static_cast<float>(get_width()), static_cast<float>(get_height())}};
    const auto context = snapshot->append_cairo(&bounds);
    // A phase is all that the wave takes of the time; few digits keep it exact.
    const double time = std::fmod(clock_().secondsSinceReference(), 24 * 60 * 60);
    const bool moves = animationsEnabled();
    for (int dot = 0; dot < Dots::count; ++dot) {
        setSource(context, {Desk::sky, moves ? Dots::opacity(dot, time) : Dots::still});
        const double centre = Dots::diameter / 2 + dot * (Dots::diameter + Dots::spacing);
        fillDot(context, {centre, Dots::diameter / 2}, Dots::diameter);
    }
}

}  // namespace orvu

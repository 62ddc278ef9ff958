#include "site/downloads/view/DownloadRing.h"

#include "look/Desk.h"
#include "look/view/Accessible.h"
#include "look/drawing/view/Drawing.h"

#include <gtkmm/snapshot.h>

#include <numbers>

namespace orvu {

DownloadRing::DownloadRing() {
    add_css_class("download-ring");
    set_halign(Gtk::Align::CENTER);
    set_valign(Gtk::Align::CENTER);
    hideFromAccessibility(*this);
}

void DownloadRing::setFraction(double fraction) {
    if (fraction == fraction_) return;
    fraction_ = fraction;
    queue_draw();
}

void DownloadRing::measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural,
                                 int& minimumBaseline, int& naturalBaseline) const {
    minimum = natural = side;
    minimumBaseline = naturalBaseline = -1;
}

void DownloadRing::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    const graphene_rect_t area{{0, 0}, {side, side}};
    const auto context = snapshot->append_cairo(&area);
    constexpr double centre = side / 2.0;
    constexpr double top = -std::numbers::pi / 2;
    setSource(context, {Desk::sky});
    context->set_line_width(lineWidth);
    context->arc(centre, centre, centre - lineWidth / 2, top,
                 top + 2 * std::numbers::pi * fraction_);
    context->stroke();
}

}  // namespace orvu

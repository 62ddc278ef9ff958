#include "shell/pagearea/view/LinkAddressView.h"

#include "shell/pagearea/LinkAddress.h"

#include <gtkmm/eventcontrollermotion.h>

namespace orvu {
namespace {

/// So near to the foot the pointer may be over the line.
constexpr double height = 44;  // points

}  // namespace

LinkAddressView::LinkAddressView(Gtk::Widget& page) : page_(page) {
    add_css_class("link-address");
    set_halign(Gtk::Align::START);
    set_valign(Gtk::Align::END);
    set_ellipsize(Pango::EllipsizeMode::END);
    set_xalign(0);
    set_can_target(false);
    set_visible(false);
    const auto motion = Gtk::EventControllerMotion::create();
    motion->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    motion->signal_motion().connect(sigc::mem_fun(*this, &LinkAddressView::keepClear));
    page_.add_controller(motion);
}

void LinkAddressView::show(const WebView* page) {
    const auto link = page ? page->hoveredLink() : std::nullopt;
    if (link == shown_) return;
    shown_ = link;
    if (link) set_text(linkAddress(*link));
    set_visible(link.has_value());
}

void LinkAddressView::keepClear(double x, double y) {
    const bool isNear = y > page_.get_height() - height && x < page_.get_width() / 2.0;
    set_halign(isNear ? Gtk::Align::END : Gtk::Align::START);
}

}  // namespace orvu

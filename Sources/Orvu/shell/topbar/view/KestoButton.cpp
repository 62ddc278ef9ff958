#include "shell/topbar/view/KestoButton.h"

#include "assistant/KestoPanel.h"
#include "look/view/Accessible.h"

#include <gtkmm/eventcontrollermotion.h>

namespace orvu {
namespace {

constexpr int spacing = 8;
constexpr double faceDot = 1.2;
constexpr double faceGap = 0.7;

}  // namespace

KestoButton::KestoButton(BrowserView& view)
    : view_(view),
      line_(Gtk::Orientation::HORIZONTAL, spacing),
      face_(faceDot, faceGap),
      name_(std::string{KestoPanel::title}) {
    add_css_class("kesto-button");
    set_valign(Gtk::Align::CENTER);
    set_focus_on_click(false);
    tile_.add_css_class("kesto-tile");
    tile_.set_valign(Gtk::Align::CENTER);
    tile_.append(face_);
    wakeUnderPointer();
    line_.append(tile_);
    line_.append(name_);
    hideFromAccessibility(line_);  // the button is one element
    set_child(line_);
    const std::string text = help;
    set_tooltip_text(text);
    setAccessibleLabel(*this, text);
    signal_toggled().connect([this] { view_.kestoOpen.set(get_active()); });
    view_.kestoOpen.connectChanged(
        sigc::track_object([this] { set_active(view_.kestoOpen.get()); }, *this));
    set_active(view_.kestoOpen.get());
}

/// It stands in every window: alive all the time it would keep the computer from its rest.
void KestoButton::wakeUnderPointer() {
    face_.setAlive(false);
    const auto motion = Gtk::EventControllerMotion::create();
    motion->signal_enter().connect([this](double, double) { face_.setAlive(true); });
    motion->signal_leave().connect([this] { face_.setAlive(false); });
    add_controller(motion);
}

}  // namespace orvu

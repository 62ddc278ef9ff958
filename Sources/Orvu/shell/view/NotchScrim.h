#pragma once

#include <gtkmm/gestureclick.h>
#include <gtkmm/widget.h>

#include <functional>
#include <utility>

namespace orvu {

/// The veil over the window while the notch is open. A press on it goes no further.
class NotchScrim : public Gtk::Widget {
public:
    explicit NotchScrim(std::function<void()> pressed) : pressed_(std::move(pressed)) {
        add_css_class("notch-scrim");
        set_visible(false);
        const auto click = Gtk::GestureClick::create();
        click->set_button(0);
        click->signal_pressed().connect([this](int, double, double) { pressed_(); });
        add_controller(click);
    }

    /// 0 is not there, 1 is all there.
    void setShown(double share) {
        set_visible(share > 0);
        set_opacity(share);
    }

private:
    const std::function<void()> pressed_;
};

}  // namespace orvu

#pragma once

#include <gtkmm/widget.h>

#include <functional>

namespace orvu {

/// Draws a view anew once per frame, however many changes it is told of.
class FrameRefresh : public sigc::trackable {
public:
    /// `refresh` runs before the next frame of `widget` after each `mark`. Both must outlive this.
    FrameRefresh(Gtk::Widget& widget, std::function<void()> refresh)
        : widget_(widget), refresh_(std::move(refresh)) {}
    FrameRefresh(const FrameRefresh&) = delete;
    FrameRefresh& operator=(const FrameRefresh&) = delete;
    ~FrameRefresh() {
        if (tick_ != 0) widget_.remove_tick_callback(tick_);
    }

    /// Something changed.
    void mark() {
        if (tick_ != 0) return;
        tick_ = widget_.add_tick_callback([this](const Glib::RefPtr<Gdk::FrameClock>&) {
            tick_ = 0;
            refresh_();
            return false;
        });
    }

private:
    Gtk::Widget& widget_;
    std::function<void()> refresh_;
    guint tick_ = 0;
};

}  // namespace orvu

#include "look/motion/view/SpringAnimation.h"

#include "look/motion/view/WindowTicker.h"

#include <gdkmm/frameclock.h>

namespace orvu {

SpringAnimation::SpringAnimation(Gtk::Widget& widget, Spring spring, double start, Step step,
                                 double epsilon)
    : widget_(widget),
      spring_(spring),
      step_(std::move(step)),
      epsilon_(epsilon),
      value_(start),
      motion_(spring, {start, 0}, start) {
    widget.signal_unmap().connect(sigc::mem_fun(*this, &SpringAnimation::finish));
}

SpringAnimation::~SpringAnimation() { stop(); }

void SpringAnimation::animateTo(double target) {
    if (!animationsEnabled() || !widget_.get_mapped()) {
        jumpTo(target);
        return;
    }
    if (target == motion_.end()) return;  // on its way or there already

    const double velocity = isRunning() ? motion_.at(elapsed()).velocity : 0;
    motion_ = SpringMotion{spring_, {value_, velocity}, target};
    begin_ = widget_.get_frame_clock()->get_frame_time();
    if (isRunning()) return;
    moving_.emplace();
    tick_ =
        widget_.add_tick_callback([this](const Glib::RefPtr<Gdk::FrameClock>&) { return frame(); });
}

void SpringAnimation::jumpTo(double target) {
    stop();
    motion_ = SpringMotion{spring_, {target, 0}, target};
    if (value_ == target) return;
    value_ = target;
    step_(target);
}

Seconds SpringAnimation::elapsed() const {
    return std::chrono::microseconds{widget_.get_frame_clock()->get_frame_time() - begin_};
}

bool SpringAnimation::frame() {
    const Seconds now = elapsed();
    if (!animationsEnabled() || now >= motion_.settlesAfter(epsilon_)) {
        finish();
    } else {
        value_ = motion_.at(now).position;
        step_(value_);
    }
    return isRunning();
}

void SpringAnimation::finish() { jumpTo(motion_.end()); }

void SpringAnimation::stop() {
    if (tick_ == 0) return;
    widget_.remove_tick_callback(tick_);
    tick_ = 0;
    moving_.reset();
}

}  // namespace orvu

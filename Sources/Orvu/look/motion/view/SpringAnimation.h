#pragma once

#include "look/motion/Motion.h"
#include "look/motion/view/Moving.h"

#include <gtkmm/widget.h>

#include <functional>
#include <optional>

namespace orvu {

/// A value that follows a spring, step by step with the frames of a widget. Where animations are
/// switched off or the widget isn't mapped, it is at its end at once.
class SpringAnimation : public sigc::trackable {
public:
    using Step = std::function<void(double)>;

    /// `step` is told each new value; it may ask for another target but must not end this.
    /// `widget` must outlive this. The value counts as there from within `epsilon` on.
    SpringAnimation(Gtk::Widget& widget, Spring spring, double start, Step step,
                    double epsilon = 0.001);
    SpringAnimation(const SpringAnimation&) = delete;
    SpringAnimation& operator=(const SpringAnimation&) = delete;
    ~SpringAnimation();

    /// Sets off to `target` with the velocity that the value has.
    void animateTo(double target);
    /// Is at `target` at once.
    void jumpTo(double target);

    [[nodiscard]] double value() const { return value_; }
    [[nodiscard]] bool isRunning() const { return tick_ != 0; }

private:
    [[nodiscard]] Seconds elapsed() const;
    bool frame();
    void finish();
    void stop();

    Gtk::Widget& widget_;
    Spring spring_;
    Step step_;
    double epsilon_;
    double value_;
    SpringMotion motion_;
    gint64 begin_ = 0;  ///< of the motion, in microseconds of the frame clock
    guint tick_ = 0;
    std::optional<Moving> moving_;  ///< while it runs
};

}  // namespace orvu

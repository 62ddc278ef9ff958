#pragma once

#include "look/motion/view/SpringAnimation.h"

#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <functional>
#include <optional>
#include <string>

namespace orvu {

/// The offer of a better spelling. It comes out of a blur, a little smaller, and goes the same way.
class NotchCorrection : public Gtk::Widget {
public:
    explicit NotchCorrection(const std::function<void()>& use);
    ~NotchCorrection() override;

    /// Nothing makes it go.
    void show(const std::optional<std::string>& correction);

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    void step(double progress);

    Gtk::Button button_;
    Gtk::Label text_;
    std::string shown_;
    SpringAnimation entrance_;
};

}  // namespace orvu

#pragma once

#include "foundation/Date.h"

#include <gtkmm/widget.h>

#include <functional>
#include <memory>

namespace orvu {

class WindowTicker;

/// A line that breathes in the place of one of a text that is yet to come.
class ShimmerLine : public Gtk::Widget {
public:
    using Clock = std::function<Date()>;

    static constexpr int height = 10;

    /// `fraction` of the room is how long it is.
    explicit ShimmerLine(double fraction, Clock clock = &Date::now);
    ~ShimmerLine() override;

protected:
    void on_map() override;
    void on_unmap() override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    const double fraction_;
    const Clock clock_;
    std::shared_ptr<WindowTicker> ticker_;  ///< while mapped
};

}  // namespace orvu

#pragma once

#include "foundation/Date.h"

#include <gtkmm/widget.h>

#include <functional>
#include <memory>

namespace orvu {

class WindowTicker;

/// Draws the dots of a thinking assistant, alive while they are mapped in a window that can be seen.
/// Where animations are switched off they stand still.
class BrowserThinkingDots : public Gtk::Widget {
public:
    using Clock = std::function<Date()>;

    explicit BrowserThinkingDots(Clock clock = &Date::now);
    ~BrowserThinkingDots() override;

protected:
    void on_map() override;
    void on_unmap() override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    const Clock clock_;
    std::shared_ptr<WindowTicker> ticker_;  ///< while mapped
};

}  // namespace orvu

#pragma once

#include "foundation/Date.h"
#include "look/drawing/LoadingDots.h"

#include <gtkmm/widget.h>

#include <functional>
#include <memory>

namespace orvu {

class WindowTicker;

/// Draws a row of loading dots, alive while it is mapped in a window that can be seen. Where
/// animations are switched off no wave runs along it.
class BrowserLoadingDots : public Gtk::Widget {
public:
    using Clock = std::function<Date()>;

    explicit BrowserLoadingDots(int count, Clock clock = &Date::now);
    ~BrowserLoadingDots() override;

    void setProgress(double progress);

protected:
    void on_map() override;
    void on_unmap() override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    LoadingDots dots_;
    const Clock clock_;
    std::shared_ptr<WindowTicker> ticker_;  ///< while mapped
};

}  // namespace orvu

#pragma once

#include "look/motion/view/SpringAnimation.h"
#include "shell/rewind/BrowserRewind.h"

#include <gtkmm/adjustment.h>
#include <gtkmm/widget.h>

#include <cstddef>
#include <optional>

namespace orvu {

/// The row of dots of the time line. The pointer and the arrow keys go through the visits; a click
/// or Return goes back to one.
class RewindDots : public Gtk::Widget {
public:
    /// `rewind` must outlive the view. `scroll` is what the row is scrolled by: only the dots in
    /// sight are drawn.
    RewindDots(BrowserRewind& rewind, Glib::RefPtr<Gtk::Adjustment> scroll);

    /// Other visits stand there.
    void refresh();

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    void addPointer();
    void hover(double x);
    void click(double x);
    bool keyPressed(guint key);
    void step(std::ptrdiff_t steps);
    [[nodiscard]] std::optional<std::size_t> hoveredIndex() const;
    void hoverChanged();
    void tellAccessibility();
    bool queryTooltip(int x, bool byKeyboard, const Glib::RefPtr<Gtk::Tooltip>& tooltip);
    [[nodiscard]] double diameter(std::size_t index) const;

    BrowserRewind& rewind_;
    const Glib::RefPtr<Gtk::Adjustment> scroll_;
    std::optional<std::size_t> grown_;   ///< the hovered dot
    std::optional<std::size_t> shrunk_;  ///< the one that was hovered before
    SpringAnimation growing_;
    SpringAnimation shrinking_;
};

}  // namespace orvu

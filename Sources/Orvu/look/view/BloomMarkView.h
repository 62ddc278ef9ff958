#pragma once

#include "look/Bloom.h"
#include "look/Desk.h"

#include <gtkmm/widget.h>

namespace orvu {

/// Draws the program's mark in one colour, as large as its place is. What lies below shows through the
/// hole in its middle.
class BloomMarkView : public Gtk::Widget {
public:
    /// `size` is that of the square it asks for, in pixels.
    explicit BloomMarkView(int size, BloomMark mark = {}, Color color = Desk::white);

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    const int size_;
    const BloomMark mark_;
    const Color color_;
};

}  // namespace orvu

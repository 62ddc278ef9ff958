#pragma once

#include <gtkmm/widget.h>

namespace orvu {

/// Gives its one child all the room there is, up to a width; what is wider stands in the middle.
class MaximumWidth : public Gtk::Widget {
public:
    /// `child` is not owned and must outlive this, or be made managed. `width` is in points.
    MaximumWidth(Gtk::Widget& child, int width);
    ~MaximumWidth() override;

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    Gtk::Widget& child_;
    const int width_;
};

}  // namespace orvu

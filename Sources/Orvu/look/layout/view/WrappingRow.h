#pragma once

#include <gtkmm/widget.h>

namespace orvu {

/// Sets its children side by side in the middle, and begins another row where the room ends.
class WrappingRow : public Gtk::Widget {
public:
    /// `spacing` in points, between children and between rows.
    explicit WrappingRow(int spacing);
    ~WrappingRow() override;

    /// `child` must be made managed.
    void append(Gtk::Widget& child);
    /// Removes all children.
    void clear();

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    /// All children are as large as the largest.
    struct Cells {
        int count = 0;
        int width = 0;
        int height = 0;
        [[nodiscard]] int perRow(int room, int spacing) const;
    };
    [[nodiscard]] Cells cells() const;

    const int spacing_;
};

}  // namespace orvu

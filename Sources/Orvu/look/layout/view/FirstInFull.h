#pragma once

#include <gtkmm/widget.h>

namespace orvu {

/// Two widgets side by side, of which the second gives way first: the first has all the room that
/// it wants, as long as there is so much, and the second what is left.
class FirstInFull : public Gtk::Widget {
public:
    /// Neither is owned; both must outlive this.
    FirstInFull(Gtk::Widget& first, Gtk::Widget& second);
    ~FirstInFull() override;

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    Gtk::Widget& first_;
    Gtk::Widget& second_;
};

}  // namespace orvu

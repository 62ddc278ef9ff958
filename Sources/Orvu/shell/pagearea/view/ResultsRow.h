#pragma once

#include <gtkmm/widget.h>

namespace orvu {

/// A page, and at its end the answer to its search where there is one. The answer takes no room
/// that the page needs: where there is too little, it lies over the page.
class ResultsRow : public Gtk::Widget {
public:
    /// `page` must outlive the row.
    explicit ResultsRow(Gtk::Widget& page);
    ~ResultsRow() override;

    /// nullptr for none. It must outlive the row or be taken out before.
    void setAnswer(Gtk::Widget* answer);

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    void place(Gtk::Widget& child, int begin, int width, int height);

    Gtk::Widget& page_;
    Gtk::Widget* answer_ = nullptr;
};

}  // namespace orvu

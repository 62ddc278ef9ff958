#pragma once

#include "look/view/FrameRefresh.h"
#include "shell/column/view/ColumnLine.h"

#include <gtkmm/adjustment.h>
#include <gtkmm/widget.h>

#include <vector>

namespace orvu {

/// Stacks the lines of the list. Only those in sight, and the one with the keyboard, are laid out
/// and drawn, so that a change costs the same however many there are.
class LineBox : public Gtk::Widget {
public:
    /// `scroll` is how far the box around this one is scrolled down.
    explicit LineBox(const Glib::RefPtr<Gtk::Adjustment>& scroll);

    /// Shows these lines, whose widgets are this one's children in the same order. They must
    /// outlive this or the next call.
    void setLines(std::vector<ColumnLine*> lines);
    /// Keeps a line, in sight or not, ready to take the keyboard.
    void keepReady(ColumnLine* line);
    /// Scrolls as little as brings a line into sight, once the list is laid out.
    void reveal(const ColumnLine& line);

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    static constexpr int spacing = 2;

    /// Calls `visit` with each line that is shown, its top and its height; gives the whole height.
    int forEachPlace(int width, const auto& visit) const;

    const Glib::RefPtr<Gtk::Adjustment> scroll_;
    std::vector<ColumnLine*> lines_;
    ColumnLine* ready_ = nullptr;
    FrameRefresh scrolled_;
};

}  // namespace orvu

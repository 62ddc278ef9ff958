#pragma once

#include "look/drawing/DottedPaper.h"
#include "look/Desk.h"
#include "look/drawing/Paint.h"

#include <gtkmm/widget.h>

#include <optional>

namespace orvu {

/// Draws the grid of dots over `width` and `height` pixels as one tile that repeats itself.
void drawDots(const Glib::RefPtr<Gtk::Snapshot>& snapshot, const DotGrid& grid, Paint dots,
              int width, int height);

/// A sheet of dotted paper as large as there is room.
class DottedPaperView : public Gtk::Widget {
public:
    explicit DottedPaperView(Paint dots = {Desk::white, DottedPaper::opacity});

    void setDots(Paint dots);
    /// Without a ground, as at first, the paper shows what lies below it.
    void setGround(std::optional<Color> ground);

protected:
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    Paint dots_;
    std::optional<Color> ground_;
};

}  // namespace orvu

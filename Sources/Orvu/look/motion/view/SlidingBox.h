#pragma once

#include "look/motion/SlidingPlaces.h"
#include "look/motion/view/Moving.h"

#include <gtkmm/box.h>

#include <map>
#include <optional>
#include <string>

namespace orvu {

/// A column whose lines slide to their places when others come or go. Only what is drawn moves:
/// for the pointer and for assistive technology each line is in its place at once. Where
/// animations are switched off nothing slides.
class SlidingBox : public Gtk::Box {
public:
    SlidingBox(Spring spring, int spacing);
    ~SlidingBox() override;

    /// What tells `line`, a child, from the others from now on, whichever widget draws it. A child
    /// without a key doesn't slide.
    void setKey(Gtk::Widget& line, std::string key);

protected:
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    [[nodiscard]] std::vector<SlidingPlaces::Line> lines() const;
    [[nodiscard]] Seconds frameTime() const;
    void draw(Gtk::Widget& line, const Glib::RefPtr<Gtk::Snapshot>& snapshot);
    void keepMoving();
    void rest();

    std::map<const Gtk::Widget*, std::string> keys_;
    SlidingPlaces places_;
    guint tick_ = 0;
    std::optional<Moving> moving_;  ///< while a line slides
};

}  // namespace orvu

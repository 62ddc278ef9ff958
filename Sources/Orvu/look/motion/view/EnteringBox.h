#pragma once

#include "look/motion/BlurFade.h"
#include "look/motion/view/SpringAnimation.h"

#include <gtkmm/box.h>

namespace orvu {

/// A box that comes in when it is mapped: it fades in, out of a blur or down from above. Only what is
/// drawn moves: for the pointer, and for what stands below, it is in its place at once.
class EnteringBox : public Gtk::Box {
public:
    struct Way {
        BlurFade blur{};     ///< none at 0
        double fromTop = 0;  ///< how far above it begins, in parts of its height
    };

    EnteringBox(Gtk::Orientation orientation, int spacing, Way way);

    /// Comes in anew.
    void enter();

protected:
    void on_map() override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    const Way way_;
    SpringAnimation progress_;
};

}  // namespace orvu

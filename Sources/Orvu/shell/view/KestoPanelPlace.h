#pragma once

#include "assistant/view/KestoPanelView.h"
#include "look/motion/view/SpringAnimation.h"
#include "shell/BrowserView.h"

#include <gtkmm/widget.h>

#include <memory>

namespace orvu {

/// The room at a window's right edge where the assistant's panel comes in and goes. The panel moves
/// and fades; the page beside it gets its new size once.
class KestoPanelPlace : public Gtk::Widget {
public:
    /// `view` must outlive the place.
    explicit KestoPanelPlace(BrowserView& view);
    ~KestoPanelPlace() override;

    [[nodiscard]] bool isOpen() const { return view_.kestoOpen.get(); }
    void focusField();
    /// Takes the panel out of sight, and nothing else, while something fills the window.
    void setHidden(bool hidden);

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    /// What lives as long as the panel is open, and fades a moment longer.
    struct Open {
        explicit Open(BrowserView& view);
        KestoPanel panel;
        KestoPanelView widget;
    };

    void openChanged();
    void step(double value);
    void drop();

    BrowserView& view_;
    std::unique_ptr<Open> open_;
    bool isHidden_ = false;
    SpringAnimation slide_;
};

}  // namespace orvu

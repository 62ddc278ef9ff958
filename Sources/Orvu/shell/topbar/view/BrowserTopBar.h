#pragma once

#include "foundation/text/Translation.h"
#include "shell/topbar/view/BrowserMenuButton.h"
#include "shell/topbar/view/BrowserNavButtons.h"
#include "shell/topbar/view/BrowserShelfMenu.h"
#include "shell/topbar/view/KestoButton.h"
#include "shell/topbar/view/WindowControls.h"
#include "site/downloads/view/DownloadsButton.h"
#include "update/view/UpdatePillView.h"

#include <gtkmm/box.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

namespace orvu {

/// The bar at the top of a window: the window's controls, the ways through pages, and the menus.
/// Its middle is left to the notch, which hangs over it.
class BrowserTopBar : public Gtk::Box {
public:
    /// `view` must outlive the bar.
    explicit BrowserTopBar(BrowserView& view);

    /// How wide what stands in the middle of `window` may be without covering anything here, in
    /// pixels; 0 if there is no room.
    [[nodiscard]] int roomInTheMiddle(const Gtk::Widget& window) const;
    /// Calls `slot` when that room changes, while the window is laid out.
    sigc::connection connectRoomChanged(const sigc::slot<void()>& slot) {
        return middle_.connectAllocated(slot);
    }

private:
    /// Takes what the others leave, and tells when that is anew.
    class Middle : public Gtk::Widget {
    public:
        sigc::connection connectAllocated(const sigc::slot<void()>& slot) {
            return allocated_.connect(slot);
        }

    protected:
        void size_allocate_vfunc(int, int, int) override { allocated_.emit(); }

    private:
        sigc::signal<void()> allocated_;
    };

    void addPrivateMark();

    WindowControls controls_;
    BrowserNavButtons navigation_;
    Middle middle_;
    Gtk::Box privateMark_;
    Gtk::Image eyeglasses_;
    Gtk::Label private_{phrase("Private").c_str()};
    UpdatePillView update_;
    DownloadsButton downloads_;
    BrowserShelfMenu shelf_;
    KestoButton kesto_;
    BrowserMenuButton menu_;
};

}  // namespace orvu

#pragma once

#include "look/drawing/NotchShape.h"
#include "look/view/FrameRefresh.h"
#include "look/motion/view/SpringAnimation.h"
#include "notch/AddressNotchBody.h"
#include "notch/view/NotchCommandBar.h"
#include "notch/view/NotchRestingView.h"
#include "core/ActiveTabWatch.h"

#include <functional>
#include <memory>

namespace orvu {

/// The address bar: a black tab that hangs from the middle of the window's top edge and opens
/// into the command bar. It has the room of the open bar all the time, and only what is drawn
/// grows and shrinks; beside the outline it is not there for the pointer.
class AddressNotchView : public Gtk::Widget {
public:
    static constexpr int openWidth = 780;
    static constexpr int restingWidth = 560;

    /// `notch`, `badge` and `services` must outlive the view. `badge` stands at the head
    /// of the closed notch. `restingRoom` gives how wide that may be, in pixels, in the room that
    /// the bar below leaves it.
    AddressNotchView(AddressNotch& notch, std::shared_ptr<BrowserStore> store,
                     AppServices& services, Gtk::Widget& badge, std::function<int()> restingRoom);
    ~AddressNotchView() override;

    /// Gives the open notch's field the keyboard, with all its text selected.
    void focusField();
    /// Takes the closed notch off the window, as while an element of the page fills it.
    void setHidden(bool hidden);

    /// Calls `slot` when the notch has just closed, and had the keyboard.
    sigc::connection connectEditingEnded(const sigc::slot<void()>& slot) {
        return editingEnded_.connect(slot);
    }
    /// Calls `slot` at each step of the motion with how far the notch is open, from 0 to 1.
    sigc::connection connectProgress(const sigc::slot<void(double)>& slot) {
        return progress_.connect(slot);
    }

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;
    bool contains_vfunc(double x, double y) const override;

private:
    /// What is drawn at this moment.
    struct Outline {
        double x = 0;  ///< of the left ear's end
        double width = 0;
        double height = 0;
        NotchShape shape;
    };

    [[nodiscard]] Outline outline() const;
    void notchChanged();
    void keepKeyboard();
    bool moveFocus(Gtk::DirectionType direction);
    void followTab();
    void showOpen();
    void showClosed();
    void refresh();
    void updateVisible();
    void step();
    void drawShape(const Glib::RefPtr<Gtk::Snapshot>& snapshot, const Outline& outline,
                   double open);

    AddressNotch& notch_;
    const std::shared_ptr<BrowserStore> store_;
    AppServices& services_;
    const std::function<int()> restingRoom_;
    NotchSnapshot snapshot_;
    std::unique_ptr<AddressNotchBody> body_;  ///< of the tab in front
    ScopedConnection bodyChanged_;
    NotchRestingView resting_;
    NotchCommandBar bar_;
    bool isOpen_ = false;
    bool isHidden_ = false;
    int barHeight_ = 0;     ///< that the command bar wants
    int restingSpace_ = 0;  ///< the width of the closed notch
    SpringAnimation open_;
    SpringAnimation height_;  ///< of the open notch
    FrameRefresh refresh_;
    ActiveTabWatch watch_;
    ScopedConnection bookmarksChanged_;
    ScopedConnection notchChanged_;
    sigc::signal<void()> editingEnded_;
    sigc::signal<void(double)> progress_;
};

}  // namespace orvu

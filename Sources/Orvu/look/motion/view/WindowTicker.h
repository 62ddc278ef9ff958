#pragma once

#include <gtkmm/root.h>
#include <gtkmm/widget.h>

#include <memory>
#include <vector>

namespace orvu {

/// Draws all that lives in one window anew, thirty times a second, in one turn of the main loop.
/// It sleeps while nothing in the window lives, while the window is minimised, and where
/// animations are switched off.
class WindowTicker : public sigc::trackable {
public:
    /// The one ticker of `window`; it lasts for as long as somebody holds it.
    [[nodiscard]] static std::shared_ptr<WindowTicker> of(GtkRoot* window);

    explicit WindowTicker(GtkRoot* window);
    WindowTicker(const WindowTicker&) = delete;
    WindowTicker& operator=(const WindowTicker&) = delete;
    ~WindowTicker();

    /// Begins to draw a mapped widget. It must be removed before it ends or is unmapped.
    void add(Gtk::Widget& widget);
    void remove(Gtk::Widget& widget);

    [[nodiscard]] bool isTicking() const { return timer_.connected(); }

private:
    /// Starts or stops the timer as the state of widgets, window and settings asks for.
    void update();
    [[nodiscard]] bool canBeSeen() const;
    bool tick();

    GtkRoot* window_;
    GdkSurface* surface_;
    gulong stateChanged_ = 0;
    std::vector<Gtk::Widget*> widgets_;
    sigc::connection timer_;
};

/// Whether the desktop's settings let things move.
[[nodiscard]] bool animationsEnabled();

}  // namespace orvu

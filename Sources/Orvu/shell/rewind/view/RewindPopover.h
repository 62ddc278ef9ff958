#pragma once

#include "foundation/Signal.h"
#include "shell/rewind/view/BrowserRewindView.h"

#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/popover.h>
#include <gtkmm/window.h>

#include <memory>

namespace orvu {

/// Shows the time line below the back button. It opens under a pointer that only passes by, so it
/// takes neither the pointer nor the keyboard from the window. It closes by a click beside it, by
/// Escape, when another window comes to the front, and when a visit was chosen.
class RewindPopover : public Gtk::Popover {
public:
    enum class Keyboard { stays, comes };

    explicit RewindPopover(std::shared_ptr<BrowserStore> store);
    ~RewindPopover() override;

    /// Shows it, if there was a visit today. `keyboard` says whether it takes the keyboard.
    void open(Keyboard keyboard);
    [[nodiscard]] bool isOpen() const { return window_ != nullptr; }

    /// Calls `slot` when it opened or closed.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }
    /// Calls `slot` when it closed while it had the keyboard.
    sigc::connection connectKeyboardLeft(const sigc::slot<void()>& slot) {
        return keyboardLeft_.connect(slot);
    }

private:
    void watch(Gtk::Window& window);
    void unwatch();
    bool keyPressed(guint key);
    void pressed();
    void ended();

    const std::shared_ptr<BrowserStore> store_;
    std::unique_ptr<BrowserRewindView> content_;  ///< of the last opening
    Gtk::Window* window_ = nullptr;               ///< the window around it, while it is open
    Glib::RefPtr<Gtk::EventControllerKey> keys_;
    Glib::RefPtr<Gtk::GestureClick> press_;
    ScopedConnection keyPressed_;
    ScopedConnection pressed_;
    ScopedConnection activity_;
    sigc::signal<void()> changed_;
    sigc::signal<void()> keyboardLeft_;
};

}  // namespace orvu

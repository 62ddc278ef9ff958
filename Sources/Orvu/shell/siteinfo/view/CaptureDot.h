#pragma once

#include "core/BrowserStore.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>

#include <memory>
#include <vector>

namespace orvu {

/// A red dot that is there while one of its tabs looks or listens; a press on it ends that. While it
/// is there its parent has the style class "captures".
class CaptureDot : public Gtk::Button {
public:
    CaptureDot();
    ~CaptureDot() override { notify_callbacks(); }

    /// From now on the dot is about these tabs.
    void watch(const BrowserStore::TabList& tabs);
    /// Calls `slot` when the dot goes while it has the keyboard.
    sigc::connection connectKeyboardFree(const sigc::slot<void()>& slot) {
        return keyboardFree_.connect(slot);
    }

private:
    struct Watched {
        std::weak_ptr<BrowserTab> tab;
        ScopedConnection changed;
    };

    [[nodiscard]] bool isAbout(const BrowserStore::TabList& tabs) const;
    void refresh();
    void stop();

    Gtk::Box mark_;
    std::vector<Watched> watched_;
    ActiveCapture shown_;
    sigc::signal<void()> keyboardFree_;
};

}  // namespace orvu

#pragma once

#include <sigc++/sigc++.h>

namespace orvu {

/// The one window of the settings.
class SettingsWindow {
public:
    virtual ~SettingsWindow() = default;

    /// Brings the window to the front; makes it the first time, with `makeDefault` as what makes this
    /// program the one that opens web addresses. That of a later call counts for nothing.
    virtual void show(const sigc::slot<void()>& makeDefault) = 0;
};

}  // namespace orvu

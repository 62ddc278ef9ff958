#pragma once

#include <sigc++/sigc++.h>

namespace orvu {

/// The one window of the settings.
class SettingsWindow {
public:
    virtual ~SettingsWindow() = default;

    /// What the program does beyond the settings.
    struct Actions {
        sigc::slot<void()> makeDefault;  ///< makes it the one that opens web addresses
        sigc::slot<void()> restart;      ///< asks the pages and lets an update take its place
    };

    /// Brings the window to the front; makes it the first time, with these actions. Those of a later
    /// call count for nothing.
    virtual void show(const Actions& actions) = 0;
};

}  // namespace orvu

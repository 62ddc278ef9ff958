#pragma once

#include <sigc++/sigc++.h>

namespace orvu {

/// The one window of the first run.
class OnboardingWindow {
public:
    virtual ~OnboardingWindow() = default;

    /// Shows the window unless a first run was finished before. `makeDefault` makes this program the
    /// one that opens web addresses.
    virtual void showIfNeeded(const sigc::slot<void()>& makeDefault) = 0;
};

}  // namespace orvu

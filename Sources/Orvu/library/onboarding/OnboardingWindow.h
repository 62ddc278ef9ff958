#pragma once

#include "library/onboarding/OnboardingView.h"

namespace orvu {

/// The one window of the first run.
class OnboardingWindow {
public:
    using MakeDefault = OnboardingView::MakeDefault;

    virtual ~OnboardingWindow() = default;

    /// Shows the window unless a first run was finished before.
    virtual void showIfNeeded(const MakeDefault& makeDefault) = 0;
};

}  // namespace orvu

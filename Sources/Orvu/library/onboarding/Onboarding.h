#pragma once

#include "import/ImportWindow.h"
#include "library/onboarding/OnboardingView.h"
#include "profiles/Settings.h"

#include <sigc++/sigc++.h>

#include <memory>

namespace orvu {

/// The first run: whether it is still due, and how it ends. A window that is closed before the end
/// leaves it due.
class Onboarding {
public:
    /// Both must outlive this, and the views that it begins.
    Onboarding(Settings& settings, ImportWindow& import) : settings_(settings), import_(import) {}

    [[nodiscard]] bool isNeeded() const { return !settings_.onboarded.get(); }
    /// What a window shows; null where the first run isn't due. `close` closes that window; it may
    /// end the view.
    [[nodiscard]] std::unique_ptr<OnboardingView> begin(OnboardingView::MakeDefault makeDefault,
                                                        const sigc::slot<void()>& close) const;

private:
    Settings& settings_;
    ImportWindow& import_;
};

}  // namespace orvu

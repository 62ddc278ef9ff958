#include "library/onboarding/Onboarding.h"

#include <utility>

namespace orvu {

std::unique_ptr<OnboardingView> Onboarding::begin(OnboardingView::MakeDefault makeDefault,
                                                  const sigc::slot<void()>& close) const {
    if (!isNeeded()) return nullptr;
    const auto done = [&onboarded = settings_.onboarded, close] {
        onboarded.set(true);
        close();
    };
    return std::make_unique<OnboardingView>(import_, std::move(makeDefault), done);
}

}  // namespace orvu

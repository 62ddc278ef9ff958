#include "library/onboarding/OnboardingView.h"

#include "foundation/text/Translation.h"

#include <cstddef>
#include <utility>

namespace orvu {

OnboardingView::OnboardingView(ImportWindow& import, MakeDefault makeDefault,
                               sigc::slot<void()> done)
    : import_(import), makeDefault_(std::move(makeDefault)), done_(std::move(done)) {}

const OnboardingView::Texts& OnboardingView::shown() const {
    return texts.at(static_cast<std::size_t>(step.get()));
}

std::array<OnboardingView::Mark, 3> OnboardingView::marks() const {
    constexpr int current = 26;
    const auto mark = [at = step.get()](int number) {
        return Mark{number == at ? current : Mark::height, number <= at};
    };
    return {mark(welcome), mark(importer), mark(finish)};
}

std::string_view OnboardingView::mainTitle() const {
    return step.get() == finish ? phrase("Start browsing") : phrase("Continue");
}

void OnboardingView::back() {
    if (hasBack()) step.set(step.get() - 1);
}

void OnboardingView::advance() {
    if (step.get() == finish) {
        const auto done = done_;  // it may end this
        return done();
    }
    message.set(std::nullopt);
    step.set(step.get() + 1);
}

void OnboardingView::press() {
    if (step.get() == importer) import_.show(std::nullopt);
    if (step.get() != finish) return;
    const std::string said = makeDefault_();
    message.set(said.empty() ? std::nullopt : std::optional{said});
}

}  // namespace orvu

#include "shell/onboarding/view/OnboardingWindowView.h"

#include <string>
#include <utility>

namespace orvu {

void OnboardingWindowView::showIfNeeded(const MakeDefault& makeDefault) {
    auto onboarding = onboarding_.begin(makeDefault, [this] { window_->close(); });
    if (!onboarding) return;
    auto* const below = application_.get_active_window();
    window_ = std::make_unique<Window>();
    application_.add_window(*window_);
    // A window over another stands in its middle, which no program can ask for everywhere.
    if (below) window_->set_transient_for(*below);
    window_->show(std::move(onboarding));
    window_->present();
}

OnboardingWindowView::Window::Window()
    : ToolWindow({.title = std::string{OnboardingView::title},
                  .width = OnboardingView::width,
                  .height = OnboardingView::height,
                  .cssClass = "onboarding",
                  .showsTitle = false,
                  .movesByBackground = true}) {}

void OnboardingWindowView::Window::show(std::unique_ptr<OnboardingView> onboarding) {
    form_ = std::make_unique<OnboardingForm>(std::move(onboarding));
    setContent(*form_);
    set_default_widget(form_->mainButton());
    form_->mainButton().grab_focus();
}

}  // namespace orvu

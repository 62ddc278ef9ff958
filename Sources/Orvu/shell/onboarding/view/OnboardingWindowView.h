#pragma once

#include "library/onboarding/Onboarding.h"
#include "library/onboarding/OnboardingWindow.h"
#include "shell/onboarding/view/OnboardingForm.h"
#include "shell/view/ToolWindow.h"

#include <gtkmm/application.h>

#include <memory>

namespace orvu {

/// The window of the first run on this desktop. Closed before the end, it comes again at the next
/// start.
class OnboardingWindowView : public OnboardingWindow {
public:
    /// All must outlive the window.
    OnboardingWindowView(Gtk::Application& application, Settings& settings, ImportWindow& import)
        : application_(application), onboarding_(settings, import) {}

    void showIfNeeded(const MakeDefault& makeDefault) override;

private:
    class Window : public ToolWindow {
    public:
        Window();
        Window(const Window&) = delete;
        Window& operator=(const Window&) = delete;
        ~Window() override { unset_default_widget(); }

        void show(std::unique_ptr<OnboardingView> onboarding);

    private:
        std::unique_ptr<OnboardingForm> form_;
    };

    Gtk::Application& application_;
    const Onboarding onboarding_;
    std::unique_ptr<Window> window_;
};

}  // namespace orvu

#pragma once

#include "library/onboarding/OnboardingView.h"
#include "look/layout/view/MaximumWidth.h"
#include "look/motion/view/EnteringBox.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <array>
#include <memory>

namespace orvu {

/// What stands in the window of the first run: one step, which comes in as it is reached, and below it
/// the marks of all and the buttons that go on and back.
class OnboardingForm : public Gtk::Box {
public:
    explicit OnboardingForm(std::unique_ptr<OnboardingView> onboarding);
    ~OnboardingForm() override { notify_callbacks(); }

    /// What Return presses.
    [[nodiscard]] Gtk::Button& mainButton() { return main_; }

private:
    void addFoot();
    void showStep();
    void showMarks();
    void showMessage();
    void addWelcome(const OnboardingView::Texts& texts);
    void addOffer(const OnboardingView::Texts& texts);

    const std::unique_ptr<OnboardingView> onboarding_;
    std::unique_ptr<MaximumWidth> welcomeText_;  ///< of the first step
    std::unique_ptr<EnteringBox> step_;
    Gtk::Label message_;
    Gtk::Box foot_;
    Gtk::Box marks_;
    std::array<Gtk::Box, 3> markBoxes_;
    Gtk::Box buttons_;
    Gtk::Button back_;
    Gtk::Button main_;
};

}  // namespace orvu

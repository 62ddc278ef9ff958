#include "shell/onboarding/view/OnboardingForm.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/BloomMarkView.h"
#include "look/view/Children.h"
#include "look/view/CssClass.h"
#include "look/view/Keyboard.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace orvu {
namespace {

constexpr double blurOfComing = 6;  // pixels

Gtk::Label& makeLabel(std::string_view text, const char* style) {
    auto& label = *Gtk::make_managed<Gtk::Label>(std::string{text});
    label.add_css_class(style);
    label.set_wrap(true);
    label.set_justify(Gtk::Justification::CENTER);
    return label;
}

}  // namespace

OnboardingForm::OnboardingForm(std::unique_ptr<OnboardingView> onboarding)
    : Gtk::Box(Gtk::Orientation::VERTICAL), onboarding_(std::move(onboarding)) {
    add_css_class("onboarding-form");
    addFoot();
    message_.add_css_class("onboarding-message");
    message_.set_wrap(true);
    message_.set_justify(Gtk::Justification::CENTER);
    onboarding_->step.connectChanged(sigc::mem_fun(*this, &OnboardingForm::showStep));
    onboarding_->message.connectChanged(sigc::mem_fun(*this, &OnboardingForm::showMessage));
    showStep();
}

void OnboardingForm::addFoot() {
    marks_.add_css_class("onboarding-marks");
    marks_.set_valign(Gtk::Align::CENTER);
    marks_.set_hexpand(true);
    marks_.property_accessible_role() = Gtk::Accessible::Role::IMG;
    for (auto& mark : markBoxes_) {
        mark.add_css_class("onboarding-mark");
        marks_.append(mark);
    }
    back_.set_label(std::string{OnboardingView::backTitle});
    back_.add_css_class("pill");
    back_.add_css_class("plain");
    back_.signal_clicked().connect([this] { onboarding_->back(); });
    main_.add_css_class("pill");
    main_.add_css_class("prominent");
    main_.signal_clicked().connect([this] { onboarding_->advance(); });
    buttons_.add_css_class("onboarding-buttons");
    foot_.add_css_class("onboarding-foot");
    foot_.append(marks_);
    foot_.append(buttons_);
    append(foot_);
}

void OnboardingForm::showStep() {
    if (step_) remove(*step_);
    step_ = std::make_unique<EnteringBox>(Gtk::Orientation::VERTICAL, 0,
                                          EnteringBox::Way{.blur = {blurOfComing}});
    step_->add_css_class("onboarding-step");
    step_->set_vexpand(true);
    const auto& texts = onboarding_->shown();
    step_->property_accessible_role() = Gtk::Accessible::Role::GROUP;
    setAccessibleLabel(*step_, texts.heading);
    if (onboarding_->step.get() == OnboardingView::welcome) {
        addWelcome(texts);
    } else {
        addOffer(texts);
    }
    prepend(*step_);
    showMarks();
    main_.set_label(std::string{onboarding_->mainTitle()});
    // The keyboard goes on before what has it may go.
    if (!onboarding_->hasBack() || !holdsKeyboard(back_)) main_.grab_focus();
    setChildren(buttons_, onboarding_->hasBack() ? std::vector<Gtk::Widget*>{&back_, &main_}
                                                 : std::vector<Gtk::Widget*>{&main_});
}

void OnboardingForm::addWelcome(const OnboardingView::Texts& texts) {
    auto& column = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
    column.set_valign(Gtk::Align::CENTER);
    column.set_vexpand(true);
    auto& mark = *Gtk::make_managed<BloomMarkView>(OnboardingView::markFrame);
    mark.set_halign(Gtk::Align::CENTER);
    column.append(mark);
    column.append(makeLabel(texts.heading, "onboarding-name"));
    welcomeText_ = std::make_unique<MaximumWidth>(makeLabel(texts.text, "onboarding-welcome"),
                                                  OnboardingView::welcomeTextWidth);
    column.append(*welcomeText_);
    step_->append(column);
}

void OnboardingForm::addOffer(const OnboardingView::Texts& texts) {
    auto& column = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
    column.add_css_class("onboarding-offer");
    column.set_valign(Gtk::Align::CENTER);
    column.set_vexpand(true);
    column.append(makeLabel(texts.heading, "onboarding-heading"));
    if (!texts.line.empty()) column.append(makeLabel(texts.line, "onboarding-line"));
    column.append(makeLabel(texts.text, "onboarding-text"));
    auto& button = *Gtk::make_managed<Gtk::Button>(texts.button.c_str());
    button.add_css_class("pill");
    button.add_css_class("prominent");
    button.set_halign(Gtk::Align::CENTER);
    button.signal_clicked().connect([this] { onboarding_->press(); });
    column.append(button);
    if (!texts.caption.empty()) column.append(makeLabel(texts.caption, "onboarding-caption"));
    step_->append(column);
    showMessage();
}

void OnboardingForm::showMessage() {
    const auto message = onboarding_->message.get();
    auto* const place = dynamic_cast<Gtk::Box*>(message_.get_parent());
    if (place) place->remove(message_);
    if (!message || onboarding_->step.get() != OnboardingView::finish) return;
    message_.set_text(*message);
    dynamic_cast<Gtk::Box&>(*step_->get_first_child()).append(message_);
}

void OnboardingForm::showMarks() {
    const auto marks = onboarding_->marks();
    for (std::size_t i = 0; i < marks.size(); ++i) {
        setCssClass(markBoxes_[i], "reached", marks[i].isReached);
        setCssClass(markBoxes_[i], "current", marks[i].width > OnboardingView::Mark::height);
    }
    setAccessibleLabel(marks_, tr("Step {1} of {2}", std::to_string(onboarding_->step.get() + 1),
                                  std::to_string(marks.size())));
}

}  // namespace orvu

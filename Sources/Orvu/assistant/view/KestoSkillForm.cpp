#include "assistant/view/KestoSkillForm.h"

#include "assistant/view/KestoText.h"
#include "look/view/Accessible.h"

#include <gtkmm/textbuffer.h>

namespace orvu {
namespace {

constexpr int spacing = 8;
constexpr int instructionHeight = 72;  // points; more scrolls

}  // namespace

KestoSkillForm::KestoSkillForm(KestoPanel& panel)
    : Gtk::Box(Gtk::Orientation::VERTICAL, spacing),
      panel_(panel),
      nameLine_(Gtk::Orientation::HORIZONTAL, spacing),
      buttons_(Gtk::Orientation::HORIZONTAL, spacing),
      cancel_(std::string{KestoPanel::cancelTitle}),
      save_(std::string{KestoPanel::saveTitle}) {
    add_css_class("kesto-menu");
    auto* const heading = Gtk::make_managed<Gtk::Label>(std::string{KestoPanel::formTitle});
    heading->add_css_class("kesto-heading");
    heading->set_xalign(0);
    append(*heading);
    addName();
    addInstruction();
    addButtons();
    refresh();
}

void KestoSkillForm::addName() {
    auto* const slash = Gtk::make_managed<Gtk::Label>("/");
    slash->add_css_class("kesto-skill-name");
    hideFromAccessibility(*slash);
    nameLine_.append(*slash);
    name_.add_css_class("kesto-field");
    name_.set_placeholder_text(std::string{KestoPanel::namePrompt});
    setAccessibleLabel(name_, std::string{KestoPanel::namePrompt});
    name_.set_hexpand(true);
    name_.set_width_chars(1);
    name_.signal_changed().connect([this] { panel_.skillName.set(name_.get_text().raw()); });
    name_.signal_activate().connect([this] { instruction_.grab_focus(); });
    nameLine_.append(name_);
    append(nameLine_);
}

void KestoSkillForm::addInstruction() {
    instruction_.add_css_class("kesto-text");
    instruction_.set_wrap_mode(Gtk::WrapMode::WORD_CHAR);
    instruction_.set_accepts_tab(false);
    setAccessibleLabel(instruction_, std::string{KestoPanel::instructionPrompt});
    instruction_.get_buffer()->signal_changed().connect(
        sigc::track_object([this] { panel_.skillInstruction.set(instruction()); }, *this));
    scroller_.add_css_class("kesto-field");
    scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroller_.set_min_content_height(instructionHeight);
    scroller_.set_max_content_height(instructionHeight);
    scroller_.set_child(instruction_);
    nameScrollBars(scroller_);
    field_.set_child(scroller_);
    prompt_.set_text(std::string{KestoPanel::instructionPrompt});
    wrapText(prompt_);
    prompt_.add_css_class("kesto-prompt");
    prompt_.set_valign(Gtk::Align::START);
    prompt_.set_can_target(false);
    hideFromAccessibility(prompt_);
    field_.add_overlay(prompt_);
    append(field_);
}

void KestoSkillForm::addButtons() {
    cancel_.add_css_class("pill");
    cancel_.add_css_class("plain");
    save_.add_css_class("pill");
    save_.add_css_class("prominent");
    cancel_.signal_clicked().connect([this] { panel_.makingSkill.set(false); });
    save_.signal_clicked().connect([this] { panel_.saveSkill(); });
    buttons_.set_halign(Gtk::Align::END);
    buttons_.append(cancel_);
    buttons_.append(save_);
    append(buttons_);
}

std::string KestoSkillForm::instruction() const {
    return const_cast<Gtk::TextView&>(instruction_).get_buffer()->get_text().raw();
}

void KestoSkillForm::refresh() {
    if (name_.get_text().raw() != panel_.skillName.get()) name_.set_text(panel_.skillName.get());
    if (instruction() != panel_.skillInstruction.get()) {
        instruction_.get_buffer()->set_text(panel_.skillInstruction.get());
    }
    prompt_.set_visible(panel_.skillInstruction.get().empty());
    save_.set_sensitive(panel_.canSaveSkill());
}

}  // namespace orvu

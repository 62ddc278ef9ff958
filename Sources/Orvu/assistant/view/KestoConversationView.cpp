#include "assistant/view/KestoConversationView.h"

#include "assistant/view/KestoSkillRow.h"
#include "assistant/view/KestoText.h"
#include "look/text/PlatformText.h"
#include "look/view/Accessible.h"

#include <gtkmm/adjustment.h>

namespace orvu {
namespace {

constexpr int spacing = 12;

void setText(Gtk::Label& label, const std::string& text) {
    if (label.get_text().raw() != text) label.set_text(text);
}

}  // namespace

KestoConversationView::KestoConversationView(KestoPanel& panel)
    : panel_(panel),
      lines_(Gtk::Orientation::VERTICAL, spacing),
      greeting_(Gtk::Orientation::VERTICAL, spacing),
      talk_(Gtk::Orientation::VERTICAL, spacing) {
    add_css_class("kesto-conversation");
    set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    set_vexpand(true);
    lines_.add_css_class("kesto-lines");
    lines_.append(greeting_);
    lines_.append(talk_);
    set_child(lines_);
    nameScrollBars(*this);
    addGreeting();
    addReply();
    refresh();
}

void KestoConversationView::addGreeting() {
    intro_.add_css_class("kesto-intro");
    missing_.add_css_class("kesto-amber");
    missing_.property_accessible_role() = Gtk::Accessible::Role::STATUS;
    for (auto* const label : {&intro_, &missing_}) {
        wrapText(*label);
        greeting_.append(*label);
    }
    for (std::size_t each = 0; each < KestoPanel::greetingSkills; ++each) {
        greeting_.append(*Gtk::make_managed<KestoSkillRow>(panel_, SkillStore::builtIn()[each]));
    }
}

void KestoConversationView::addReply() {
    wrapText(question_);
    question_.add_css_class("kesto-question");
    question_.set_halign(Gtk::Align::END);
    question_.set_max_width_chars(32);
    question_.set_hexpand(false);
    wrapText(error_);
    error_.add_css_class("kesto-amber");
    error_.property_accessible_role() = Gtk::Accessible::Role::ALERT;
    wrapText(answer_);
    answer_.add_css_class("kesto-answer");
    answer_.set_selectable(true);
    talk_.append(question_);
    talk_.append(dots_);
    talk_.append(error_);
    talk_.append(answer_);
    talk_.append(sources_);
}

void KestoConversationView::refresh() {
    const bool greets = panel_.lastQuestion().empty();
    greeting_.set_visible(greets);
    talk_.set_visible(!greets);
    if (greets) {
        refreshGreeting();
    } else {
        refreshReply();
    }
}

void KestoConversationView::refreshGreeting() {
    setText(intro_, platformText(panel_.intro()));
    const auto missing = panel_.kesto().unavailableReason();
    missing_.set_visible(missing.has_value());
    setText(missing_, platformText(missing.value_or("")));
}

void KestoConversationView::refreshReply() {
    using Reply = KestoPanel::Reply;
    const Kesto& kesto = panel_.kesto();
    if (question_.get_text().raw() != panel_.lastQuestion()) {
        question_.set_text(panel_.lastQuestion());
        get_vadjustment()->set_value(0);
    }
    const auto reply = panel_.reply();
    dots_.set_visible(reply == Reply::dots);
    error_.set_visible(reply == Reply::error);
    answer_.set_visible(reply == Reply::answer);
    sources_.set_visible(reply == Reply::answer && !kesto.sources().empty());
    if (reply == Reply::error) setText(error_, platformText(kesto.phase().message));
    if (reply != Reply::answer) return;
    setText(answer_, kesto.answer());
    sources_.setTexts(kesto.sources());
}

}  // namespace orvu

#include "assistant/view/KestoConversationView.h"

#include "assistant/view/KestoSkillRow.h"
#include "assistant/view/KestoText.h"
#include "look/view/Accessible.h"
#include "look/view/Children.h"

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
      skills_(Gtk::Orientation::VERTICAL, spacing) {
    add_css_class("kesto-conversation");
    set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    set_vexpand(true);
    lines_.add_css_class("kesto-lines");
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
    for (auto* const label : {&intro_, &missing_}) wrapText(*label);
    for (std::size_t each = 0; each < KestoPanel::greetingSkills; ++each) {
        skills_.append(*Gtk::make_managed<KestoSkillRow>(panel_, SkillStore::builtIn()[each]));
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
}

void KestoConversationView::refresh() {
    if (panel_.lastQuestion().empty()) {
        refreshGreeting();
    } else {
        refreshReply();
    }
}

void KestoConversationView::refreshGreeting() {
    setText(intro_, panel_.intro());
    const auto missing = panel_.kesto().unavailableReason();
    setText(missing_, missing.value_or(""));
    if (missing) {
        setChildren(lines_, {&intro_, &missing_, &skills_});
    } else {
        setChildren(lines_, {&intro_, &skills_});
    }
}

void KestoConversationView::refreshReply() {
    using Reply = KestoPanel::Reply;
    const Kesto& kesto = panel_.kesto();
    if (question_.get_text().raw() != panel_.lastQuestion()) {
        question_.set_text(panel_.lastQuestion());
        get_vadjustment()->set_value(0);
    }
    switch (panel_.reply()) {
        case Reply::dots:
            setChildren(lines_, {&question_, &dots_});
            break;
        case Reply::error:
            setText(error_, kesto.phase().message);
            setChildren(lines_, {&question_, &error_});
            break;
        case Reply::answer:
            setText(answer_, kesto.answer());
            sources_.setTexts(kesto.sources());
            if (kesto.sources().empty()) {
                setChildren(lines_, {&question_, &answer_});
            } else {
                setChildren(lines_, {&question_, &answer_, &sources_});
            }
            break;
    }
}

}  // namespace orvu

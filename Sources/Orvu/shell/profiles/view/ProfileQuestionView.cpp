#include "shell/profiles/view/ProfileQuestionView.h"

#include <string>

namespace orvu {
namespace {

using Answer = ProfileSwitcher::Question::Answer;

constexpr int charactersOfCard = 44;

void setUp(Gtk::Label& label, const std::string& text, const char* style) {
    label.set_text(text);
    label.add_css_class(style);
    label.set_xalign(0);
    label.set_wrap(true);
    label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    label.set_max_width_chars(charactersOfCard);
}

}  // namespace

ProfileQuestionView::ProfileQuestionView(ProfileSwitcher& switcher,
                                         const ProfileSwitcher::Question& question)
    : Gtk::Box(Gtk::Orientation::VERTICAL) {
    add_css_class("profile-question");
    set_hexpand(true);
    setUp(message_, question.message, "sheet-question");
    setUp(text_, question.text, "sheet-text");
    append(message_);
    append(text_);
    const auto add = [&](Gtk::Button& button, Answer answer) {
        button.set_label(std::string{question.buttons[static_cast<std::size_t>(answer)]});
        button.add_css_class("sheet-button");
        button.signal_clicked().connect([&switcher, answer] { switcher.answer(answer); });
        buttons_.append(button);
    };
    add(cancel_, Answer::cancel);
    add(remove_, Answer::remove);
    remove_.add_css_class("destructive");
    buttons_.add_css_class("sheet-buttons");
    buttons_.set_halign(Gtk::Align::END);
    append(buttons_);
}

}  // namespace orvu

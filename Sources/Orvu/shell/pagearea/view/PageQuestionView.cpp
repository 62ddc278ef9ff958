#include "shell/pagearea/view/PageQuestionView.h"

#include "look/view/Accessible.h"
#include "look/view/Keyboard.h"
#include "look/view/SymbolImage.h"

#include <glibmm/main.h>

namespace orvu {
namespace {

constexpr int symbolSize = 15;
constexpr int width = 320;
constexpr unsigned armingTime = 500;  // milliseconds

}  // namespace

PageQuestionView::PageQuestionView() : Gtk::Box(Gtk::Orientation::VERTICAL) {
    add_css_class("page-question");
    property_accessible_role() = Gtk::Accessible::Role::ALERT;
    set_halign(Gtk::Align::START);
    set_valign(Gtk::Align::START);
    set_size_request(width, -1);
    set_visible(false);
    line_.add_css_class("question-line");
    symbol_.set_valign(Gtk::Align::START);
    line_.append(symbol_);
    text_.set_wrap(true);
    text_.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    text_.set_max_width_chars(1);  // as wide as the card, not as the text
    text_.set_hexpand(true);
    text_.set_xalign(0);
    line_.append(text_);
    append(line_);
    addAnswers();
}

void PageQuestionView::addAnswers() {
    answers_.add_css_class("question-line");
    answers_.set_halign(Gtk::Align::END);
    for (auto* const button : {&refuse_, &allow_}) {
        button->add_css_class("question-answer");
        button->set_focus_on_click(false);
        answers_.append(*button);
    }
    refuse_.set_label(std::string{PageQuestion::refuse});
    refuse_.signal_clicked().connect([this] { answer(PageAnswer::refuse); });
    allow_.add_css_class("suggested");
    allow_.set_label(std::string{PageQuestion::allow});
    allow_.signal_clicked().connect([this] { answer(PageAnswer::allow); });
    append(answers_);
}

void PageQuestionView::show(const std::shared_ptr<BrowserTab>& tab) {
    const bool otherTab = tab != tab_.lock();
    tab_ = tab;
    const auto question = tab ? tab->question() : std::nullopt;
    if (question == shown_ && !otherTab) return;
    shown_ = question;
    const bool keyboardGoes = !question && holdsKeyboard(*this);
    if (question) draw(*question);
    set_visible(question.has_value());
    if (keyboardGoes) keyboardFree_.emit();
}

void PageQuestionView::draw(const PageQuestion& question) {
    setSymbol(symbol_, question.symbol, symbolSize);
    text_.set_text(question.text);
    setAccessibleLabel(*this, question.text);
    allow_.set_sensitive(false);
    arming_.disconnect();
    arming_ = Glib::signal_timeout().connect(sigc::track_object(
                                                 [this] {
                                                     allow_.set_sensitive(true);
                                                     return false;
                                                 },
                                                 *this),
                                             armingTime);
}

void PageQuestionView::answer(PageAnswer answer) {
    const auto tab = tab_.lock();
    if (tab && shown_) tab->answer(PageQuestion{*shown_}, answer);
}

}  // namespace orvu

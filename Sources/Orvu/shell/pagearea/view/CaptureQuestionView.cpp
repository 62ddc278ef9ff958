#include "shell/pagearea/view/CaptureQuestionView.h"

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

CaptureQuestionView::CaptureQuestionView() : Gtk::Box(Gtk::Orientation::VERTICAL) {
    add_css_class("capture-question");
    property_accessible_role() = Gtk::Accessible::Role::ALERT;
    set_halign(Gtk::Align::START);
    set_valign(Gtk::Align::START);
    set_size_request(width, -1);
    set_visible(false);
    line_.add_css_class("capture-line");
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

void CaptureQuestionView::addAnswers() {
    answers_.add_css_class("capture-line");
    answers_.set_halign(Gtk::Align::END);
    for (auto* const button : {&refuse_, &allow_}) {
        button->add_css_class("capture-answer");
        button->set_focus_on_click(false);
        answers_.append(*button);
    }
    refuse_.set_label(std::string{CaptureQuestion::refuse});
    refuse_.signal_clicked().connect([this] { answer(CaptureAnswer::refuse); });
    allow_.add_css_class("suggested");
    allow_.set_label(std::string{CaptureQuestion::allow});
    allow_.signal_clicked().connect([this] { answer(CaptureAnswer::allow); });
    append(answers_);
}

void CaptureQuestionView::show(const std::shared_ptr<BrowserTab>& tab) {
    const bool otherTab = tab != tab_.lock();
    tab_ = tab;
    const auto question = tab ? tab->captureQuestion() : std::nullopt;
    if (question == shown_ && !otherTab) return;
    shown_ = question;
    const bool keyboardGoes = !question && holdsKeyboard(*this);
    if (question) draw(*question);
    set_visible(question.has_value());
    if (keyboardGoes) keyboardFree_.emit();
}

void CaptureQuestionView::draw(const CaptureQuestion& question) {
    const std::string text = question.text();
    setSymbol(symbol_, question.symbol(), symbolSize);
    text_.set_text(text);
    setAccessibleLabel(*this, text);
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

void CaptureQuestionView::answer(CaptureAnswer answer) {
    if (const auto tab = tab_.lock()) tab->answerCapture(answer);
}

}  // namespace orvu

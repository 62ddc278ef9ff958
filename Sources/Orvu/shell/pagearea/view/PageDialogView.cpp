#include "shell/pagearea/view/PageDialogView.h"

#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/Keyboard.h"
#include "look/view/SymbolImage.h"

#include <glibmm/main.h>
#include <gtkmm/adjustment.h>
#include <gtkmm/eventcontrollerkey.h>

#include <utility>

namespace orvu {
namespace {

using Kind = PageDialog::Kind;

constexpr int symbolSize = 15;
constexpr int cardWidth = 420;
constexpr int charactersOfCard = 46;
constexpr int longestMessage = 220;   // points; more scrolls
constexpr unsigned armingTime = 500;  // milliseconds

void setUp(Gtk::Label& label, const char* style) {
    label.add_css_class(style);
    label.set_xalign(0);
    label.set_wrap(true);
    label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    label.set_max_width_chars(1);  // as wide as the card, not as the text
    label.set_hexpand(true);
}

void setText(Gtk::Label& label, const std::string& text) {
    label.set_text(text);
    label.set_visible(!text.empty());
}

}  // namespace

PageDialogView::PageDialogView(Gtk::Widget& over)
    : Gtk::Box(Gtk::Orientation::VERTICAL),
      card_(Gtk::Orientation::VERTICAL),
      place_(card_, cardWidth),
      refresh_(over, [this] { refresh(); }) {
    add_css_class("page-dialogs");
    set_visible(false);
    card_.add_css_class("page-dialog");
    card_.set_focusable(true);
    card_.property_accessible_role() = Gtk::Accessible::Role::ALERT;
    place_.set_expand(true);
    place_.set_valign(Gtk::Align::CENTER);
    append(place_);
    addHeading();
    addMessage();
    addFields();
    addAnswers();
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(sigc::mem_fun(*this, &PageDialogView::keyPressed), false);
    add_controller(keys);
}

void PageDialogView::addHeading() {
    heading_.add_css_class("page-dialog-heading");
    setSymbol(symbol_, "globe", symbolSize);
    symbol_.set_valign(Gtk::Align::CENTER);
    heading_.append(symbol_);
    asker_.add_css_class("page-dialog-asker");
    asker_.set_xalign(0);
    asker_.set_hexpand(true);
    asker_.set_max_width_chars(1);
    asker_.set_ellipsize(Pango::EllipsizeMode::START);  // the end tells whose it is
    heading_.append(asker_);
    card_.append(heading_);
    setUp(caption_, "page-dialog-caption");
    card_.append(caption_);
}

void PageDialogView::addMessage() {
    setUp(message_, "page-dialog-message");
    // How high the words are is asked before how wide the card is.
    message_.set_max_width_chars(charactersOfCard);
    message_.set_valign(Gtk::Align::START);
    scroller_.add_css_class("page-dialog-words");
    scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroller_.set_propagate_natural_height(true);
    scroller_.set_max_content_height(longestMessage);
    scroller_.set_child(message_);
    nameScrollBars(scroller_);
    card_.append(scroller_);
    setUp(warning_, "page-dialog-warning");
    card_.append(warning_);
}

void PageDialogView::addFields() {
    for (auto* const field : {&field_, &password_}) {
        field->add_css_class("page-dialog-field");
        field->set_width_chars(1);
        card_.append(*field);
    }
    password_.set_visibility(false);
    password_.set_input_purpose(Gtk::InputPurpose::PASSWORD);
    password_.set_placeholder_text(std::string{PageDialogText::password});
    setAccessibleLabel(password_, std::string{PageDialogText::password});
}

void PageDialogView::addAnswers() {
    answers_.add_css_class("page-dialog-answers");
    silence_.set_label(std::string{PageDialogText::silence});
    silence_.signal_clicked().connect(sigc::mem_fun(*this, &PageDialogView::silence));
    silence_.set_halign(Gtk::Align::START);
    silence_.add_css_class("quiet");
    cancel_.signal_clicked().connect(sigc::mem_fun(*this, &PageDialogView::cancel));
    cancel_.set_halign(Gtk::Align::END);
    cancel_.set_hexpand(true);
    accept_.signal_clicked().connect(sigc::mem_fun(*this, &PageDialogView::accept));
    accept_.set_halign(Gtk::Align::END);
    for (auto* const button : {&cancel_, &accept_, &silence_}) {
        button->add_css_class("page-dialog-answer");
    }
    answers_.append(cancel_);
    answers_.append(accept_);
    card_.append(answers_);
    card_.append(silence_);
}

void PageDialogView::show(const std::shared_ptr<BrowserTab>& tab) {
    if (tab != tab_.lock()) {
        tab_ = tab;
        isOtherTab_ = true;
        dialogsChanged_ = tab ? tab->webView().dialogs().connectChanged(
                                    sigc::mem_fun(refresh_, &FrameRefresh::mark))
                              : sigc::connection{};
    }
    refresh();
}

void PageDialogView::refresh() {
    const auto tab = tab_.lock();
    const auto* const asked = tab ? tab->webView().dialogs().current() : nullptr;
    const auto id = asked ? asked->id : 0;
    if (!std::exchange(isOtherTab_, false) && id == shown_) return;
    const bool wasShown = isShown();
    shown_ = id;
    if (asked) draw(*asked);
    if (wasShown != isShown()) {
        changed_.emit();
    } else if (holdsKeyboard(*this)) {
        focusCard();
    }
}

void PageDialogView::draw(const PageDialogs::Shown& asked) {
    const auto text = PageDialogText::of(asked.dialog);
    asker_.set_text(text.asker);
    asker_.set_tooltip_text(text.asker);
    caption_.set_text(text.caption);
    message_.set_text(text.message);
    scroller_.set_visible(!text.message.empty());
    scroller_.get_vadjustment()->set_value(0);
    setCssClass(scroller_, "quoted", asked.dialog.kind != Kind::beforeUnload);
    setText(warning_, text.warning);
    setAccessibleLabel(card_, text.spoken());
    drawFields(asked.dialog);
    silence_.set_visible(asked.offersSilence);
    cancel_.set_label(text.cancel);
    cancel_.set_visible(!text.cancel.empty());
    accept_.set_label(text.accept);
    accept_.set_hexpand(text.cancel.empty());
    isCancelDefault_ = PageDialogText::isCancelDefault(asked.dialog);
    setCssClass(accept_, "suggested", !isCancelDefault_);
    setCssClass(cancel_, "suggested", isCancelDefault_);
    accept_.set_sensitive(false);
    arming_.disconnect();
    arming_ = Glib::signal_timeout().connect(sigc::track_object(
                                                 [this] {
                                                     arm();
                                                     return false;
                                                 },
                                                 *this),
                                             armingTime);
}

void PageDialogView::drawFields(const PageDialog& dialog) {
    const bool wantsPassword = dialog.kind == Kind::authentication;
    const std::string name{wantsPassword ? PageDialogText::name : PageDialogText::answer};
    field_.set_text(dialog.suggestion);
    field_.set_placeholder_text(wantsPassword ? name : "");
    setAccessibleLabel(field_, name);
    field_.set_visible(wantsPassword || dialog.kind == Kind::prompt);
    password_.set_text("");
    password_.set_visible(wantsPassword);
}

void PageDialogView::arm() {
    const bool hadKeyboard = holdsKeyboard(*this);
    accept_.set_sensitive(true);
    if (hadKeyboard && focusOf(*this) == &card_) focusCard();
}

void PageDialogView::focusCard() {
    if (isCancelDefault_) {
        cancel_.grab_focus();
    } else if (!accept_.get_sensitive()) {
        card_.grab_focus();
    } else if (field_.get_visible()) {
        field_.grab_focus();
    } else {
        accept_.grab_focus();
    }
}

bool PageDialogView::keyPressed(guint key, guint, Gdk::ModifierType) {
    const bool isInField = holdsKeyboard(field_) || holdsKeyboard(password_);
    if (key == GDK_KEY_Escape) {
        cancel();
    } else if (isReturnKey(key) && (isInField || focusOf(*this) == &card_)) {
        if (accept_.get_sensitive()) accept();
    } else if (!isInField && (key == GDK_KEY_Page_Down || key == GDK_KEY_Down)) {
        scroll(key == GDK_KEY_Down ? 0.2 : 1);
    } else if (!isInField && (key == GDK_KEY_Page_Up || key == GDK_KEY_Up)) {
        scroll(key == GDK_KEY_Up ? -0.2 : -1);
    } else {
        return false;
    }
    return true;
}

void PageDialogView::scroll(double pages) {
    const auto place = scroller_.get_vadjustment();
    place->set_value(place->get_value() + pages * place->get_page_size());
}

void PageDialogView::accept() {
    answer({.isAccepted = true, .text = field_.get_text(), .password = password_.get_text()});
}

void PageDialogView::cancel() { answer({}); }

void PageDialogView::answer(const PageDialogAnswer& answer) {
    password_.set_text("");
    if (const auto tab = tab_.lock()) tab->webView().dialogs().answer(shown_, answer);
}

void PageDialogView::silence() {
    if (const auto tab = tab_.lock()) tab->webView().dialogs().silence();
}

}  // namespace orvu

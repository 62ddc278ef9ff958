#include "shell/pagearea/view/PageNoticeView.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/Keyboard.h"
#include "look/view/SymbolImage.h"

#include <glibmm/main.h>

namespace orvu {
namespace {

using Action = PageNotice::Action;
constexpr int crossSize = 10;
/// Of the text, in characters. Without one, the toolkit breaks it behind each character to find out.
constexpr int leastWidth = 20;
constexpr unsigned armingTime = 500;  // milliseconds

bool handsOut(Action action) { return action == Action::openAnyway || action == Action::openWith; }

}  // namespace

PageNoticeView::PageNoticeView(BrowserView& view) : view_(view) {
    add_css_class("page-notice");
    property_accessible_role() = Gtk::Accessible::Role::ALERT;
    set_halign(Gtk::Align::FILL);
    set_valign(Gtk::Align::END);
    set_visible(false);
    text_.set_wrap(true);
    text_.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    text_.set_width_chars(leastWidth);
    text_.set_max_width_chars(leastWidth);
    text_.set_hexpand(true);
    text_.set_xalign(0);
    append(text_);
    buttons_.add_css_class("page-notice-buttons");
    buttons_.set_valign(Gtk::Align::CENTER);
    append(buttons_);
    close_.add_css_class("page-notice-close");
    close_.set_valign(Gtk::Align::CENTER);
    close_.set_focus_on_click(false);
    setSymbol(cross_, "xmark", crossSize);
    close_.set_child(cross_);
    setAccessibleLabel(close_, phrase("Close"));
    close_.signal_clicked().connect([this] {
        if (const auto tab = tab_.lock()) tab->webView().dismissFailure();
    });
    append(close_);
}

void PageNoticeView::show(const std::shared_ptr<BrowserTab>& tab) {
    const bool otherTab = tab != tab_.lock();
    tab_ = tab;
    const auto failure = tab ? tab->webView().failure() : std::nullopt;
    if (failure == failure_ && !otherTab) return;
    failure_ = failure;
    explained_ = PageNotice::Explained::no;
    if (failure_) {
        draw();
    } else {
        hide();
    }
}

std::optional<std::string> PageNoticeView::programFor(const LoadFailure& failure) {
    if (failure.cause != LoadFailureCause::otherProgram) return std::nullopt;
    return view_.services().platform().workspace.programFor(failure.url);
}

void PageNoticeView::hide() {
    shown_.reset();
    const bool keyboardGoes = holdsKeyboard(*this);
    set_visible(false);
    if (keyboardGoes) keyboardFree_.emit();
}

void PageNoticeView::draw() {
    const auto notice = PageNotice::of(*failure_, explained_, programFor(*failure_));
    if (notice == shown_) return;
    shown_ = notice;
    text_.set_text(notice.text);
    setAccessibleLabel(*this, notice.text);
    const bool keyboardGoes = holdsKeyboard(buttons_);
    while (Gtk::Widget* const button = buttons_.get_first_child()) buttons_.remove(*button);
    for (const auto& button : notice.buttons) addButton(button);
    set_visible(true);
    if (keyboardGoes) buttons_.child_focus(Gtk::DirectionType::TAB_FORWARD);
}

void PageNoticeView::addButton(const PageNotice::Button& button) {
    auto& widget = *Gtk::make_managed<Gtk::Button>(button.title);
    widget.add_css_class("page-notice-button");
    widget.set_focus_on_click(false);
    widget.signal_clicked().connect([this, action = button.action] { perform(action); });
    buttons_.append(widget);
    if (!handsOut(button.action)) return;
    widget.set_sensitive(false);
    arming_.disconnect();
    arming_ = Glib::signal_timeout().connect(sigc::track_object(
                                                 [&widget] {
                                                     widget.set_sensitive(true);
                                                     return false;
                                                 },
                                                 widget),
                                             armingTime);
}

void PageNoticeView::perform(Action action) {
    const auto tab = tab_.lock();
    if (!tab || !failure_) return;
    const Url url = failure_->url;
    switch (action) {
        case Action::tryAgain:
        case Action::reload:
            return tab->webView().load(url);
        case Action::edit:
            view_.store().select(*tab);
            return view_.editAddress(url.absoluteString());
        case Action::explain:
            explained_ = PageNotice::Explained::yes;
            return draw();
        case Action::openAnyway:
            return tab->webView().loadWithRefusedCertificate();
        case Action::openWith:
            view_.services().platform().workspace.open(url);
            return tab->webView().dismissFailure();
    }
}

}  // namespace orvu

#include "shell/pagearea/view/BrowserPageContent.h"

#include "look/view/Keyboard.h"
#include "shell/pagearea/view/PageGestures.h"

namespace orvu {

BrowserPageContent::BrowserPageContent(BrowserView& view)
    : view_(view),
      store_(view.sharedStore()),
      notice_(view),
      dialogs_(*this),
      frame_(view, stack_),
      refresh_(*this, [this] { refresh(); }) {
    add_css_class("page-card");
    set_overflow(Gtk::Overflow::HIDDEN);
    set_expand(true);
    append(frame_);
    frame_.connectKeyboardFree(sigc::mem_fun(*this, &BrowserPageContent::focusContent));
    stack_.set_expand(true);
    stack_.set_child(host_);
    addPageGestures(host_, [this] { return tab_.lock(); });
    stack_.add_overlay(link_);
    stack_.add_overlay(question_);
    stack_.add_overlay(notice_);
    notice_.connectKeyboardFree(sigc::mem_fun(*this, &BrowserPageContent::focusContent));
    question_.connectKeyboardFree(sigc::mem_fun(*this, &BrowserPageContent::focusContent));
    stack_.add_overlay(dialogs_);
    dialogs_.connectShown(sigc::mem_fun(*this, &BrowserPageContent::dialogsChanged));
    host_.connectFullscreen(sigc::mem_fun(*this, &BrowserPageContent::fullscreenChanged));
}

BrowserPageContent::~BrowserPageContent() {
    notify_callbacks();
    dropReader();
}

bool BrowserPageContent::show(const std::shared_ptr<BrowserTab>& tab) {
    const bool empty = tab && tab->isNewTab();
    const auto newTab = empty ? std::optional{tab->id()} : std::nullopt;
    const bool otherNewTab = newTab != newTab_;
    if (otherNewTab) showNewTabPage(newTab);
    const bool otherPage = host_.show(tab && !empty ? &tab->webView() : nullptr);
    watch(tab);
    frame_.show(tab);
    question_.show(tab);
    notice_.show(tab);
    dialogs_.show(tab);
    showLink();
    const bool otherArticle = showReader(tab);
    return otherPage || otherNewTab || otherArticle;
}

void BrowserPageContent::focusContent() {
    if (dialogs_.isShown()) {
        dialogs_.focusCard();
    } else if (newTabPage_) {
        newTabPage_->focusField();
    } else if (isReading_) {
        reader_->focusText();
    } else {
        host_.focusPage();
    }
}

std::vector<Gtk::Widget*> BrowserPageContent::areas() {
    std::vector<Gtk::Widget*> present;
    const auto add = [&](Gtk::Widget* part) {
        if (part && part->get_visible()) present.push_back(part);
    };
    add(frame_.strip());
    add(&question_);
    add(&notice_);
    add(frame_.answer());
    return present;
}

std::optional<Future<bool>> BrowserPageContent::find(const std::string& text,
                                                     FindConfiguration how) {
    if (isReading_) {
        const Promise<bool> found;
        found.resolve(reader_->find(text, how));
        return found.future();
    }
    const auto tab = tab_.lock();
    if (!tab) return std::nullopt;
    return tab->webView().find(text, how);
}

void BrowserPageContent::showNewTabPage(const std::optional<Uuid>& tab) {
    newTab_ = tab;
    if (newTabPage_) stack_.remove_overlay(*newTabPage_);
    newTabPage_.reset();
    if (!tab) return;
    newTabPage_ = std::make_unique<BrowserNewTabPageView>(
        store_, [this](const std::string& question) { view_.ask(question); });
    stack_.add_overlay(*newTabPage_);
    newTabPage_->insert_before(stack_, question_);
}

void BrowserPageContent::watch(const std::shared_ptr<BrowserTab>& tab) {
    if (tab == tab_.lock()) return;
    tab_ = tab;
    dropReader();  // nothing of one tab fades out over another
    tabChanged_ = tab ? tab->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark))
                      : sigc::connection{};
    if (!tab) {
        pageChanged_ = {};
        menuChosen_ = {};
        return;
    }
    WebView& page = tab->webView();
    pageChanged_ =
        page.connectPropertyChanged(sigc::mem_fun(*this, &BrowserPageContent::pageChanged));
    menuChosen_ = page.connectMenuChosen(sigc::mem_fun(view_, &BrowserView::menuChosen));
}

bool BrowserPageContent::showReader(const std::shared_ptr<BrowserTab>& tab) {
    auto article = tab ? store_->readerArticle(*tab) : nullptr;
    const auto* const shown = isReading_ ? reader_->article() : nullptr;
    if (article.get() == shown) return false;
    if (article) {
        openReader(std::move(article));
    } else {
        leaveReader();
    }
    return true;
}

void BrowserPageContent::openReader(std::shared_ptr<const ReaderArticle> article) {
    dropReader();
    reader_ = std::make_unique<ReaderView>(std::move(article), store_->readerLook(), [this] {
        selectTab();
        store_->toggleReader();
    });
    readerFocused_ = reader_->connectFocused(sigc::mem_fun(*this, &BrowserPageContent::selectTab));
    stack_.add_overlay(*reader_);
    reader_->insert_before(stack_, question_);  // what the page asks for stays in sight
    isReading_ = true;
    updatePageFocus();
}

void BrowserPageContent::leaveReader() {
    isReading_ = false;
    updatePageFocus();
    reader_->leave([this] { refresh_.mark(); });
    refresh_.mark();  // it may never have been seen
}

void BrowserPageContent::dropReader() {
    if (!reader_) return;
    readerFocused_ = {};
    stack_.remove_overlay(*reader_);
    reader_.reset();
    isReading_ = false;
    updatePageFocus();
}

void BrowserPageContent::pageChanged(WebViewProperty property) {
    if (property == WebViewProperty::failure) refresh_.mark();
    if (property == WebViewProperty::hoveredLink) showLink();
}

void BrowserPageContent::showLink() {
    const auto tab = tab_.lock();
    link_.show(tab && !tab->isNewTab() ? &tab->webView() : nullptr);
}

void BrowserPageContent::refresh() {
    question_.show(tab_.lock());
    notice_.show(tab_.lock());
    if (reader_ && !isReading_ && reader_->get_opacity() == 0) dropReader();
    const bool keyboardIsHere = holdsKeyboard(*this);  // it may be in the other one of a pair
    if (showReader(tab_.lock()) && keyboardIsHere) focusContent();
}

/// The keyboard goes to the card from the page alone, and back.
void BrowserPageContent::dialogsChanged() {
    const bool keyboardIsHere = holdsKeyboard(*this) || !focusOf(*this);
    dialogs_.set_visible(dialogs_.isShown());
    updatePageFocus();
    if (keyboardIsHere) focusContent();
}

/// The keyboard stays with what is seen.
void BrowserPageContent::updatePageFocus() {
    host_.set_can_focus(!isReading_ && !dialogs_.isShown());
}

void BrowserPageContent::fullscreenChanged(bool on) {
    const auto tab = tab_.lock();
    view_.fullscreenTab.set(on && tab ? std::optional{tab->id()} : std::nullopt);
}

/// Of two tabs side by side the one whose article is used comes to the front.
void BrowserPageContent::selectTab() {
    if (const auto tab = tab_.lock()) store_->select(*tab);
}

}  // namespace orvu

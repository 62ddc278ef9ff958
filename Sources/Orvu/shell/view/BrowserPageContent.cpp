#include "shell/view/BrowserPageContent.h"

namespace orvu {

BrowserPageContent::BrowserPageContent(std::shared_ptr<BrowserStore> store)
    : store_(std::move(store)), refresh_(*this, [this] { question_.show(tab_.lock()); }) {
    add_css_class("page-card");
    set_overflow(Gtk::Overflow::HIDDEN);
    set_expand(true);
    set_child(host_);
    add_overlay(question_);
    question_.onKeyboardFree = [this] { focusContent(); };
}

BrowserPageContent::~BrowserPageContent() { question_.onKeyboardFree = nullptr; }

bool BrowserPageContent::show(const std::shared_ptr<BrowserTab>& tab) {
    const bool empty = tab && tab->isNewTab();
    const auto newTab = empty ? std::optional{tab->id()} : std::nullopt;
    const bool otherNewTab = newTab != newTab_;
    if (otherNewTab) showNewTabPage(newTab);
    const bool otherPage = host_.show(tab);
    if (tab != tab_.lock()) {
        tab_ = tab;
        tabChanged_ = tab ? tab->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark))
                          : sigc::connection{};
    }
    question_.show(tab);
    return otherPage || otherNewTab;
}

void BrowserPageContent::focusContent() {
    if (newTabPage_) {
        newTabPage_->focusField();
    } else {
        host_.focusPage();
    }
}

void BrowserPageContent::showNewTabPage(const std::optional<Uuid>& tab) {
    newTab_ = tab;
    if (newTabPage_) remove_overlay(*newTabPage_);
    newTabPage_.reset();
    if (!tab) return;
    newTabPage_ = std::make_unique<BrowserNewTabPageView>(store_);
    add_overlay(*newTabPage_);
}

}  // namespace orvu

#include "shell/pagearea/view/BrowserPageCard.h"

#include "look/view/Keyboard.h"

#include <utility>

namespace orvu {
BrowserPageCard::BrowserPageCard(BrowserView& view)
    : view_(view), closingFindGoes_(*this, [this] { endClosingFind(); }) {
    set_expand(true);
    showSingle();
    view_.findOpen.connectChanged(sigc::mem_fun(*this, &BrowserPageCard::findChanged));
    view_.connectFindFocusRequested(sigc::mem_fun(*this, &BrowserPageCard::focusFind));
    view_.connectFindAgainRequested(sigc::mem_fun(*this, &BrowserPageCard::findAgain));
    view_.connectPageFocusRequested(sigc::mem_fun(*this, &BrowserPageCard::focusContent));
}

BrowserPageCard::~BrowserPageCard() {
    notify_callbacks();
    if (find_) card_.remove_overlay(*find_);
    endClosingFind();
    clear();
}

bool BrowserPageCard::refresh() {
    if (view_.store().librarySection()) return showLibrary();
    const bool leavesLibrary = static_cast<bool>(library_);
    const auto pair = view_.store().splitTabs();
    if (pair.empty()) {
        if (!single_) showSingle();
        return single_->show(view_.store().active()) || leavesLibrary;
    }
    if (!pair_) showPair();
    return pair_->show(pair) || leavesLibrary;
}

void BrowserPageCard::focusContent() {
    if (single_) single_->focusContent();
    if (pair_) pair_->focusContent();
    if (library_) library_->focusContent();
}

std::vector<Gtk::Widget*> BrowserPageCard::areas() {
    if (library_) return library_->areas();
    return pair_ ? pair_->areas() : single_->areas();
}

/// Takes away what stands here.
void BrowserPageCard::clear() {
    while (Gtk::Widget* const child = get_first_child()) remove(*child);
    card_.unset_child();
    single_.reset();
    pair_.reset();
    library_.reset();
}

void BrowserPageCard::showSingle() {
    clear();
    single_.emplace(view_);
    card_.set_child(*single_);
    append(card_);
    showFind();
}

void BrowserPageCard::showPair() {
    clear();
    showFind();
    pair_.emplace(view_);
    pair_->set_expand(true);
    append(*pair_);
}

bool BrowserPageCard::showLibrary() {
    if (library_) return false;
    clear();
    showFind();
    library_ = std::make_unique<LibraryPage>(view_.sharedStore(), view_.services());
    append(*library_);
    return true;
}

void BrowserPageCard::findChanged() {
    if (library_ && view_.findOpen.get()) {
        view_.findOpen.set(false);  // the library has a search of its own
        library_->focusContent();
    } else if (view_.findOpen.get()) {
        showFind();
    } else {
        closeFind();
    }
}

void BrowserPageCard::focusFind() {
    if (library_) library_->focusContent();
    if (find_) find_->focusField();
}

void BrowserPageCard::closeFind() {
    if (!find_) return;
    const bool hadKeyboard = holdsKeyboard(*find_);
    // It may have asked for its end itself, and goes when that call has returned.
    find_->set_visible(false);
    closingFind_ = std::move(find_);
    closingFindGoes_.mark();
    if (hadKeyboard) focusContent();
}

void BrowserPageCard::findAgain(FindDirection direction) {
    if (find_) find_->find(direction == FindDirection::previous);
}

void BrowserPageCard::showFind() {
    const bool shouldShow = view_.findOpen.get() && single_;
    if (shouldShow == static_cast<bool>(find_)) return;
    endClosingFind();
    if (!shouldShow) {
        card_.remove_overlay(*find_);
        find_.reset();
        return;
    }
    find_ = std::make_unique<BrowserFindBarView>(
        [this](const std::string& text, FindConfiguration how) { return single_->find(text, how); },
        [this] { view_.findOpen.set(false); });
    card_.add_overlay(*find_);
}

void BrowserPageCard::endClosingFind() {
    if (!closingFind_) return;
    card_.remove_overlay(*closingFind_);
    closingFind_.reset();
}

}  // namespace orvu

#include "shell/pagearea/view/BrowserPageCard.h"

#include <gtkmm/root.h>

#include <utility>

namespace orvu {
namespace {

bool holdsKeyboard(Gtk::Widget& widget) {
    const auto* const root = widget.get_root();
    const Gtk::Widget* const focus = root ? root->get_focus() : nullptr;
    return focus && (focus == &widget || focus->is_ancestor(widget));
}

}  // namespace

BrowserPageCard::BrowserPageCard(std::shared_ptr<BrowserStore> store)
    : store_(std::move(store)), closingFindGoes_(*this, [this] { endClosingFind(); }) {
    set_expand(true);
    showSingle();
}

BrowserPageCard::~BrowserPageCard() {
    onFullscreen = nullptr;  // whoever wanted to know is on its way out as well
    if (find_) card_.remove_overlay(*find_);
    endClosingFind();
    card_.unset_child();
    while (Gtk::Widget* const child = get_first_child()) remove(*child);
}

bool BrowserPageCard::refresh() {
    const auto pair = store_->splitTabs();
    if (pair.empty()) {
        if (!single_) showSingle();
        return single_->show(store_->active());
    }
    if (!pair_) showPair();
    return pair_->show(pair);
}

void BrowserPageCard::focusContent() {
    if (single_) single_->focusContent();
    if (pair_) pair_->focusContent();
}

void BrowserPageCard::showSingle() {
    if (pair_) remove(*pair_);
    pair_.reset();
    single_.emplace(store_);
    single_->setOnFullscreen([this](bool on) { tellFullscreen(on); });
    card_.set_child(*single_);
    append(card_);
    showFind();
}

void BrowserPageCard::showPair() {
    if (single_) remove(card_);
    card_.unset_child();
    single_.reset();
    showFind();
    pair_.emplace(store_);
    pair_->set_expand(true);
    pair_->setOnFullscreen([this](bool on) { tellFullscreen(on); });
    append(*pair_);
}

void BrowserPageCard::openFind() {
    findOpen_ = true;
    showFind();
    if (find_) find_->focusField();
}

void BrowserPageCard::closeFind() {
    if (!std::exchange(findOpen_, false)) return;
    if (!find_) return;
    const bool hadKeyboard = holdsKeyboard(*find_);
    // It may have asked for its end itself, and goes when that call has returned.
    find_->set_visible(false);
    closingFind_ = std::move(find_);
    closingFindGoes_.mark();
    if (hadKeyboard) focusContent();
}

void BrowserPageCard::findAgain(bool backwards) {
    if (!findOpen_) return openFind();
    if (find_) find_->find(backwards);
}

void BrowserPageCard::showFind() {
    const bool wanted = findOpen_ && single_;
    if (wanted == static_cast<bool>(find_)) return;
    endClosingFind();
    if (!wanted) {
        card_.remove_overlay(*find_);
        find_.reset();
        return;
    }
    find_ = std::make_unique<BrowserFindBarView>(
        [this](const std::string& text, FindConfiguration how) { return single_->find(text, how); },
        [this] { closeFind(); });
    card_.add_overlay(*find_);
}

void BrowserPageCard::endClosingFind() {
    if (!closingFind_) return;
    card_.remove_overlay(*closingFind_);
    closingFind_.reset();
}

void BrowserPageCard::tellFullscreen(bool on) {
    if (onFullscreen) onFullscreen(on);
}

}  // namespace orvu

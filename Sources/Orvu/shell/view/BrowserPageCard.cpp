#include "shell/view/BrowserPageCard.h"

namespace orvu {

BrowserPageCard::BrowserPageCard(std::shared_ptr<BrowserStore> store) : store_(std::move(store)) {
    set_expand(true);
    showSingle();
}

BrowserPageCard::~BrowserPageCard() {
    onFullscreen = nullptr;  // whoever wanted to know is on its way out as well
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
    append(*single_);
}

void BrowserPageCard::showPair() {
    if (single_) remove(*single_);
    single_.reset();
    pair_.emplace(store_);
    pair_->set_expand(true);
    pair_->setOnFullscreen([this](bool on) { tellFullscreen(on); });
    append(*pair_);
}

void BrowserPageCard::tellFullscreen(bool on) {
    if (onFullscreen) onFullscreen(on);
}

}  // namespace orvu

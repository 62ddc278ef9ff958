#include "shell/pagearea/view/ResultsFrame.h"

#include "look/view/Keyboard.h"

namespace orvu {
namespace {

constexpr EnteringBox::Way fromAbove{.fromTop = 1};

}  // namespace

ResultsFrame::ResultsFrame(BrowserView& view, Gtk::Widget& page)
    : Gtk::Box(Gtk::Orientation::VERTICAL),
      view_(view),
      row_(page),
      refresh_(*this, [this] { refresh(); }) {
    set_expand(true);
    append(row_);
    view_.fullscreenTab.connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
}

ResultsFrame::~ResultsFrame() {
    notify_callbacks();
    showCard(false);
    showStrip(false);
}

void ResultsFrame::show(const std::shared_ptr<BrowserTab>& tab) {
    if (tab == tab_.lock()) return;
    tab_ = tab;
    showCard(false);
    showStrip(false);
    results_.reset();
    if (!tab) return;
    results_.emplace(tab, view_.store().isPrivate(), view_.assistant().kesto, view_.services());
    results_->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

void ResultsFrame::refresh() {
    const bool hasRoom = !view_.fullscreenTab.get();
    const bool hadKeyboard = holdsKeyboard(*this);
    showStrip(hasRoom && results_ && results_->strip());
    showCard(hasRoom && results_ && results_->showAnswer());
    if (hadKeyboard && !holdsKeyboard(*this)) keyboardFree_.emit();
}

void ResultsFrame::showStrip(bool shows) {
    if (shows == static_cast<bool>(strip_)) return;
    if (!shows) {
        remove(*stripPlace_);
        stripPlace_.reset();
        strip_.reset();
        return;
    }
    strip_ = std::make_unique<SearchStripView>(*results_, view_.store().icons());
    stripPlace_ = std::make_unique<EnteringBox>(Gtk::Orientation::VERTICAL, 0, fromAbove);
    stripPlace_->append(*strip_);
    prepend(*stripPlace_);
}

void ResultsFrame::showCard(bool shows) {
    if (shows == static_cast<bool>(card_)) return;
    row_.setAnswer(nullptr);
    card_.reset();
    if (!shows) return;
    card_ = std::make_unique<SearchAnswerCardView>(*results_, view_.store().icons());
    row_.setAnswer(card_.get());
}

}  // namespace orvu

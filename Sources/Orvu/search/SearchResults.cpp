#include "search/SearchResults.h"

#include "platform/Platform.h"

#include <utility>

namespace orvu {

SearchResults::SearchResults(const std::shared_ptr<BrowserTab>& tab, bool isPrivate, Kesto& kesto,
                             AppServices& services)
    : tab_(tab),
      isPrivate_(isPrivate),
      settings_(services.settings()),
      answer_(kesto, services.platform().loop, services.platform().pageReads,
              services.platform().background) {
    const auto follow = sigc::mem_fun(*this, &SearchResults::update);
    if (tab) tab->connectChanged(follow);
    settings_.searchAnswerOpen.connectChanged(follow);
    settings_.searchAnswers.connectChanged(follow);
    update();
}

void SearchResults::open(const Url& url) {
    if (const auto tab = tab_.lock()) tab->webView().load(url);
}

/// The search with its engine is what an answer is for: another kind of the same search is none.
void SearchResults::update() {
    State state = present();
    if (state == state_) return;
    const bool begins = state.showAnswer && (!state_.showAnswer || state.strip != state_.strip);
    state_ = std::move(state);
    if (begins) answer_.run(tab_.lock(), state_.strip->query);
    changed_.emit();
}

SearchResults::State SearchResults::present() const {
    const auto tab = tab_.lock();
    State state;
    if (tab) state.page = tab->url();
    if (auto found = Prefs::searchQuery(state.page)) {
        state.strip = SearchStrip{found->engine, std::move(found->query)};
        state.canShowAnswer = !isPrivate_ && settings_.searchAnswers.get();
        state.showAnswer = state.canShowAnswer && settings_.searchAnswerOpen.get();
    }
    return state;
}

}  // namespace orvu

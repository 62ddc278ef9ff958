#include "shell/BrowserView.h"

#include "core/Records.h"
#include "profiles/Preferences.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace orvu {

BrowserView::BrowserView(std::shared_ptr<BrowserStore> store, Shared shared, BrowserWindow& window,
                         SwitchProfile switchProfile, Narrow isNarrow)
    : narrow(isNarrow == Narrow::yes),
      store_(std::move(store)),
      shared_(shared),
      window_(window),
      switchProfile_(std::move(switchProfile)),
      updateAsk_(services().platform().loop, services().settings(), updater(), askUpdates) {
    updateAsk_.begin(store_->isPrivate() ? UpdateAsk::Window::isPrivate
                                         : UpdateAsk::Window::ordinary);
    if (store_->isPrivate()) return;
    profileSwitcher_.emplace(services().profiles(), store_->profile().id,
                             sigc::mem_fun(*this, &BrowserView::switchSoon));
    watchSheets();
}

void BrowserView::watchSheets() {
    const auto changed = sigc::track_object(
        [this] {
            const ProfileSwitcher& switcher = *profileSwitcher_;
            sheetOpen.set(switcher.editing.get() || switcher.creating.get() ||
                          switcher.deleting.get());
        },
        *this);
    profileSwitcher_->editing.connectChanged(changed);
    profileSwitcher_->creating.connectChanged(changed);
    profileSwitcher_->deleting.connectChanged(changed);
}

void BrowserView::switchProfile(const Profile& profile) const {
    const auto switchTo = switchProfile_;  // this view ends in it
    switchTo(profile);
}

void BrowserView::switchSoon(const Profile& profile) {
    switching_ = services().platform().loop.after(
        std::chrono::milliseconds{0},
        sigc::bind(sigc::mem_fun(*this, &BrowserView::switchProfile), profile));
}

Profile BrowserView::profile() const {
    const auto& known = services().profiles().profiles();
    const auto found = std::ranges::find(known, store_->profile().id, &Profile::id);
    return found != known.end() ? *found : store_->profile();
}

void BrowserView::editAddress(const std::string& text) {
    // The field would need a second and more to lay out what a page can make of an address.
    query.set(text.size() <= storedAddressLimit ? text : "");
    commandOpen.set(true);
    addressFocusRequested_.emit();
}

void BrowserView::ask(const std::string& question) {
    commandOpen.set(false);
    kestoOpen.set(true);
    pendingQuestion.set(question);
}

void BrowserView::openFind() {
    findOpen.set(true);
    findFocusRequested_.emit();
}

void BrowserView::findAgain(FindDirection direction) {
    if (!findOpen.get()) return openFind();
    findAgainRequested_.emit(direction);
}

bool BrowserView::endEditing() {
    const bool findShows = findOpen.get() && store_->splitTabs().empty();
    const bool ended = commandOpen.get() || findShows;
    commandOpen.set(false);
    findOpen.set(false);
    if (ended) return true;
    const auto tab = store_->active();
    if (!tab) return false;
    if (const auto* const asked = tab->webView().dialogs().current()) {
        tab->webView().dialogs().answer(asked->id, {});
        return true;
    }
    if (const auto question = tab->question()) {
        tab->answer(*question, PageAnswer::dismiss);
        return true;
    }
    if (!tab->isLoading()) return false;
    tab->webView().stopLoading();
    return true;
}

void BrowserView::menuChosen(const PageMenuChoice& choice) {
    if (choice.kind == PageMenuChoice::Kind::openPrivately) {
        const auto url = Url::parse(choice.text);
        if (url && isWebUrl(*url)) window_.openPrivately(*url);
        return;
    }
    const auto engine = services().settings().searchEngine.get();
    const auto results = Prefs::searchURL(engine, choice.text);
    if (results && !choice.text.empty()) store_->newTab(results, BrowserStore::Select::yes);
}

}  // namespace orvu

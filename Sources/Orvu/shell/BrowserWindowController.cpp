#include "shell/BrowserWindowController.h"

#include "foundation/text/Translation.h"
#include "shell/TabCloser.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace orvu {

BrowserWindowController::BrowserWindowController(AppServices& services,
                                                 BrowserWindowFactory makeWindow)
    : services_(services),
      makeWindow_(std::move(makeWindow)),
      assistant_(services_.platform().model, services_.platform().defaults) {}

std::shared_ptr<BrowserStore> BrowserWindowController::frontStore() const {
    const auto key =
        std::ranges::find_if(windows_, [](const Entry& entry) { return entry.window->isKey(); });
    if (key != windows_.end()) return key->store;
    return windows_.empty() ? nullptr : windows_.back().store;
}

void BrowserWindowController::newWindow(Private isPrivate, const std::optional<Profile>& profile,
                                        const std::vector<Url>& urls) {
    const bool hidden = isPrivate == Private::yes;
    const auto store =
        std::make_shared<BrowserStore>(services_, hidden, profile.value_or(lastProfile()));
    for (const Url& url : urls) store->newTab(url, BrowserStore::Select::yes);

    // The window's address names it in `windowWillClose`: it is known only once it is made.
    const auto self = std::make_shared<const BrowserWindow*>(nullptr);
    auto window = makeWindow_({hidden, hidden ? phrase("Orvu — Private") : Phrase{"Orvu"}},
                              [this, self] { windowWillClose(*self); });
    *self = window.get();
    window->setContent(store);
    place(*window, isPrivate);
    windows_.push_back({std::move(window), store});
    windows_.back().window->present();
}

void BrowserWindowController::place(BrowserWindow& window, Private isPrivate) const {
    if (const Entry* const neighbour = newestVisible()) {
        if (const auto corner = neighbour->window->topLeft()) {
            window.placeAt(WindowPlacement::cascaded(*corner));
        }
    } else if (isPrivate == Private::no) {
        window.rememberFrame();
    }
}

void BrowserWindowController::openPrivately(const Url& url) {
    newWindow(Private::yes, std::nullopt, {});
    const auto tab = windows_.back().store->active();
    if (tab) tab->webView().load(url);
}

void BrowserWindowController::open(const std::vector<Url>& urls) {
    std::vector<Url> web;
    std::ranges::copy_if(urls, std::back_inserter(web), isWebUrl);
    if (web.empty()) return;
    const auto newestFirst = windows_ | std::views::reverse;
    const auto found = std::ranges::find_if(newestFirst, [](const Entry& entry) {
        return !entry.store->isPrivate() && entry.window->isVisible();
    });
    if (found == newestFirst.end()) return newWindow(Private::no, std::nullopt, web);
    const auto store = found->store;  // an observer of it may open or close windows
    for (const Url& url : web) store->newTab(url, BrowserStore::Select::yes);
    const auto entry = std::ranges::find(windows_, store, &Entry::store);
    if (entry != windows_.end()) entry->window->present();
}

void BrowserWindowController::switchProfile(const BrowserStore& store, const Profile& profile) {
    const auto found = std::ranges::find_if(
        windows_, [&](const Entry& entry) { return entry.store.get() == &store; });
    if (found == windows_.end()) return;
    const auto show = sigc::bind(sigc::mem_fun(*this, &BrowserWindowController::present), &store);
    const Profile wanted = profile;  // the argument may belong to the store that goes
    const auto go =
        sigc::bind(sigc::mem_fun(*this, &BrowserWindowController::exchange), &store, wanted);
    TabCloser{*found->store}.whenAllMayGo(show, go);
}

void BrowserWindowController::exchange(const BrowserStore* store, const Profile& profile) {
    const auto found = std::ranges::find_if(
        windows_, [&](const Entry& entry) { return entry.store.get() == store; });
    if (found == windows_.end()) return;
    // It may have been deleted while the pages were asked.
    auto& profiles = services_.profiles();
    const Profile wanted = profiles.wasRemoved(profile.id) ? profiles.personal() : profile;
    const auto next = std::make_shared<BrowserStore>(services_, false, wanted);
    // The window's views refer to the previous store until they are exchanged.
    const auto previous = std::exchange(found->store, next);
    found->window->setContent(next);
    services_.settings().lastProfile.set(wanted.id.string());
}

Task<bool> BrowserWindowController::mayCloseAll() {
    TabCloser::Tabs tabs;
    for (const Entry& entry : windows_) {
        tabs.insert(tabs.end(), entry.store->tabs().begin(), entry.store->tabs().end());
    }
    return TabCloser::mayGo(std::move(tabs), sigc::mem_fun(*this, &BrowserWindowController::show),
                            services_.platform().loop);
}

void BrowserWindowController::show(BrowserTab& tab) {
    const auto found =
        std::ranges::find_if(windows_, [&](const Entry& entry) { return entry.store->holds(tab); });
    if (found == windows_.end()) return;
    const auto store = found->store;  // an observer of it may open or close windows
    store->select(tab);
    present(store.get());
}

void BrowserWindowController::present(const BrowserStore* store) {
    const auto found = std::ranges::find_if(
        windows_, [&](const Entry& entry) { return entry.store.get() == store; });
    if (found != windows_.end()) found->window->present();
}

void BrowserWindowController::presentNewest() {
    if (const Entry* const entry = newestVisible()) entry->window->present();
}

Profile BrowserWindowController::lastProfile() const {
    return services_.profiles().profile(Uuid::parse(services_.settings().lastProfile.get()));
}

const BrowserWindowController::Entry* BrowserWindowController::newestVisible() const {
    for (const Entry& entry : windows_ | std::views::reverse) {
        if (entry.window->isVisible()) return &entry;
    }
    return nullptr;
}

void BrowserWindowController::windowWillClose(const BrowserWindow* window) {
    const auto found = std::ranges::find_if(
        windows_, [&](const Entry& entry) { return entry.window.get() == window; });
    if (found == windows_.end()) return;
    const Entry closed = std::move(*found);
    windows_.erase(found);
}

}  // namespace orvu

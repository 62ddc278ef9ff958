#include "shell/OrvuApp.h"

#include "foundation/text/Translation.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orvu {

AppDelegate::AppDelegate(AppServices& services, Windows windows, Updater& updater,
                         ApplicationHost& host)
    : services_(services),
      windows_(windows.browser),
      settings_(windows.settings),
      import_(windows.import),
      onboarding_(windows.onboarding),
      updater_(updater),
      host_(host) {
    updater_.connectQuit(sigc::track_object([this] { host_.terminate(); }, *this));
}

void AppDelegate::applicationDidFinishLaunching() {
    launched_ = true;
    windows_.newWindow(BrowserWindowController::Private::no, std::nullopt,
                       std::exchange(pendingURLs_, {}));
    onboarding_.showIfNeeded(sigc::mem_fun(*this, &AppDelegate::becomeDefaultBrowser));
    auto& launches = services_.settings().launchCount;
    const auto count = std::max<std::int64_t>(0, launches.get());
    launches.set(count < std::numeric_limits<std::int64_t>::max() ? count + 1 : count);
    showNotesOfUpdate();
    updater_.start();
}

/// Without a window they are due no more all the same.
void AppDelegate::showNotesOfUpdate() {
    const auto notes = updater_.whatsNew();
    if (!notes || !updater_.takeWhatsNewToShow()) return;
    if (const auto store = windows_.frontStore()) store->newTab(notes, BrowserStore::Select::yes);
}

void AppDelegate::windowDidShow() {
    if (!std::exchange(hasShownWindow_, true)) updater_.didShowWindow();
}

void AppDelegate::open(const std::vector<Url>& urls) {
    if (launched_) return windows_.open(urls);
    pendingURLs_.insert(pendingURLs_.end(), urls.begin(), urls.end());
}

void AppDelegate::applicationShouldHandleReopen() {
    if (windows_.hasVisibleWindows()) return windows_.presentNewest();
    windows_.newWindow(BrowserWindowController::Private::no, std::nullopt, {});
}

void AppDelegate::newWindow() {
    windows_.newWindow(BrowserWindowController::Private::no, std::nullopt, {});
}

void AppDelegate::newPrivateWindow() {
    windows_.newWindow(BrowserWindowController::Private::yes, std::nullopt, {});
}

void AppDelegate::openSettings() {
    settings_.show({.makeDefault = sigc::mem_fun(*this, &AppDelegate::makeDefaultBrowser),
                    .restart = sigc::mem_fun(*this, &AppDelegate::restartToUpdate)});
}

void AppDelegate::checkForUpdates() {
    openSettings();
    updater_.check(UserInitiated::yes);
}

void AppDelegate::showWhatsNew() {
    const auto notes = updater_.whatsNew();
    if (!notes) return;
    if (const auto store = windows_.frontStore()) {
        store->newTab(notes, BrowserStore::Select::yes);
    } else {
        windows_.newWindow(BrowserWindowController::Private::no, std::nullopt, {*notes});
    }
}

void AppDelegate::restartToUpdate() {
    if (updater_.state.get().kind != Updater::State::Kind::ready) return;
    quitting_.cancel();
    quitting_.start(quit([this] { updater_.installAndRestart(); }));
}

void AppDelegate::makeDefaultBrowser() {
    static_cast<void>(services_.platform().workspace.makeDefaultBrowser());
}

std::string AppDelegate::becomeDefaultBrowser() {
    return services_.platform().workspace.makeDefaultBrowser()
               ? phrase("Links from other programs open in Orvu now.")
               : phrase("Your desktop kept its default browser. Its settings can change that.");
}

void AppDelegate::importBookmarks() {
    const auto store = windows_.frontStore();
    import_.show(store ? std::optional{store->profile()} : std::nullopt);
}

void AppDelegate::terminate() {
    quitting_.cancel();
    quitting_.start(quit([this] { host_.terminate(); }));
}

Task<void> AppDelegate::quit(std::function<void()> then) {
    const std::string reason = reasonAgainstQuitting();
    if (!reason.empty()) {
        auto answer = host_.mayTerminate(reason);
        if (!co_await answer) co_return;
    }
    auto pages = windows_.mayCloseAll();
    if (co_await pages) then();
}

std::string AppDelegate::reasonAgainstQuitting() const {
    const auto count = std::ranges::count(services_.downloads().items(),
                                          DownloadItem::State::running, &DownloadItem::state);
    if (count == 0) return "";
    return trn("A download is still running. Quitting ends it.",
               "{1} downloads are still running. Quitting ends them.", count);
}

}  // namespace orvu

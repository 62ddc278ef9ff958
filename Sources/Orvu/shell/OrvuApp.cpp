#include "shell/OrvuApp.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orvu {

AppDelegate::AppDelegate(AppServices& services, BrowserWindowController& windows,
                         SettingsWindow& settings, ImportWindow& import, ApplicationHost& host)
    : services_(services), windows_(windows), settings_(settings), import_(import), host_(host) {}

void AppDelegate::applicationDidFinishLaunching() {
    launched_ = true;
    windows_.newWindow(BrowserWindowController::Private::no, std::nullopt,
                       std::exchange(pendingURLs_, {}));
    auto& launches = services_.settings().launchCount;
    const auto count = std::max<std::int64_t>(0, launches.get());
    launches.set(count < std::numeric_limits<std::int64_t>::max() ? count + 1 : count);
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
    settings_.show(sigc::mem_fun(*this, &AppDelegate::makeDefaultBrowser));
}

void AppDelegate::makeDefaultBrowser() { services_.platform().workspace.makeDefaultBrowser(); }

void AppDelegate::importBookmarks() {
    const auto store = windows_.frontStore();
    import_.show(store ? std::optional{store->profile()} : std::nullopt);
}

void AppDelegate::terminate() {
    quitting_.cancel();
    quitting_.start(quit());
}

Task<void> AppDelegate::quit() {
    const std::string reason = reasonAgainstQuitting();
    if (!reason.empty()) {
        auto answer = host_.mayTerminate(reason);
        if (!co_await answer) co_return;
    }
    auto pages = windows_.mayCloseAll();
    if (co_await pages) host_.terminate();
}

std::string AppDelegate::reasonAgainstQuitting() const {
    const auto count = std::ranges::count(services_.downloads().items(),
                                          DownloadItem::State::running, &DownloadItem::state);
    if (count == 0) return "";
    if (count == 1) return "A download is still running. Quitting ends it.";
    return std::to_string(count) + " downloads are still running. Quitting ends them.";
}

}  // namespace orvu

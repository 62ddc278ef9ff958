#include "shell/OrvuApp.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orvu {

AppDelegate::AppDelegate(AppServices& services, BrowserWindowController& windows,
                         ApplicationHost& host)
    : services_(services), windows_(windows), host_(host) {}

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

void AppDelegate::makeDefaultBrowser() { services_.platform().workspace.makeDefaultBrowser(); }

}  // namespace orvu

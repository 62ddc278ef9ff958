#include "shell/OrvuApp.h"

#include "core/AddressResolution.h"
#include "foundation/text/Text.h"

#include <algorithm>
#include <limits>
#include <system_error>
#include <utility>

namespace orvu {
namespace {

/// The file's address, each byte outside the plain ones escaped.
std::optional<Url> fileUrl(const std::filesystem::path& file) {
    std::string text = percentEncoded(file.string(), QueryCharacters::bangQuery);
    return Url::parse("file://" + text);
}

}  // namespace

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

std::optional<Url> urlFromArgument(std::string_view argument,
                                   const std::filesystem::path& workingFolder,
                                   const Settings& settings) {
    const auto text = trimmed(argument, TrimSet::whitespacesAndNewlines);
    if (text.empty()) return std::nullopt;
    auto url = Url::parse(text);
    const auto scheme = url ? url->scheme() : "";
    if (!scheme.empty() && text.substr(scheme.size()).starts_with("://")) return url;
    std::error_code error;
    const auto file = (workingFolder / std::filesystem::path{argument}).lexically_normal();
    if (std::filesystem::exists(file, error) && !error) return fileUrl(file);
    return resolveAddress(text, settings);
}

}  // namespace orvu

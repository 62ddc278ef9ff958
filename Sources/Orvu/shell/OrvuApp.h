#pragma once

#include "shell/BrowserWindowController.h"

#include <vector>

namespace orvu {

/// What the program is on its desktop beside its windows.
class ApplicationHost {
public:
    virtual ~ApplicationHost() = default;

    virtual void terminate() = 0;
    /// Shows what program this is.
    virtual void orderFrontStandardAboutPanel() = 0;
};

/// The program as the desktop sees it: it starts, is handed addresses, and is asked for windows.
class AppDelegate {
public:
    /// All arguments must outlive the delegate.
    AppDelegate(AppServices& services, BrowserWindowController& windows, ApplicationHost& host);

    /// Addresses that came before launch had finished.
    [[nodiscard]] const std::vector<Url>& pendingURLs() const { return pendingURLs_; }
    [[nodiscard]] bool launched() const { return launched_; }

    /// Opens the first window, with the addresses that started the program.
    void applicationDidFinishLaunching();
    /// Addresses from other programs.
    void open(const std::vector<Url>& urls);
    /// The program was started again while it runs: a window comes to the front, or opens if
    /// none is to be seen.
    void applicationShouldHandleReopen();
    /// False: the program stays, so that its next window is there at once.
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }

    // Menu actions.
    void newWindow();
    void newPrivateWindow();
    void makeDefaultBrowser();
    void orderFrontStandardAboutPanel() { host_.orderFrontStandardAboutPanel(); }
    void terminate() { host_.terminate(); }

private:
    AppServices& services_;
    BrowserWindowController& windows_;
    ApplicationHost& host_;
    std::vector<Url> pendingURLs_;
    bool launched_ = false;
};

}  // namespace orvu

#pragma once

#include "foundation/async/Future.h"
#include "foundation/async/TaskScope.h"
#include "import/ImportWindow.h"
#include "profiles/settings/SettingsWindow.h"
#include "shell/BrowserWindowController.h"

#include <string>
#include <vector>

namespace orvu {

/// What the program is on its desktop beside its windows.
class ApplicationHost {
public:
    virtual ~ApplicationHost() = default;

    /// Ends it, without a question.
    virtual void terminate() = 0;
    /// Asks the person whether the program may quit although `reason`. Who drops the answer takes
    /// the question back.
    [[nodiscard]] virtual Future<bool> mayTerminate(const std::string& reason) = 0;
    /// Shows what program this is.
    virtual void orderFrontStandardAboutPanel() = 0;
};

/// The program as the desktop sees it: it starts, is handed addresses, and is asked for windows.
class AppDelegate : public sigc::trackable {
public:
    /// All arguments must outlive the delegate.
    AppDelegate(AppServices& services, BrowserWindowController& windows, SettingsWindow& settings,
                ImportWindow& import, ApplicationHost& host);

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
    void openSettings();
    void makeDefaultBrowser();
    /// Into the profile of the window in front.
    void importBookmarks();
    void orderFrontStandardAboutPanel() { host_.orderFrontStandardAboutPanel(); }
    /// Ends the program, once the person gave up what would be lost by that: downloads that run,
    /// and what was typed into pages. All is asked before anything ends. Asked for again, it asks
    /// again.
    void terminate();

private:
    [[nodiscard]] Task<void> quit();
    [[nodiscard]] std::string reasonAgainstQuitting() const;

    AppServices& services_;
    BrowserWindowController& windows_;
    SettingsWindow& settings_;
    ImportWindow& import_;
    ApplicationHost& host_;
    std::vector<Url> pendingURLs_;
    bool launched_ = false;
    TaskScope quitting_;  // last, so that it ends before what its work uses
};

}  // namespace orvu

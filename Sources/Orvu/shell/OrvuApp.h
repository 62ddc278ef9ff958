#pragma once

#include "foundation/async/Future.h"
#include "foundation/async/TaskScope.h"
#include "import/ImportWindow.h"
#include "library/onboarding/OnboardingWindow.h"
#include "profiles/settings/SettingsWindow.h"
#include "shell/BrowserWindowController.h"
#include "update/Updater.h"

#include <functional>
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
    /// The windows of the program; all must outlive the delegate.
    struct Windows {
        BrowserWindowController& browser;
        SettingsWindow& settings;
        ImportWindow& import;
        OnboardingWindow& onboarding;
    };

    /// All arguments must outlive the delegate.
    AppDelegate(AppServices& services, Windows windows, Updater& updater, ApplicationHost& host);

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

    /// The program is about to end.
    void applicationWillTerminate() { updater_.installOnQuitIfReady(); }
    /// A window can be seen; told for each.
    void windowDidShow();

    // Menu actions.
    void newWindow();
    void newPrivateWindow();
    void openSettings();
    void makeDefaultBrowser();
    /// Asks for an update; the settings show what comes of it.
    void checkForUpdates();
    /// Opens the notes of this release, if there is a page of them.
    void showWhatsNew();
    /// Whether there is one.
    [[nodiscard]] bool hasWhatsNew() const { return updater_.whatsNew().has_value(); }
    /// Lets the update that is ready take this copy's place and starts it, once the person gave up
    /// what `terminate` asks for.
    void restartToUpdate();
    /// Into the profile of the window in front.
    void importBookmarks();
    void orderFrontStandardAboutPanel() { host_.orderFrontStandardAboutPanel(); }
    /// Ends the program, once the person gave up what would be lost by that: downloads that run,
    /// and what was typed into pages. All is asked before anything ends. Asked for again, it asks
    /// again.
    void terminate();

private:
    /// Runs `then` if all that would be lost by the end is given up.
    [[nodiscard]] Task<void> quit(std::function<void()> then);
    void showNotesOfUpdate();
    [[nodiscard]] std::string becomeDefaultBrowser();
    [[nodiscard]] std::string reasonAgainstQuitting() const;

    AppServices& services_;
    BrowserWindowController& windows_;
    SettingsWindow& settings_;
    ImportWindow& import_;
    OnboardingWindow& onboarding_;
    Updater& updater_;
    ApplicationHost& host_;
    std::vector<Url> pendingURLs_;
    bool launched_ = false;
    bool hasShownWindow_ = false;
    TaskScope quitting_;  // last, so that it ends before what its work uses
};

}  // namespace orvu

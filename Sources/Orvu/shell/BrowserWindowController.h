#pragma once

#include "assistant/Assistant.h"
#include "foundation/async/Task.h"
#include "shell/BrowserWindow.h"

#include <memory>
#include <optional>
#include <vector>

namespace orvu {

/// Owns all browser windows and pairs each with its store.
class BrowserWindowController : public sigc::trackable {
public:
    enum class Private { no, yes };

    /// An open window. Only its store may change.
    struct Entry {
        std::unique_ptr<BrowserWindow> window;
        std::shared_ptr<BrowserStore> store;
    };

    /// `services` must outlive the controller.
    BrowserWindowController(AppServices& services, BrowserWindowFactory makeWindow);

    /// The one assistant of all windows.
    [[nodiscard]] Assistant& assistant() { return assistant_; }
    /// Open windows, the oldest first.
    [[nodiscard]] const std::vector<Entry>& windows() const { return windows_; }
    /// The store of the window with the keyboard, else of the newest; nothing without windows.
    [[nodiscard]] std::shared_ptr<BrowserStore> frontStore() const;
    [[nodiscard]] bool hasVisibleWindows() const { return newestVisible() != nullptr; }

    /// Makes and shows a window, in the profile that was chosen last if none is given. The last
    /// of `urls` is in front.
    void newWindow(Private isPrivate, const std::optional<Profile>& profile,
                   const std::vector<Url>& urls);
    /// Makes and shows a private window with that page alone.
    void openPrivately(const Url& url);
    /// Opens the web addresses among `urls`, which came from another program, in the newest
    /// visible ordinary window or a new one.
    void open(const std::vector<Url>& urls);
    /// Gives the window of `store` a store of another profile, once its pages agree.
    void switchProfile(const BrowserStore& store, const Profile& profile);
    /// Whether all windows may close: their pages are asked, each at the front.
    [[nodiscard]] Task<bool> mayCloseAll();
    /// Brings the newest visible window to the front.
    void presentNewest();

private:
    void exchange(const BrowserStore* store, const Profile& profile);
    void present(const BrowserStore* store);
    void show(BrowserTab& tab);
    [[nodiscard]] Profile lastProfile() const;
    [[nodiscard]] const Entry* newestVisible() const;
    void place(BrowserWindow& window, Private isPrivate) const;
    void windowWillClose(const BrowserWindow* window);

    AppServices& services_;
    const BrowserWindowFactory makeWindow_;
    Assistant assistant_;
    std::vector<Entry> windows_;
};

}  // namespace orvu

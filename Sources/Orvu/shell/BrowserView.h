#pragma once

#include "assistant/Assistant.h"
#include "core/AppServices.h"
#include "core/BrowserStore.h"
#include "foundation/Observable.h"
#include "profiles/ProfileSwitcher.h"
#include "shell/BrowserWindow.h"
#include "update/UpdateAsk.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orvu {

/// Which match of a search in the page comes next.
enum class FindDirection { next, previous };

/// The window of one store, without a widget: the switches that concern more than one of its parts,
/// and what commands ask of those parts. A switch is set by whoever likes; the parts observe it.
/// Nothing of it is saved.
class BrowserView : public sigc::trackable {
public:
    static constexpr int wideColumn = 228;   ///< points
    static constexpr int narrowColumn = 52;  ///< points

    using SwitchProfile = std::function<void(const Profile&)>;
    enum class Narrow { no, yes };
    /// What all windows share; it outlives them.
    struct Shared {
        AppServices& services;
        Assistant& assistant;
        Updater& updater;
    };

    /// `window` must outlive the view. `switchProfile` gives the window a store of another profile,
    /// and thus another view.
    BrowserView(std::shared_ptr<BrowserStore> store, Shared shared, BrowserWindow& window,
                SwitchProfile switchProfile, Narrow narrow);
    BrowserView(const BrowserView&) = delete;
    BrowserView& operator=(const BrowserView&) = delete;

    [[nodiscard]] BrowserStore& store() const { return *store_; }
    [[nodiscard]] const std::shared_ptr<BrowserStore>& sharedStore() const { return store_; }
    [[nodiscard]] BrowserWindow& window() const { return window_; }
    [[nodiscard]] AppServices& services() const { return shared_.services; }
    [[nodiscard]] Assistant& assistant() const { return shared_.assistant; }
    [[nodiscard]] Updater& updater() const { return shared_.updater; }
    /// The question about automatic updates, which shows while `askUpdates`.
    [[nodiscard]] UpdateAsk& updateAsk() { return updateAsk_; }
    /// Gives the window a store of another profile, which ends this view.
    void switchProfile(const Profile& profile) const;
    /// The same once what asks for it is over: all of the window's views end with it.
    void switchSoon(const Profile& profile);
    /// The window's profile as it is now; once it is deleted, as it was when this view was made.
    [[nodiscard]] Profile profile() const;
    /// The row of profiles; null in a private window.
    [[nodiscard]] ProfileSwitcher* profileSwitcher() {
        return profileSwitcher_ ? &*profileSwitcher_ : nullptr;
    }

    Observable<bool> commandOpen{false};  ///< the notch is open as a command bar
    Observable<std::string> query;        ///< the notch's text; outlives its closing
    Observable<bool> kestoOpen{false};    ///< the assistant's panel shows
    Observable<bool> findOpen{false};     ///< the search bar; it waits while two pages show
    Observable<bool> narrow;              ///< the column of tabs shows icons only
    Observable<std::optional<std::string>> pendingQuestion;  ///< on its way to the panel
    Observable<bool> askUpdates{false};  ///< the question about automatic updates shows
    /// The tab of which an element fills the window.
    Observable<std::optional<Uuid>> fullscreenTab;
    /// A sheet or a question stands over the window, whose commands wait for its end.
    Observable<bool> sheetOpen{false};

    [[nodiscard]] int columnWidth() const { return narrow.get() ? narrowColumn : wideColumn; }

    /// Opens the notch with `text` and gives its field the keyboard, all selected; empty where the
    /// text is longer than an address that can be kept.
    void editAddress(const std::string& text);
    /// Closes the notch and hands its question to the assistant's panel.
    void ask(const std::string& question);
    /// Opens the search bar and gives it the keyboard.
    void openFind();
    /// Goes on from match to match; opens the bar if it is closed.
    void findAgain(FindDirection direction);
    /// Closes the notch and the search bar or, if neither showed, dismisses what the page in front
    /// asks for or else stops its load. False if there was nothing of the kind.
    bool endEditing();

    /// Does what was chosen in the menu of a page.
    void menuChosen(const PageMenuChoice& choice);

    // What is asked of parts of the window. A part that isn't there lets it pass.
    void openRewind() { rewindRequested_.emit(); }
    /// Gives the keyboard to what the tab in front shows.
    void focusPage() { pageFocusRequested_.emit(); }
    /// Moves the keyboard on among the window's areas, or back.
    void focusNextArea() { areaMoveRequested_.emit(+1); }
    void focusPreviousArea() { areaMoveRequested_.emit(-1); }

    sigc::connection connectAddressFocusRequested(const sigc::slot<void()>& slot) {
        return addressFocusRequested_.connect(slot);
    }
    sigc::connection connectFindFocusRequested(const sigc::slot<void()>& slot) {
        return findFocusRequested_.connect(slot);
    }
    sigc::connection connectFindAgainRequested(const sigc::slot<void(FindDirection)>& slot) {
        return findAgainRequested_.connect(slot);
    }
    sigc::connection connectRewindRequested(const sigc::slot<void()>& slot) {
        return rewindRequested_.connect(slot);
    }
    sigc::connection connectPageFocusRequested(const sigc::slot<void()>& slot) {
        return pageFocusRequested_.connect(slot);
    }
    /// The slot gets by how many areas the keyboard moves on, negative for back.
    sigc::connection connectAreaMoveRequested(const sigc::slot<void(int)>& slot) {
        return areaMoveRequested_.connect(slot);
    }

private:
    void watchSheets();

    const std::shared_ptr<BrowserStore> store_;
    const Shared shared_;
    BrowserWindow& window_;
    const SwitchProfile switchProfile_;
    std::optional<ProfileSwitcher> profileSwitcher_;
    UpdateAsk updateAsk_;
    Scheduled switching_;
    sigc::signal<void()> addressFocusRequested_;
    sigc::signal<void()> findFocusRequested_;
    sigc::signal<void(FindDirection)> findAgainRequested_;
    sigc::signal<void()> rewindRequested_;
    sigc::signal<void()> pageFocusRequested_;
    sigc::signal<void(int)> areaMoveRequested_;
};

}  // namespace orvu

#pragma once

#include "foundation/Color.h"
#include "foundation/Observable.h"
#include "foundation/text/Translation.h"
#include "profiles/ProfileEditor.h"
#include "profiles/Profiles.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The row of profiles at the foot of a window's column, without a widget: their tiles with their
/// menus, the sheet that edits or creates one, and the question before one is deleted. Texts are as
/// this desktop shows them.
class ProfileSwitcher : public sigc::trackable {
public:
    /// Shows a profile in the window, which may end the switcher.
    using SwitchTo = std::function<void(const Profile&)>;

    struct Tile {
        Uuid id;
        std::string symbol;
        Color color;
        bool isShown = false;  ///< the window's own
        std::string help;

        friend bool operator==(const Tile&, const Tile&) = default;
    };

    struct MenuLine {
        std::string title;
        sigc::slot<void()> run;  ///< does nothing once the switcher is gone
    };

    /// What is asked before a profile is deleted.
    struct Question {
        static constexpr Phrase informativeText = phrase(
            "Its tabs, history, bookmarks, sign-ins and website data are removed from this Mac.");

        enum class Answer { remove, cancel };

        std::string message;
        std::string text;
        std::array<std::string_view, 2> buttons;  ///< in the order of the answers

        friend bool operator==(const Question&, const Question&) = default;
    };

    static constexpr std::string_view newProfileSymbol = "plus";
    static constexpr Phrase newProfileHelp = phrase("New profile");

    /// `shown` is the window's profile. `profiles` must outlive the switcher.
    ProfileSwitcher(ProfileStore& profiles, const Uuid& shown, SwitchTo switchTo);
    ProfileSwitcher(const ProfileSwitcher&) = delete;
    ProfileSwitcher& operator=(const ProfileSwitcher&) = delete;

    // Which sheet or question stands over the window.
    Observable<std::optional<Profile>> editing;
    Observable<bool> creating{false};
    Observable<std::optional<Profile>> deleting;

    [[nodiscard]] ProfileStore& profiles() const { return profiles_; }

    // What shows.
    /// In the order of the profiles.
    [[nodiscard]] std::vector<Tile> tiles() const;
    /// The context menu of a tile; empty for one whose profile was deleted.
    [[nodiscard]] std::vector<MenuLine> menu(const Uuid& id);
    /// The sheet of `editing`, or else that of a new profile. It must not outlive `profiles`.
    [[nodiscard]] std::unique_ptr<ProfileEditor> editor();
    /// The question about `deleting`.
    [[nodiscard]] std::optional<Question> question() const;

    // What is done. A profile that was deleted meanwhile has no effect.
    /// A click on a tile. The window's own has no effect.
    void switchTo(const Uuid& id);
    void edit(const Uuid& id);
    void create() { creating.set(true); }
    /// Asks whether a profile is to be deleted; not the personal one.
    void confirmDelete(const Uuid& id);
    /// Ends the question. A window that shows the deleted profile goes to the personal one first.
    void answer(Question::Answer answer);

private:
    [[nodiscard]] std::optional<Profile> profile(const Uuid& id) const;
    void edited(const std::optional<Profile>& profile);
    void created(const std::optional<Profile>& profile);

    ProfileStore& profiles_;
    const Uuid shown_;
    const SwitchTo switchTo_;
};

}  // namespace orvu

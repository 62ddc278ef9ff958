#pragma once

#include "foundation/Observable.h"
#include "foundation/text/Translation.h"
#include "profiles/ProfileLook.h"
#include "profiles/Profiles.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The sheet that creates a profile or changes one, without a widget. It serves once: after `save`
/// or `cancel` neither has an effect.
class ProfileEditor : public sigc::trackable {
public:
    /// Is given the profile as it was saved, or nothing for a cancel. It may end the editor.
    using Done = sigc::slot<void(const std::optional<Profile>&)>;

    static constexpr Phrase nameLabel = phrase("Name");
    static constexpr Phrase namePrompt = phrase("Work, Studio, Weekend…");
    static constexpr Phrase colorLabel = phrase("Colour");
    static constexpr Phrase searchPrompt = phrase("Find an icon");
    static constexpr Phrase cancelTitle = phrase("Cancel");

    /// Changes `original`; creates a profile where there is none. `profiles` must outlive the editor.
    ProfileEditor(ProfileStore& profiles, const std::optional<Profile>& original, Done done);
    ProfileEditor(const ProfileEditor&) = delete;
    ProfileEditor& operator=(const ProfileEditor&) = delete;

    // What is chosen. The view sets these as the person types and clicks, and follows them.
    Observable<std::string> name;
    Observable<std::string> icon;    ///< a symbol's name
    Observable<std::int64_t> color;  ///< index into `ProfileLook::all`, or a stored one outside it
    Observable<std::string> search;

    // What shows.
    [[nodiscard]] std::string_view heading() const;
    /// The name that is saved: without white space at the ends, and never blank.
    [[nodiscard]] std::string shownName() const;
    /// That name in one line, for the preview.
    [[nodiscard]] std::string previewName() const;
    /// The colours that are chosen.
    [[nodiscard]] const ProfileLook& look() const { return ProfileLook::at(color.get()); }
    /// The symbols that match what is searched for.
    [[nodiscard]] std::vector<std::string_view> icons() const;
    /// How many they are: "102 TO CHOOSE FROM".
    [[nodiscard]] std::string iconsLabel() const;
    /// The title of the main button, in one line.
    [[nodiscard]] std::string saveTitle() const;

    // What is done.
    /// Saves the profile, and then calls `done` with it. One that was deleted meanwhile stays so.
    void save();
    void cancel();

    /// Calls `slot` after each change of anything that shows.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    [[nodiscard]] Profile edited() const;
    void changed() { changed_.emit(); }

    ProfileStore& profiles_;
    const bool isNew_;
    const Profile start_;  ///< what the fields began with
    std::optional<Done> done_;
    sigc::signal<void()> changed_;
};

}  // namespace orvu

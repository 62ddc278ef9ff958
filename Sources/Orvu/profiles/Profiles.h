#pragma once

#include "foundation/json/Json.h"
#include "foundation/Signal.h"
#include "platform/UserDefaults.h"
#include "profiles/SettingsKeys.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// A named, coloured identity with its own tabs, history, bookmarks and website data.
struct Profile {
    Uuid id;                 ///< never changes; names the profile's website data
    std::string name;        ///< trimmed when stored
    std::string icon;        ///< a symbol's name
    std::int64_t color = 0;  ///< index into `ProfileLook::all`; `ProfileLook::at` copes with any

    /// The identity of the one profile that can't be deleted.
    static const Uuid personalID;
    /// The profile of a program that was never told of any.
    [[nodiscard]] static Profile personal();

    [[nodiscard]] static std::optional<Profile> decode(const JsonValue& value);
    void encode(JsonWriter& writer) const;
    friend bool operator==(const Profile&, const Profile&) = default;
};

/// The key under which a profile's own value stands: the base key for the personal profile, and
/// the base key, a full stop and the identifier for the others.
[[nodiscard]] std::string scopedKey(std::string_view base, const Profile& profile);

/// The list of profiles, in order of creation. Never empty.
class ProfileStore {
public:
    static constexpr std::string_view key = SettingsKeys::orvuProfiles.name;
    /// Deletes the website data of a profile.
    using RemoveWebsiteData = std::function<void(const Uuid&)>;

    /// Reads the stored list; without a good one there is the personal profile alone, and
    /// nothing is written before the first change. `defaults` must outlive the store.
    ProfileStore(UserDefaults& defaults, RemoveWebsiteData removeWebsiteData);

    [[nodiscard]] const std::vector<Profile>& profiles() const { return profiles_; }
    /// The profile with that identity, or the personal one.
    [[nodiscard]] Profile profile(const std::optional<Uuid>& id) const;
    /// The personal profile, or the first of the list if it holds none.
    [[nodiscard]] Profile personal() const;
    /// A profile to begin with, not yet in the list: without a name, and with a colour that
    /// none of the last eleven new ones had.
    [[nodiscard]] Profile newProfile() const;

    /// Adds a profile at the end. One of a known identity has no effect.
    void add(const Profile& profile);
    /// Replaces the profile of the same identity whole. An unknown one has no effect.
    void update(const Profile& profile);
    /// Removes a profile with its stored values and website data. The personal one stays.
    void remove(const Profile& profile);
    /// Whether a profile was removed since the program began. Whoever still shows it writes nothing
    /// of it any more, or it would come back.
    [[nodiscard]] bool wasRemoved(const Uuid& id) const;

    sigc::connection connectChanged(const sigc::slot<void()>& slot);

private:
    void save();

    UserDefaults& defaults_;
    RemoveWebsiteData removeWebsiteData_;
    std::vector<Profile> profiles_;
    std::vector<Uuid> removed_;
    sigc::signal<void()> changed_;
};

}  // namespace orvu

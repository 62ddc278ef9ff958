#pragma once

#include <array>
#include <string_view>

namespace orvu {

enum class SettingScope {
    global,   ///< one value for all profiles
    profile,  ///< each profile has its own value, see `scopedKey`
};

enum class SettingType { string, boolean, number, integer, json };

/// One named value that the program keeps between runs.
struct SettingKey {
    std::string_view name;
    SettingScope scope = SettingScope::global;
    SettingType type = SettingType::string;
    std::string_view unset;  ///< what counts when there is no value
};

/// The keys, each with its one mention in the program. Values under any of them are read with
/// distrust: a value of another type, or one that does not parse, counts as absent.
struct SettingsKeys {
private:
    using enum SettingScope;
    using enum SettingType;

public:
    // Settings, see `Settings`.
    static constexpr SettingKey searchEngine{"searchEngine", global, string, "google"};
    static constexpr SettingKey searchSuggestions{"searchSuggestions", global, boolean, "true"};
    static constexpr SettingKey searchAnswers{"searchAnswers", global, boolean, "true"};
    static constexpr SettingKey searchAnswerOpen{"searchAnswerOpen", global, boolean, "true"};
    static constexpr SettingKey restoreTabs{"restoreTabs", global, boolean, "true"};
    static constexpr SettingKey blockTrackers{"blockTrackers", global, boolean, "true"};
    static constexpr SettingKey kestoReadsPages{"kestoReadsPages", global, boolean, "true"};
    static constexpr SettingKey narrowTabs{"narrowTabs", global, boolean, "false"};
    static constexpr SettingKey autoUpdate{"autoUpdate", global, boolean, "not decided yet"};
    static constexpr SettingKey readerSize{"readerSize", global, number, "18.0"};
    static constexpr SettingKey readerTheme{"readerTheme", global, string, "paper"};
    static constexpr SettingKey onboarded{"onboarded", global, boolean, "false"};
    static constexpr SettingKey launchCount{"launchCount", global, integer, "0"};
    static constexpr SettingKey lastProfile{"lastProfile", global, string, "unset"};
    static constexpr SettingKey showWhatsNewFor{"showWhatsNewFor", global, string, "unset"};
    static constexpr SettingKey orvuWindow{"OrvuWindow", global, string, "unset"};

    // Documents, which their stores read and write whole.
    static constexpr SettingKey orvuProfiles{"orvuProfiles", global, json,
                                             "default personal profile"};
    static constexpr SettingKey kestoSkills{"kestoSkills", global, json, "empty"};
    static constexpr SettingKey orvuSitePermissions{"orvuSitePermissions", global, json, "empty"};
    static constexpr SettingKey browserVisits{"browserVisits", profile, json, "empty"};
    static constexpr SettingKey browserShelf{"browserShelf", profile, json, "empty"};
    static constexpr SettingKey browserSession{"browserSession", profile, json, "empty"};
    static constexpr SettingKey browserGroups{"browserGroups", profile, json, "empty"};
    static constexpr SettingKey orvuBookmarks{"orvuBookmarks", profile, json, "empty"};
};

/// All keys of the program. The profile-scoped ones stand in the order in which they are removed
/// with their profile.
inline constexpr std::array settingKeys{
    SettingsKeys::searchEngine,    SettingsKeys::searchSuggestions,
    SettingsKeys::searchAnswers,   SettingsKeys::searchAnswerOpen,
    SettingsKeys::restoreTabs,     SettingsKeys::blockTrackers,
    SettingsKeys::kestoReadsPages, SettingsKeys::narrowTabs,
    SettingsKeys::autoUpdate,      SettingsKeys::readerSize,
    SettingsKeys::readerTheme,     SettingsKeys::onboarded,
    SettingsKeys::launchCount,     SettingsKeys::lastProfile,
    SettingsKeys::showWhatsNewFor, SettingsKeys::orvuProfiles,
    SettingsKeys::kestoSkills,     SettingsKeys::orvuSitePermissions,
    SettingsKeys::orvuWindow,      SettingsKeys::browserVisits,
    SettingsKeys::browserShelf,    SettingsKeys::browserSession,
    SettingsKeys::browserGroups,   SettingsKeys::orvuBookmarks,
};

/// The documents that change with each page and each closed tab.
inline constexpr std::array passingDocuments{SettingsKeys::browserSession,
                                             SettingsKeys::browserGroups};

}  // namespace orvu

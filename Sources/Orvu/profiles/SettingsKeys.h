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

/// All keys of the program. Values under any of them are read with distrust: a value of another
/// type, or one that does not parse, counts as absent. The profile-scoped ones stand in the
/// order in which they are removed with their profile.
inline constexpr std::array settingKeys{
    SettingKey{"searchEngine", SettingScope::global, SettingType::string, "google"},
    SettingKey{"searchSuggestions", SettingScope::global, SettingType::boolean, "true"},
    SettingKey{"searchAnswers", SettingScope::global, SettingType::boolean, "true"},
    SettingKey{"searchAnswerOpen", SettingScope::global, SettingType::boolean, "true"},
    SettingKey{"restoreTabs", SettingScope::global, SettingType::boolean, "true"},
    SettingKey{"blockTrackers", SettingScope::global, SettingType::boolean, "true"},
    SettingKey{"kestoReadsPages", SettingScope::global, SettingType::boolean, "true"},
    SettingKey{"narrowTabs", SettingScope::global, SettingType::boolean, "false"},
    SettingKey{"autoUpdate", SettingScope::global, SettingType::boolean, "not decided yet"},
    SettingKey{"readerSize", SettingScope::global, SettingType::number, "18.0"},
    SettingKey{"readerTheme", SettingScope::global, SettingType::string, "paper"},
    SettingKey{"onboarded", SettingScope::global, SettingType::boolean, "false"},
    SettingKey{"launchCount", SettingScope::global, SettingType::integer, "0"},
    SettingKey{"lastProfile", SettingScope::global, SettingType::string, "unset"},
    SettingKey{"showWhatsNewFor", SettingScope::global, SettingType::string, "unset"},
    SettingKey{"orvuProfiles", SettingScope::global, SettingType::json, "default personal profile"},
    SettingKey{"kestoSkills", SettingScope::global, SettingType::json, "empty"},
    SettingKey{"orvuSitePermissions", SettingScope::global, SettingType::json, "empty"},
    SettingKey{"OrvuWindow", SettingScope::global, SettingType::string, "unset"},
    SettingKey{"browserVisits", SettingScope::profile, SettingType::json, "empty"},
    SettingKey{"browserShelf", SettingScope::profile, SettingType::json, "empty"},
    SettingKey{"browserSession", SettingScope::profile, SettingType::json, "empty"},
    SettingKey{"browserGroups", SettingScope::profile, SettingType::json, "empty"},
    SettingKey{"orvuBookmarks", SettingScope::profile, SettingType::json, "empty"},
};

}  // namespace orvu

#include "profiles/SettingsKeys.h"

#include "profiles/Profiles.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace orvu {
namespace {

std::vector<std::string_view> names(SettingScope scope) {
    std::vector<std::string_view> result;
    for (const auto& setting : settingKeys) {
        if (setting.scope == scope) result.push_back(setting.name);
    }
    return result;
}

/// The keys of a type, each with what counts when it has no value.
std::vector<std::pair<std::string_view, std::string_view>> unset(SettingType type) {
    std::vector<std::pair<std::string_view, std::string_view>> result;
    for (const auto& setting : settingKeys) {
        if (setting.type == type) result.emplace_back(setting.name, setting.unset);
    }
    return result;
}

using Defaults = std::vector<std::pair<std::string_view, std::string_view>>;

TEST(SettingsKeysTest, ProfileScopedKeysStandInTheOrderOfTheirRemoval) {
    EXPECT_EQ(names(SettingScope::profile),
              (std::vector<std::string_view>{"browserVisits", "browserShelf", "browserSession",
                                             "browserGroups", "orvuBookmarks"}));
}

TEST(SettingsKeysTest, AllOtherKeysAreGlobal) {
    EXPECT_EQ(
        names(SettingScope::global),
        (std::vector<std::string_view>{
            "searchEngine", "searchSuggestions", "searchAnswers", "searchAnswerOpen", "restoreTabs",
            "blockTrackers", "kestoReadsPages", "narrowTabs", "autoUpdate", "readerSize",
            "readerTheme", "onboarded", "launchCount", "lastProfile", "showWhatsNewFor",
            "orvuProfiles", "kestoSkills", "orvuSitePermissions", "OrvuWindow"}));
}

TEST(SettingsKeysTest, SwitchesHaveTheirDefaults) {
    EXPECT_EQ(unset(SettingType::boolean), (Defaults{{"searchSuggestions", "true"},
                                                     {"searchAnswers", "true"},
                                                     {"searchAnswerOpen", "true"},
                                                     {"restoreTabs", "true"},
                                                     {"blockTrackers", "true"},
                                                     {"kestoReadsPages", "true"},
                                                     {"narrowTabs", "false"},
                                                     {"autoUpdate", "not decided yet"},
                                                     {"onboarded", "false"}}));
}

TEST(SettingsKeysTest, TextsAndNumbersHaveTheirDefaults) {
    EXPECT_EQ(unset(SettingType::string), (Defaults{{"searchEngine", "google"},
                                                    {"readerTheme", "paper"},
                                                    {"lastProfile", "unset"},
                                                    {"showWhatsNewFor", "unset"},
                                                    {"OrvuWindow", "unset"}}));
    EXPECT_EQ(unset(SettingType::number), (Defaults{{"readerSize", "18.0"}}));
    EXPECT_EQ(unset(SettingType::integer), (Defaults{{"launchCount", "0"}}));
}

TEST(SettingsKeysTest, DocumentsAreEmptyButForTheProfiles) {
    EXPECT_EQ(unset(SettingType::json), (Defaults{{"orvuProfiles", "default personal profile"},
                                                  {"kestoSkills", "empty"},
                                                  {"orvuSitePermissions", "empty"},
                                                  {"browserVisits", "empty"},
                                                  {"browserShelf", "empty"},
                                                  {"browserSession", "empty"},
                                                  {"browserGroups", "empty"},
                                                  {"orvuBookmarks", "empty"}}));
}

TEST(SettingsKeysTest, NamesAreUnique) {
    std::set<std::string_view> seen;
    for (const auto& setting : settingKeys) seen.insert(setting.name);

    EXPECT_EQ(seen.size(), settingKeys.size());
}

TEST(SettingsKeysTest, TheListOfProfilesHasAKeyOfTheTable) {
    EXPECT_EQ(ProfileStore::key, "orvuProfiles");
}

}  // namespace
}  // namespace orvu

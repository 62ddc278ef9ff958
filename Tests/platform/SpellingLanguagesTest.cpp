#include "platform/SpellingLanguages.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using Names = std::vector<std::string>;

TEST(SpellingLanguagesTest, TheOrderIsThePersons) {
    EXPECT_EQ(spellingLanguages({"fr_CA", "de_DE", "en_GB"}), (Names{"fr_CA", "de_DE", "en_GB"}));
}

TEST(SpellingLanguagesTest, EncodingsAndVariantsAreCut) {
    EXPECT_EQ(spellingLanguages({"de_AT.UTF-8@euro", "sr_RS@latin", "en.ISO-8859-1"}),
              (Names{"de_AT", "sr_RS", "en"}));
}

TEST(SpellingLanguagesTest, WhatOneLocaleStandsForIsOneLanguage) {
    EXPECT_EQ(spellingLanguages({"de_DE.UTF-8", "de_DE", "de.UTF-8", "de", "C"}), Names{"de_DE"});
}

TEST(SpellingLanguagesTest, ALanguageBeforeItsRegionKeepsBoth) {
    EXPECT_EQ(spellingLanguages({"pt", "pt_BR"}), (Names{"pt", "pt_BR"}));
}

TEST(SpellingLanguagesTest, LanguagesThatOnlyBeginAlikeAreTwo) {
    EXPECT_EQ(spellingLanguages({"fil_PH", "fi"}), (Names{"fil_PH", "fi"}));
}

TEST(SpellingLanguagesTest, TheLocaleOfComputersNamesNone) {
    EXPECT_EQ(spellingLanguages({"C.UTF-8", "C", "POSIX"}), Names{});
    EXPECT_EQ(spellingLanguages({}), Names{});
}

TEST(SpellingLanguagesTest, ThereAreAtMostThree) {
    EXPECT_EQ(spellingLanguages({"en_US", "de_DE", "fr_FR", "it_IT"}),
              (Names{"en_US", "de_DE", "fr_FR"}));
}

TEST(SpellingLanguagesTest, WhatNamesNoLanguageIsLeftOut) {
    EXPECT_EQ(spellingLanguages({"", "_", "_DE", "de_", "DE", "de_de", "de_DEU", "d", "deutsch",
                                 "../../etc", "de/DE", "de DE", "d\xc3\xa9", ".UTF-8", "@euro",
                                 std::string("de\0", 3), std::string(100'000, 'a')}),
              Names{});
}

}  // namespace
}  // namespace orvu

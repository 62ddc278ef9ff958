#include "foundation/text/Locale.h"

#include "foundation/RandomText.h"
#include "foundation/text/Text.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>

namespace orvu {
namespace {

using namespace std::chrono_literals;
using Environment = Locale::Environment;
using Tags = std::vector<std::string>;

Tags languages(const Environment& environment) { return Locale{environment}.preferredLanguages(); }

/// Five past three in the afternoon of 2025-10-07, in UTC.
Date afternoon() {
    const auto day = std::chrono::sys_days{2025y / std::chrono::October / 7};
    return Date::fromUnixSeconds(
        std::chrono::duration<double>(day.time_since_epoch() + 15h + 5min).count());
}

TEST(LocaleTest, TheNameOfALocaleBecomesATag) {
    EXPECT_EQ(languages({.lang = "de_DE.UTF-8"}), Tags{"de-DE"});
    EXPECT_EQ(languages({.lang = "de_DE@euro"}), Tags{"de-DE"});
    EXPECT_EQ(languages({.lang = "fr"}), Tags{"fr"});
    EXPECT_EQ(languages({.lang = "PT_br"}), Tags{"pt-BR"});
    EXPECT_EQ(languages({.lang = "es-419"}), Tags{"es-419"});
    EXPECT_EQ(languages({.lang = "sr_RS.UTF-8@latin"}), Tags{"sr-Latn-RS"});
    EXPECT_EQ(languages({.lang = "ast_ES"}), Tags{"ast-ES"});
}

TEST(LocaleTest, AnEnvironmentWithoutALanguageIsEnglish) {
    for (const auto* name : {"", "C", "POSIX", "C.UTF-8", "c.utf8"}) {
        EXPECT_EQ(languages({.lang = name}), Tags{"en"}) << name;
        EXPECT_EQ(languages({.all = name, .language = "de"}), Tags{"en"}) << name;
    }
}

TEST(LocaleTest, OneNameForAllComesBeforeThatOfMessagesAndThatBeforeTheGeneralOne) {
    EXPECT_EQ(languages({.all = "it", .messages = "fr", .lang = "de"}), Tags{"it"});
    EXPECT_EQ(languages({.messages = "fr", .lang = "de"}), Tags{"fr"});
    EXPECT_EQ(languages({.time = "fr", .lang = "de"}), Tags{"de"});
    EXPECT_EQ(languages({.messages = "C", .lang = "de"}), Tags{"en"});
}

TEST(LocaleTest, TheListOfLanguagesIsTakenInItsOrder) {
    EXPECT_EQ(languages({.lang = "de_DE", .language = "de_AT:de:en_GB:en"}),
              (Tags{"de-AT", "de", "en-GB", "en"}));
    EXPECT_EQ(languages({.lang = "de_DE", .language = "fr::C:fr:it"}), (Tags{"fr", "it"}));
    EXPECT_EQ(languages({.lang = "de_DE", .language = ":"}), Tags{"de-DE"});
}

TEST(LocaleTest, TheListDoesNotCountWithoutATranslation) {
    EXPECT_EQ(languages({.lang = "C", .language = "fr:de"}), Tags{"en"});
    EXPECT_EQ(languages({.language = "fr:de"}), Tags{"en"});
}

TEST(LocaleTest, NamesThatAreNoNamesAreLeftOut) {
    for (const auto* name : {"d", "deutsch", "d3", "de_", "de_D", "de_DEU", "de_D1", "é", "../../x",
                             "de_DE_x", "de\r\nCookie: a=b", "_DE", ".UTF-8", "@euro"}) {
        EXPECT_EQ(languages({.lang = name}), Tags{"en"}) << name;
    }
}

TEST(LocaleTest, WhateverTheEnvironmentSaysATagIsOne) {
    RandomText random{51};
    const auto isPlain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '-';
    };
    for (int i = 0; i < 2000; ++i) {
        const Environment environment{.lang = joined({"de_", random.text(2)}),
                                      .language = joined({random.bytes(9), ":", random.text(6)})};

        for (const auto& tag : languages(environment)) {
            EXPECT_TRUE(!tag.empty() && std::ranges::all_of(tag, isPlain)) << tag;
        }
    }
}

TEST(LocaleTest, AShortTimeIsWrittenAsIsTheCustom) {
    const Calendar utc{"UTC"};

    EXPECT_EQ(Locale{{.lang = "de_DE.UTF-8"}}.shortTime(afternoon(), utc), "15:05");
    EXPECT_EQ(Locale{{.lang = "en_GB"}}.shortTime(afternoon(), utc), "15:05");
    EXPECT_EQ(Locale{{.lang = "fi"}}.shortTime(afternoon(), utc), "15.05");
    const auto american = Locale{{.lang = "en_US"}}.shortTime(afternoon(), utc);
    EXPECT_TRUE(american.starts_with("3:05") && american.ends_with("PM")) << american;
    EXPECT_EQ(Locale{{}}.shortTime(afternoon(), utc), american);
}

TEST(LocaleTest, AShortTimeIsThatOfTheCalendarsZone) {
    const Locale german{{.lang = "de_DE"}};

    EXPECT_EQ(german.shortTime(afternoon(), Calendar{"Europe/Berlin"}), "17:05");
    EXPECT_EQ(german.shortTime(afternoon(), Calendar{"America/New_York"}), "11:05");
    EXPECT_EQ(german.shortTime(afternoon(), Calendar{"Asia/Kathmandu"}), "20:50");
    EXPECT_EQ(german.shortTime(afternoon(), Calendar{"Nowhere/At_All"}), "15:05");
    EXPECT_EQ(german.shortTime(afternoon(), Calendar{"UTC"}), "15:05");
}

TEST(LocaleTest, TheCustomOfTimesHasANameOfItsOwn) {
    const Calendar utc{"UTC"};

    EXPECT_EQ((Locale{{.time = "fi_FI", .lang = "de"}}.shortTime(afternoon(), utc)), "15.05");
    EXPECT_EQ((Locale{{.all = "de", .time = "fi_FI"}}.shortTime(afternoon(), utc)), "15:05");
    EXPECT_EQ((Locale{{.messages = "fi_FI", .lang = "de"}}.shortTime(afternoon(), utc)), "15:05");
}

TEST(LocaleTest, ACompleteDateIsWrittenAsIsTheCustomAndHasNoTime) {
    const Calendar utc{"UTC"};

    EXPECT_EQ(Locale{{.lang = "en_US"}}.completeDate(afternoon(), utc), "Tuesday, October 7, 2025");
    EXPECT_EQ(Locale{{}}.completeDate(afternoon(), utc), "Tuesday, October 7, 2025");
    EXPECT_EQ(Locale{{.lang = "de_DE"}}.completeDate(afternoon(), utc),
              "Dienstag, 7. Oktober 2025");
    EXPECT_EQ(Locale{{.lang = "fr_FR"}}.completeDate(afternoon(), utc), "mardi 7 octobre 2025");
    EXPECT_EQ((Locale{{.time = "ja_JP", .lang = "de"}}.completeDate(afternoon(), utc)),
              "2025年10月7日火曜日");
}

TEST(LocaleTest, ACompleteDateIsThatOfTheCalendarsZone) {
    const Locale german{{.lang = "de_DE"}};

    EXPECT_EQ(german.completeDate(afternoon(), Calendar{"Pacific/Kiritimati"}),
              "Mittwoch, 8. Oktober 2025");
    EXPECT_EQ(german.completeDate(afternoon(), Calendar{"UTC"}), "Dienstag, 7. Oktober 2025");
}

TEST(LocaleTest, CopiesTellTheTimeIndependently) {
    const Locale german{{.lang = "de_DE"}};
    const Locale copy = german;

    EXPECT_EQ(copy.shortTime(afternoon(), Calendar{"UTC"}), "15:05");
    EXPECT_EQ(german.shortTime(afternoon(), Calendar{"Europe/Berlin"}), "17:05");
    EXPECT_EQ(copy.shortTime(afternoon(), Calendar{"UTC"}), "15:05");
}

TEST(LocaleTest, EveryDateHasATimeOrNone) {
    const Locale german{{.lang = "de_DE"}};
    for (const double seconds :
         {0.0, -1e12, 1e15, 1e18, -1e300, 1e300, std::numeric_limits<double>::max()}) {
        const auto time = german.shortTime(Date{seconds}, Calendar{"Europe/Berlin"});

        EXPECT_TRUE(time.empty() || characterCount(time) == 5) << time;
    }
}

TEST(LocaleTest, TheCurrentOneNamesALanguage) {
    const Locale current = Locale::current();

    ASSERT_FALSE(current.preferredLanguages().empty());
    EXPECT_FALSE(current.preferredLanguages()[0].empty());
}

}  // namespace
}  // namespace orvu

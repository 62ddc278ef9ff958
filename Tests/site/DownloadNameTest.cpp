#include "site/downloads/DownloadName.h"

#include "foundation/RandomText.h"
#include "foundation/text/Text.h"

#include <gtest/gtest.h>

#include <array>
#include <set>

namespace orvu {
namespace {

/// The name that a file gets where these names stand already.
std::string nameBeside(std::string_view suggested, const std::set<std::string>& taken) {
    return DownloadName::free(DownloadName::safe(suggested),
                              [&](const std::string& name) { return taken.contains(name); });
}

TEST(DownloadNameTest, AnOrdinaryNameStays) {
    for (const std::string_view name : {"report.pdf", "Straße – süß.txt", "日本語.zip",
                                        "a b.tar.gz", "~", "-rf", "100%.txt", "a~", "con", "x."}) {
        EXPECT_EQ(DownloadName::safe(name), name);
    }
}

TEST(DownloadNameTest, APathInTheNameLeadsNowhere) {
    EXPECT_EQ(DownloadName::safe("/etc/passwd"), "passwd");
    EXPECT_EQ(DownloadName::safe("../../a.sh"), "a.sh");
    EXPECT_EQ(DownloadName::safe("a//b"), "b");
}

TEST(DownloadNameTest, ANameThatEndsInASlashHasNothingToUse) {
    EXPECT_EQ(DownloadName::safe("folder/"), "download");
    EXPECT_EQ(DownloadName::safe("/"), "download");
}

TEST(DownloadNameTest, ABackslashIsALetterLikeAnyOther) {
    EXPECT_EQ(DownloadName::safe(R"(..\..\a.exe)"), "download");
    EXPECT_EQ(DownloadName::safe(R"(C:\a.exe)"), R"(C-\a.exe)");
}

TEST(DownloadNameTest, ANameBeginningWithADotIsSavedAsDownload) {
    for (const std::string_view name : {".bashrc", ".", "..", "...", "a/.profile"}) {
        EXPECT_EQ(DownloadName::safe(name), "download") << name;
    }
}

TEST(DownloadNameTest, WhatDoesNotShowCannotStandBeforeTheDot) {
    EXPECT_EQ(DownloadName::safe("\x01.bashrc"), "download");
    EXPECT_EQ(DownloadName::safe("\u202E.bashrc"), "download");
    EXPECT_EQ(DownloadName::safe(std::string_view{"\0.bashrc", 8}), "download");
}

TEST(DownloadNameTest, AnEmptyOrBlankNameIsSavedAsDownload) {
    for (const std::string_view name : {"", " ", "\u00A0\u3000", "\t\n"}) {
        EXPECT_EQ(DownloadName::safe(name), "download");
    }
}

TEST(DownloadNameTest, AColonBecomesAHyphen) {
    EXPECT_EQ(DownloadName::safe("12:30:05.txt"), "12-30-05.txt");
    EXPECT_EQ(DownloadName::safe(":"), "-");
}

TEST(DownloadNameTest, CharactersThatDoNotPrintAreLeftOut) {
    EXPECT_EQ(DownloadName::safe("a\nb\x7F\tc\u0085d\u2028.txt"), "abcd.txt");
}

TEST(DownloadNameTest, NothingTurnsTheDirectionOfTheExtension) {
    EXPECT_EQ(DownloadName::safe("holiday\u202Egpj.exe"), "holidaygpj.exe");
    EXPECT_EQ(DownloadName::safe("a\u2066b\u2069\u202A.txt"), "ab.txt");
}

TEST(DownloadNameTest, BytesThatAreNoTextAreReplaced) {
    EXPECT_EQ(DownloadName::safe("a\xFF.txt"), "a\uFFFD.txt");
}

TEST(DownloadNameTest, ASecondFileOfANameGetsTwoBeforeItsExtensionAndAThirdThree) {
    EXPECT_EQ(nameBeside("report.pdf", {}), "report.pdf");
    EXPECT_EQ(nameBeside("report.pdf", {"report.pdf"}), "report 2.pdf");
    EXPECT_EQ(nameBeside("report.pdf", {"report.pdf", "report 2.pdf"}), "report 3.pdf");
    EXPECT_EQ(nameBeside("report.pdf", {"report 2.pdf"}), "report.pdf");
}

TEST(DownloadNameTest, OfTwoExtensionsTheNumberGoesInFrontOfTheLast) {
    EXPECT_EQ(nameBeside("a.tar.gz", {"a.tar.gz"}), "a.tar 2.gz");
}

TEST(DownloadNameTest, ANameWithoutExtensionGetsTwoWithoutADot) {
    EXPECT_EQ(nameBeside("README", {"README"}), "README 2");
    EXPECT_EQ(nameBeside("end.", {"end."}), "end. 2");
    EXPECT_EQ(nameBeside("download", {"download"}), "download 2");
}

TEST(DownloadNameTest, ALongNameIsCutAndKeepsItsExtension) {
    const std::string name = joined({repeated("a", 300), ".pdf"});

    EXPECT_EQ(DownloadName::numbered(name, 1), joined({repeated("a", 251), ".pdf"}));
    EXPECT_EQ(DownloadName::numbered(name, 2), joined({repeated("a", 249), " 2.pdf"}));
    EXPECT_EQ(DownloadName::numbered(name, 1000), joined({repeated("a", 246), " 1000.pdf"}));
}

TEST(DownloadNameTest, ANameOfJustTheLengthThatFitsStays) {
    const std::string name = joined({repeated("a", 251), ".pdf"});

    EXPECT_EQ(DownloadName::numbered(name, 1), name);
}

TEST(DownloadNameTest, ALongNameIsCutAtACharacter) {
    EXPECT_EQ(DownloadName::numbered(joined({repeated("é", 200), ".txt"}), 1),
              joined({repeated("é", 125), ".txt"}));
    EXPECT_EQ(DownloadName::numbered(repeated("👩‍👩‍👧", 20), 1),
              repeated("👩‍👩‍👧", 14));
}

TEST(DownloadNameTest, OneCharacterThatIsTooLongIsCutBetweenItsParts) {
    const std::string name = joined({"e", repeated("\u0301", 200), ".txt"});

    EXPECT_EQ(DownloadName::numbered(name, 1), joined({"e", repeated("\u0301", 125), ".txt"}));
}

TEST(DownloadNameTest, AnExtensionThatLeavesNoRoomIsCutLikeTheRest) {
    const std::string name = joined({"a.", repeated("x", 300)});

    EXPECT_EQ(DownloadName::numbered(name, 1), name.substr(0, 255));
    EXPECT_EQ(DownloadName::numbered(name, 2), name.substr(0, 253) + " 2");
}

TEST(DownloadNameTest, NoNameEverHidesLeavesItsFolderOrMeetsAnother) {
    RandomText random{7};
    constexpr std::array<std::string_view, 14> odd{".",
                                                   "..",
                                                   "/",
                                                   "\\",
                                                   ":",
                                                   "\u202E",
                                                   ".tar.gz",
                                                   "é",
                                                   "👩‍👩‍👧",
                                                   "e\u0301",
                                                   " ",
                                                   "\x01",
                                                   "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa",
                                                   ".xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"};
    for (int i = 0; i < 20000; ++i) {
        std::string suggested = random.below(4) == 0 ? random.bytes(400) : random.text(20);
        for (auto left = random.below(12); left > 0; --left) {
            suggested.insert(random.below(suggested.size() + 1), odd[random.below(odd.size())]);
        }
        std::set<std::string> taken;

        for (int copy = 0; copy < 12; ++copy) {
            const auto name = nameBeside(suggested, taken);

            ASSERT_FALSE(name.empty());
            ASSERT_FALSE(name.starts_with('.')) << name;
            ASSERT_EQ(name.find('/'), std::string::npos) << name;
            ASSERT_EQ(name.find('\0'), std::string::npos) << name;
            ASSERT_LE(name.size(), DownloadName::maxBytes) << name;
            ASSERT_TRUE(isWellFormed(name));
            ASSERT_TRUE(taken.insert(name).second) << name;
        }
    }
}

}  // namespace
}  // namespace orvu

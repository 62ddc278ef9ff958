#include "profiles/ProfileIcons.h"

#include "foundation/RandomText.h"
#include "support/SymbolTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

namespace orvu {
namespace {

using Symbols = std::vector<std::string_view>;

Symbols allSymbols() {
    Symbols all;
    for (const auto& row : ProfileIcons::all) all.push_back(row.symbol);
    return all;
}

std::vector<std::string> wordsOf(const ProfileIcons::Row& row) {
    std::istringstream text{std::string{row.words}};
    return {std::istream_iterator<std::string>{text}, {}};
}

std::string_view wordsOf(std::string_view symbol) {
    const auto* const row =
        std::ranges::find(ProfileIcons::all, symbol, &ProfileIcons::Row::symbol);
    return row == ProfileIcons::all.end() ? "no such symbol" : std::string_view{row->words};
}

/// Words, parts of words and pieces that stand nowhere.
std::string randomPiece(RandomText& random) {
    const auto& row = ProfileIcons::all[random.below(ProfileIcons::all.size())];
    const std::string_view from = random.below(2) == 0 ? row.words : row.symbol;
    const auto begin = random.below(from.size());
    std::string piece{from.substr(begin, 1 + random.below(4))};
    std::erase(piece, ' ');
    return random.below(10) == 0 ? "q" + piece : piece;
}

TEST(ProfileIconsTest, EachSymbolStandsOnceAndHasADrawing) {
    std::set<std::string> drawn;
    for (const auto& [symbol, icon] : symbolTable()) drawn.insert(symbol);
    std::set<std::string_view> seen;

    for (const auto& row : ProfileIcons::all) {
        EXPECT_TRUE(drawn.contains(std::string{row.symbol})) << row.symbol;
        EXPECT_TRUE(seen.insert(row.symbol).second) << row.symbol;
    }
    EXPECT_EQ(seen.size(), 102U);
}

TEST(ProfileIconsTest, TheCatalogueBeginsAndEndsWithTheseSymbols) {
    const Symbols all = allSymbols();

    EXPECT_EQ((Symbols{all.begin(), all.begin() + 4}),
              (Symbols{"person.fill", "briefcase.fill", "graduationcap.fill", "house.fill"}));
    EXPECT_EQ(
        (Symbols{all.end() - 4, all.end()}),
        (Symbols{"tray.full.fill", "square.grid.2x2.fill", "circle.hexagongrid.fill", "infinity"}));
}

TEST(ProfileIconsTest, EachRowHasTwoOrThreeWordsInLowerCaseBetweenSingleSpaces) {
    for (const auto& row : ProfileIcons::all) {
        const auto words = wordsOf(row);
        std::string spaced;
        for (const auto& word : words) spaced += (spaced.empty() ? "" : " ") + word;

        EXPECT_EQ(row.words, spaced);
        EXPECT_GE(words.size(), 2U) << row.symbol;
        EXPECT_LE(words.size(), 3U) << row.symbol;
        const std::string_view letters = row.words;
        EXPECT_EQ(letters.find_first_not_of("abcdefghijklmnopqrstuvwxyz "), std::string_view::npos)
            << letters;
        EXPECT_EQ((std::set<std::string>{words.begin(), words.end()}.size()), words.size())
            << letters;
    }
}

TEST(ProfileIconsTest, WellKnownRowsHaveTheirWords) {
    const std::map<std::string_view, std::string_view> known{
        {"person.fill", "person me personal"},
        {"briefcase.fill", "work job office"},
        {"chevron.left.forwardslash.chevron.right", "code dev programming"},
        {"sparkles", "magic sparkle ai"},
        {"lock.fill", "private lock secure"},
        {"laptopcomputer", "laptop computer mac"},
        {"infinity", "infinity loop"}};

    for (const auto& [symbol, words] : known) EXPECT_EQ(wordsOf(symbol), words);
}

TEST(ProfileIconsTest, WithoutAWordEveryRowStays) {
    for (const std::string_view blank : {"", " ", " \t ", "\u00A0\u3000"}) {
        EXPECT_EQ(ProfileIcons::icons(blank), allSymbols());
    }
}

TEST(ProfileIconsTest, SeaFindsAnchorBoatAndFish) {
    EXPECT_EQ(ProfileIcons::icons("sea"), (Symbols{"anchor", "sailboat.fill", "fish.fill"}));
}

TEST(ProfileIconsTest, EachWordMustMatchInAnyOrder) {
    EXPECT_EQ(ProfileIcons::icons("private lock"), Symbols{"lock.fill"});
    EXPECT_EQ(ProfileIcons::icons("lock private"), Symbols{"lock.fill"});
    EXPECT_EQ(ProfileIcons::icons("private sea"), Symbols{});
}

TEST(ProfileIconsTest, TheSymbolsNameCountsToo) {
    EXPECT_EQ(ProfileIcons::icons("2x2"), Symbols{"square.grid.2x2.fill"});
    EXPECT_EQ(ProfileIcons::icons("snow.flake"), Symbols{});
    EXPECT_GT(ProfileIcons::icons("fill").size(), 75U);
    EXPECT_LT(ProfileIcons::icons("fill").size(), 102U);
}

TEST(ProfileIconsTest, AWordMayMatchInTheWordsAndAnotherInTheName) {
    EXPECT_EQ(ProfileIcons::icons("sea fill"), (Symbols{"sailboat.fill", "fish.fill"}));
}

TEST(ProfileIconsTest, AWordDoesNotReachFromOneColumnIntoTheOther) {
    EXPECT_EQ(ProfileIcons::icons("lockprivate"), Symbols{});
    EXPECT_EQ(ProfileIcons::icons("loopinfinity"), Symbols{});
}

TEST(ProfileIconsTest, CaseAndBlanksAroundDoNotCount) {
    EXPECT_EQ(ProfileIcons::icons("  SEA\t\u00A0Fill "), (Symbols{"sailboat.fill", "fish.fill"}));
    EXPECT_EQ(ProfileIcons::icons("İ"), Symbols{});
}

TEST(ProfileIconsTest, TextsOfAnyKindFindNothingOrRows) {
    EXPECT_EQ(ProfileIcons::icons("\xFF"), Symbols{});
    EXPECT_EQ(ProfileIcons::icons("日本"), Symbols{});
    EXPECT_EQ(ProfileIcons::icons(std::string_view{"\0", 1}), Symbols{});
    EXPECT_EQ(ProfileIcons::icons(repeated("lock ", 100'000)), Symbols{"lock.fill"});
}

TEST(ProfileIconsTest, EveryRowIsFoundByEachOfItsWordsAndByAllOfThem) {
    const auto finds = [](std::string_view search, std::string_view symbol) {
        const auto found = ProfileIcons::icons(search);
        return std::ranges::find(found, symbol) != found.end();
    };

    for (const auto& row : ProfileIcons::all) {
        for (const auto& word : wordsOf(row)) EXPECT_TRUE(finds(word, row.symbol)) << word;
        EXPECT_TRUE(finds(row.words, row.symbol));
        EXPECT_TRUE(finds(row.symbol, row.symbol));
    }
}

TEST(ProfileIconsTest, FindsExactlyTheRowsInWhichEachPieceStandsInTheirOrder) {
    RandomText random{8201};
    int found = 0;
    for (int time = 0; time < 5000; ++time) {
        std::string search;
        std::vector<std::string> pieces;
        for (auto left = random.below(4); left > 0; --left) {
            pieces.push_back(randomPiece(random));
            search += (random.below(2) == 0 ? " " : "\t ") + pieces.back();
        }
        Symbols expected;
        for (const auto& row : ProfileIcons::all) {
            const bool stays = std::ranges::all_of(pieces, [&](const std::string& piece) {
                return std::string_view{row.words}.find(piece) != std::string_view::npos ||
                       row.symbol.find(piece) != std::string_view::npos;
            });
            if (stays) expected.push_back(row.symbol);
        }

        ASSERT_EQ(ProfileIcons::icons(search), expected) << search;
        if (!pieces.empty() && !expected.empty()) ++found;
    }
    EXPECT_GT(found, 1000);
}

TEST(ProfileIconsTest, OnePieceMoreNeverFindsMore) {
    RandomText random{8202};
    for (int time = 0; time < 2000; ++time) {
        const std::string search = randomPiece(random);
        const auto wide = ProfileIcons::icons(search);
        const std::set<std::string_view> before{wide.begin(), wide.end()};

        for (const auto symbol : ProfileIcons::icons(search + " " + randomPiece(random))) {
            ASSERT_TRUE(before.contains(symbol)) << search;
        }
    }
}

}  // namespace
}  // namespace orvu

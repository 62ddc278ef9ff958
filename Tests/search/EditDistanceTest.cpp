#include "search/EditDistance.h"

#include "foundation/RandomText.h"
#include "foundation/text/Text.h"
#include "search/SearchSuggester.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace orvu {
namespace {

/// The same from the whole matrix, with the characters compared one by one.
std::size_t plainDistance(std::string_view a, std::string_view b) {
    const auto rows = characters(a);
    const auto columns = characters(b);
    std::vector<std::vector<std::size_t>> matrix(rows.size() + 1,
                                                 std::vector<std::size_t>(columns.size() + 1));
    for (std::size_t i = 0; i <= rows.size(); ++i) {
        for (std::size_t j = 0; j <= columns.size(); ++j) {
            if (i == 0 || j == 0) {
                matrix[i][j] = i + j;
                continue;
            }
            const bool same = composed(rows[i - 1]) == composed(columns[j - 1]);
            matrix[i][j] = std::min({matrix[i - 1][j] + 1, matrix[i][j - 1] + 1,
                                     matrix[i - 1][j - 1] + (same ? 0 : 1)});
        }
    }
    return matrix.back().back();
}

/// A short text of few characters, so that two of them have something in common.
std::string someText(RandomText& random) {
    static constexpr std::array<std::string_view, 8> pieces{
        "a", "b", "é", "e\u0301", "\u0301", "👩‍👩‍👧", "👩", "\r\n"};
    std::string text;
    for (std::size_t left = random.below(9); left > 0; --left) {
        text += pieces[random.below(pieces.size())];
    }
    return text;
}

TEST(EditDistanceTest, EachEditCostsOne) {
    EXPECT_EQ(editDistance("otter", "otters"), 1U);
    EXPECT_EQ(editDistance("otters", "otter"), 1U);
    EXPECT_EQ(editDistance("otter", "utter"), 1U);
    EXPECT_EQ(editDistance("otetr", "otter"), 2U);
    EXPECT_EQ(editDistance("kitten", "sitting"), 3U);
    EXPECT_EQ(editDistance("flaw", "lawn"), 2U);
}

TEST(EditDistanceTest, FromAnEmptyTextItIsTheLengthOfTheOther) {
    EXPECT_EQ(editDistance("", ""), 0U);
    EXPECT_EQ(editDistance("", "otter"), 5U);
    EXPECT_EQ(editDistance("néé", ""), 3U);
}

TEST(EditDistanceTest, PeoplesCharactersAreCountedAndNotBytes) {
    EXPECT_EQ(editDistance("néé", "nee"), 2U);
    EXPECT_EQ(editDistance("👩‍👩‍👧 a", "👨‍👩‍👦 a"), 1U);
    EXPECT_EQ(editDistance("e\u0301", "e"), 1U);
}

TEST(EditDistanceTest, EquivalentCharactersAreTheSame) {
    EXPECT_EQ(editDistance("n\u00E9", "ne\u0301"), 0U);
    EXPECT_EQ(editDistance("한", "\u1112\u1161\u11AB"), 0U);
}

TEST(EditDistanceTest, BytesThatAreNoUtf8AreCharactersToo) {
    EXPECT_EQ(editDistance("\xFF", ""), 1U);
    EXPECT_EQ(editDistance("a\xFF", "a\xFF"), 0U);
}

TEST(EditDistanceTest, TheSuggesterCountsTheSameWay) {
    EXPECT_EQ(SearchSuggester::distance("kitten", "sitting"), 3U);
}

TEST(EditDistanceTest, ItIsThatOfTheWholeMatrixAndADistance) {
    RandomText random{43};
    for (int i = 0; i < 5000; ++i) {
        const auto a = someText(random);
        const auto b = someText(random);
        const auto c = someText(random);

        const auto ab = editDistance(a, b);

        ASSERT_EQ(ab, plainDistance(a, b))
            << testing::PrintToString(a) << testing::PrintToString(b);
        EXPECT_EQ(editDistance(b, a), ab);
        EXPECT_EQ(editDistance(a, a), 0U);
        EXPECT_EQ(ab == 0, composed(a) == composed(b));
        EXPECT_LE(editDistance(a, c), ab + editDistance(b, c));
    }
}

}  // namespace
}  // namespace orvu

#include "notch/TitledRows.h"

#include "foundation/RandomText.h"

#include <gtest/gtest.h>

#include <deque>

namespace orvu {
namespace {

std::vector<std::size_t> found(const TitledRows& rows, std::string_view text,
                               TitledRows::Order order = TitledRows::Order::forward) {
    std::vector<std::size_t> result;
    const FoldedText folded{text};
    rows.search({folded, folded.text()}, order, [&](std::size_t row) {
        result.push_back(row);
        return true;
    });
    return result;
}

TEST(TitledRowsTest, AMatchNeverReachesFromOneRowIntoTheNext) {
    TitledRows rows;
    rows.append("aab", "bba");
    rows.append("", "");
    rows.append("aba", "abb");

    EXPECT_EQ(found(rows, "aa"), (std::vector<std::size_t>{0}));
    EXPECT_EQ(found(rows, "ba"), (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(found(rows, "aaba"), (std::vector<std::size_t>{}));
    EXPECT_EQ(found(rows, "baa"), (std::vector<std::size_t>{}));
}

TEST(TitledRowsTest, CountsRowsFromTheFirstThatIsLeft) {
    TitledRows rows;
    for (int row = 0; row < 200; ++row) rows.append(row % 50 == 0 ? "hit" : "miss", "");

    rows.dropFirst(10);
    EXPECT_EQ(found(rows, "hit"), (std::vector<std::size_t>{40, 90, 140}));
    rows.dropFirst(60);
    EXPECT_EQ(found(rows, "hit", TitledRows::Order::backward), (std::vector<std::size_t>{80, 30}));
    rows.keepFirst(80);
    EXPECT_EQ(found(rows, "hit"), (std::vector<std::size_t>{30}));
    rows.append("hit", "");
    EXPECT_EQ(found(rows, "hit"), (std::vector<std::size_t>{30, 80}));
    rows.dropFirst(81);
    EXPECT_EQ(found(rows, "hit"), (std::vector<std::size_t>{}));
    rows.append("hit", "");
    EXPECT_EQ(found(rows, "hit"), (std::vector<std::size_t>{0}));
}

TEST(TitledRowsTest, KeepsExactlyTheRowsThatAPlainListKeeps) {
    RandomText random{41};
    TitledRows rows;
    std::deque<std::string> plain;
    for (int turn = 0; turn < 4000; ++turn) {
        switch (random.below(40)) {
            case 0: {
                const auto count = random.below(plain.size() + 1);
                rows.dropFirst(count);
                plain.erase(plain.begin(), plain.begin() + static_cast<std::ptrdiff_t>(count));
                break;
            }
            case 1: {
                const auto count = random.below(plain.size() + 1);
                rows.keepFirst(count);
                plain.resize(count);
                break;
            }
            default:
                plain.push_back(random.below(9) == 0 ? "hit" : "h");
                rows.append(plain.back(), "");
        }
        std::vector<std::size_t> expected;
        for (std::size_t row = 0; row < plain.size(); ++row) {
            if (plain[row] == "hit") expected.push_back(row);
        }
        ASSERT_EQ(found(rows, "hit"), expected) << turn;
    }
}

}  // namespace
}  // namespace orvu

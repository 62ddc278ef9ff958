#include "notch/candidates/TitledRows.h"

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

TEST(TitledRowsTest, FindsTheRowsThatAPlainListHolds) {
    RandomText random{41};
    TitledRows rows;
    std::deque<std::string> plain;
    for (int turn = 0; turn < 6000; ++turn) {
        // Now growing, now shrinking, in the middle and at both ends.
        const bool grows = plain.empty() || random.below(10) < (turn % 2000 < 1200 ? 7 : 3);
        const auto place = random.below(3) == 0 ? plain.size() : random.below(plain.size() + 1);
        if (grows) {
            const std::string text = random.below(9) == 0 ? "a hit" : repeated("h", place % 4);
            plain.insert(plain.begin() + static_cast<std::ptrdiff_t>(place), text);
            rows.insert(place, text, "");
        } else {
            const auto last = random.below(3) == 0 ? 0 : std::min(place, plain.size() - 1);
            plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(last));
            rows.erase(last);
        }
        std::vector<std::size_t> expected;
        for (std::size_t row = 0; row < plain.size(); ++row) {
            if (plain[row] == "a hit") expected.push_back(row);
        }

        ASSERT_EQ(rows.size(), plain.size());
        ASSERT_EQ(found(rows, "hit"), expected) << turn;
        std::ranges::reverse(expected);
        ASSERT_EQ(found(rows, "hit", TitledRows::Order::backward), expected) << turn;
    }
}

TEST(TitledRowsTest, StopsWhenItIsTold) {
    TitledRows rows;
    for (int row = 0; row < 100; ++row) rows.append("hit", "");
    const FoldedText hit{"hit"};
    std::size_t last = 0;

    rows.search({hit, hit.text()}, TitledRows::Order::backward, [&](std::size_t row) {
        last = row;
        return row > 90;
    });

    EXPECT_EQ(last, 90U);
}

}  // namespace
}  // namespace orvu

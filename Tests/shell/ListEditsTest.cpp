#include "shell/column/ListEdits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace orvu {
namespace {

using Kind = ListEdit::Kind;
using Keys = std::vector<ColumnKey>;

/// A key of its own for each number.
ColumnKey key(int number) {
    const std::string digits = std::to_string(1000 + number);
    return {ColumnKey::Kind::tab, Uuid::parse("00000000-0000-0000-0000-00000000" + digits).value()};
}

Keys keys(const std::vector<int>& numbers) {
    Keys result;
    std::ranges::transform(numbers, std::back_inserter(result), key);
    return result;
}

/// Takes the steps as a view does. Each must be possible where it stands.
Keys applied(Keys list, const std::vector<ListEdit>& edits) {
    for (const auto& edit : edits) {
        const auto found = std::ranges::find(list, edit.key);
        EXPECT_EQ(found == list.end(), edit.kind == Kind::insert);
        if (found != list.end()) list.erase(found);
        if (edit.kind == Kind::remove) continue;
        auto place = list.begin();
        if (edit.after) {
            place = std::ranges::find(list, *edit.after);
            EXPECT_NE(place, list.end());
            if (place != list.end()) ++place;
        }
        list.insert(place, edit.key);
    }
    return list;
}

TEST(ListEditsTest, EqualListsNeedNoStep) {
    EXPECT_TRUE(listEdits(keys({1, 2, 3}), keys({1, 2, 3})).empty());
    EXPECT_TRUE(listEdits({}, {}).empty());
}

TEST(ListEditsTest, ClosedLineIsOneRemoval) {
    const auto edits = listEdits(keys({1, 2, 3}), keys({1, 3}));

    EXPECT_EQ(edits, (std::vector<ListEdit>{{Kind::remove, key(2), std::nullopt}}));
}

TEST(ListEditsTest, NewLineIsOneInsertionBehindThePreviousOne) {
    EXPECT_EQ(listEdits(keys({1, 2}), keys({1, 2, 3})),
              (std::vector<ListEdit>{{Kind::insert, key(3), key(2)}}));
    EXPECT_EQ(listEdits(keys({1, 2}), keys({3, 1, 2})),
              (std::vector<ListEdit>{{Kind::insert, key(3), std::nullopt}}));
}

TEST(ListEditsTest, LineThatMovesFarIsOneMoveInBothDirections) {
    EXPECT_EQ(listEdits(keys({1, 2, 3, 4, 5}), keys({2, 3, 4, 5, 1})),
              (std::vector<ListEdit>{{Kind::move, key(1), key(5)}}));
    EXPECT_EQ(listEdits(keys({1, 2, 3, 4, 5}), keys({5, 1, 2, 3, 4})),
              (std::vector<ListEdit>{{Kind::move, key(5), std::nullopt}}));
}

TEST(ListEditsTest, SameIdentityOfAnotherKindIsAnotherLine) {
    const ColumnKey tab = key(1);
    const ColumnKey group{ColumnKey::Kind::group, tab.id};

    EXPECT_EQ(listEdits({tab}, {group}),
              (std::vector<ListEdit>{{Kind::remove, tab, std::nullopt},
                                     {Kind::insert, group, std::nullopt}}));
}

TEST(ListEditsTest, StepsMakeAnyListIntoAnyOther) {
    std::minstd_rand random{20251121};  // NOLINT: the same lists in every run
    for (int time = 0; time < 2000; ++time) {
        const auto some = [&] {
            Keys all;
            for (int number = 0; number < 12; ++number) {
                if (random() % 3 != 0) all.push_back(key(number));
            }
            std::ranges::shuffle(all, random);
            return all;
        };
        const Keys from = some();
        const Keys to = some();

        ASSERT_EQ(applied(from, listEdits(from, to)), to);
    }
}

TEST(ListEditsTest, OneMovedLineInAnyListIsOneStep) {
    std::minstd_rand random{20251122};  // NOLINT: the same lists in every run
    Keys from;
    for (int number = 0; number < 200; ++number) from.push_back(key(number));
    for (int time = 0; time < 500; ++time) {
        Keys to = from;
        const auto moved = static_cast<std::ptrdiff_t>(random() % 200);
        const ColumnKey line = to[static_cast<std::size_t>(moved)];
        to.erase(to.begin() + moved);
        to.insert(to.begin() + static_cast<std::ptrdiff_t>(random() % 200), line);

        const auto edits = listEdits(from, to);

        ASSERT_LE(edits.size(), 1U);
        ASSERT_EQ(edits.empty(), from == to);
        ASSERT_EQ(applied(from, edits), to);
    }
}

}  // namespace
}  // namespace orvu

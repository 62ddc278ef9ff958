#include "platform/linux/defaults/StoredValue.h"

#include <gtest/gtest.h>

#include <string>

namespace orvu {
namespace {

ValueView blob(std::string_view bytes) { return ValueView::ofData(bytes); }

std::string record(int number) {
    return R"({"id":"00000000-0000-4000-8000-00000000000)" + std::to_string(number) +
           R"(","url":"https://site.example/"})";
}

std::string records(int first, int last) {
    std::string list = "[";
    for (int number = first; number <= last; ++number) {
        if (number > first) list += ",";
        list += record(number);
    }
    return list + "]";
}

TEST(StoredValueTest, EveryFlippedBitChangesTheChecksum) {
    std::string bytes(100, 'x');
    const auto whole = blob(bytes).checksum("key");
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
        bytes[bit / 8] =
            static_cast<char>(static_cast<unsigned char>(bytes[bit / 8]) ^ (1U << bit % 8));
        EXPECT_NE(blob(bytes).checksum("key"), whole) << bit;
        bytes[bit / 8] =
            static_cast<char>(static_cast<unsigned char>(bytes[bit / 8]) ^ (1U << bit % 8));
    }
    EXPECT_EQ(blob(bytes).checksum("key"), whole);
}

TEST(StoredValueTest, TheChecksumKnowsKeyTypeAndLength) {
    const auto sum = blob("1").checksum("key");

    EXPECT_NE(blob("1").checksum("kez"), sum);
    EXPECT_NE(ValueView::ofText("1").checksum("key"), sum);
    EXPECT_NE(blob(std::string_view{"1\0", 2}).checksum("key"), sum);
    EXPECT_NE(ValueView::ofInteger(1).checksum("key"), ValueView::ofReal(1).checksum("key"));
    EXPECT_NE(ValueView::ofInteger(1).checksum("key"), ValueView::ofInteger(2).checksum("key"));
}

TEST(StoredValueTest, WhatIsPutInAnywhereTakesNothingAway) {
    const std::string list = records(2, 4);

    EXPECT_FALSE(blob(list).loses(blob(list)));
    EXPECT_FALSE(blob(records(2, 5)).loses(blob(list)));
    EXPECT_FALSE(blob(records(1, 4)).loses(blob(list)));
    EXPECT_FALSE(blob("[" + record(2) + "," + record(9) + "," + record(3) + "," + record(4) + "]")
                     .loses(blob(list)));
    EXPECT_FALSE(blob(list).loses(blob("[]")));
    EXPECT_FALSE(blob(list).loses(ValueView{}));
    EXPECT_FALSE(blob(list).loses(ValueView::ofInteger(1)));
}

TEST(StoredValueTest, AFullListThatMovesOnTakesNothingAway) {
    EXPECT_FALSE(blob(records(2, 5)).loses(blob(records(1, 4))));
    EXPECT_FALSE(blob(records(4, 9)).loses(blob(records(1, 4))));
}

TEST(StoredValueTest, WhatIsMissingOrOtherwiseThanBeforeIsALoss) {
    const std::string list = records(1, 4);

    EXPECT_TRUE(blob(records(1, 3)).loses(blob(list)));
    EXPECT_TRUE(blob(records(2, 4)).loses(blob(list)));
    EXPECT_TRUE(blob("[" + record(1) + "," + record(3) + "," + record(4) + "]").loses(blob(list)));
    EXPECT_TRUE(blob("[" + record(1) + "," + record(3) + "," + record(4) + "," + record(5) + "]")
                    .loses(blob(list)));
    EXPECT_TRUE(blob(records(5, 9)).loses(blob(list)));
    EXPECT_TRUE(blob("[]").loses(blob(list)));
    EXPECT_TRUE(ValueView::ofText(list).loses(blob(list)));
    EXPECT_TRUE(ValueView::ofInteger(1).loses(blob(list)));
    EXPECT_TRUE(blob("[b]").loses(blob("[a]")));
}

}  // namespace
}  // namespace orvu

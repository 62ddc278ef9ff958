#include "profiles/ProfileLook.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace orvu {
namespace {

struct Row {
    std::string_view name;
    Color color;
    Color frame;
    Color deep;
    friend bool operator==(const Row&, const Row&) = default;
};

TEST(ProfileLookTest, TheTableHasTwelveRows) {
    std::vector<Row> table;
    for (const auto& look : ProfileLook::all) {
        table.push_back({look.name, look.color, look.frame, look.deep});
    }

    EXPECT_EQ(table, (std::vector<Row>{
                         {"Sky", {92, 178, 255}, {227, 240, 255}, {31, 111, 209}},
                         {"Mint", {47, 201, 154}, {221, 246, 236}, {15, 122, 90}},
                         {"Lime", {155, 203, 45}, {237, 246, 214}, {86, 122, 10}},
                         {"Sun", {245, 184, 46}, {251, 240, 210}, {138, 97, 0}},
                         {"Tangerine", {255, 138, 61}, {255, 232, 217}, {168, 75, 12}},
                         {"Coral", {255, 94, 91}, {255, 225, 224}, {168, 38, 36}},
                         {"Rose", {240, 98, 168}, {252, 225, 239}, {160, 35, 106}},
                         {"Grape", {155, 107, 255}, {236, 227, 255}, {91, 47, 194}},
                         {"Indigo", {84, 104, 255}, {227, 231, 255}, {40, 54, 184}},
                         {"Teal", {31, 181, 196}, {217, 243, 246}, {11, 111, 121}},
                         {"Stone", {138, 142, 150}, {236, 238, 241}, {69, 72, 79}},
                         {"Ink", {18, 19, 22}, {226, 227, 230}, {18, 19, 22}},
                     }));
}

TEST(ProfileLookTest, AColourWithinTheTableGivesItsRow) {
    EXPECT_EQ(ProfileLook::at(0).name, "Sky");
    EXPECT_EQ(ProfileLook::at(10).name, "Stone");
    EXPECT_EQ(ProfileLook::at(11).name, "Ink");
}

TEST(ProfileLookTest, AColourOutsideTheTableGivesTheFirstOrTheLastRow) {
    EXPECT_EQ(ProfileLook::at(-1).name, "Sky");
    EXPECT_EQ(ProfileLook::at(99).name, "Ink");
    EXPECT_EQ(ProfileLook::at(12).name, "Ink");
    EXPECT_EQ(ProfileLook::at(std::numeric_limits<std::int64_t>::min()).name, "Sky");
    EXPECT_EQ(ProfileLook::at(std::numeric_limits<std::int64_t>::max()).name, "Ink");
}

}  // namespace
}  // namespace orvu

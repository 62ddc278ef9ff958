#include "shell/column/NarrowColumn.h"

#include "fakes/FakeUserDefaults.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(NarrowColumnTest, ColumnIsWideUnlessTheSettingSaysOtherwise) {
    FakeUserDefaults defaults;

    EXPECT_EQ(NarrowColumn{defaults}.width(), 228);
    defaults.setBoolean("narrowTabs", true);
    EXPECT_EQ(NarrowColumn{defaults}.width(), 52);
    defaults.setBoolean("narrowTabs", false);
    EXPECT_FALSE(NarrowColumn{defaults}.isNarrow());
}

TEST(NarrowColumnTest, SwitchLeavesOtherWindowsAndTheSettingUntouched) {
    FakeUserDefaults defaults;
    NarrowColumn one{defaults};
    const NarrowColumn other{defaults};
    int changes = 0;
    one.connectChanged([&] { ++changes; });

    one.toggle();

    EXPECT_TRUE(one.isNarrow());
    EXPECT_FALSE(other.isNarrow());
    EXPECT_FALSE(NarrowColumn{defaults}.isNarrow());
    EXPECT_TRUE(defaults.written.empty());
    EXPECT_EQ(changes, 1);
    one.toggle();
    EXPECT_FALSE(one.isNarrow());
}

}  // namespace
}  // namespace orvu

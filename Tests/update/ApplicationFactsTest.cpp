#include "update/ApplicationFacts.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(ApplicationFactsTest, WhatWasWrittenIsRead) {
    const ApplicationFacts facts{"1.2", 12, "app.orvu.Orvu"};

    EXPECT_EQ(ApplicationFacts::parse(facts.string()), facts);
}

TEST(ApplicationFactsTest, WhatIsMissingHasItsPlainValue) {
    EXPECT_EQ(ApplicationFacts::parse(""), (ApplicationFacts{"0", 0, ""}));
    EXPECT_EQ(ApplicationFacts::parse("version\nbuild\nother 1"), (ApplicationFacts{"0", 0, ""}));
}

TEST(ApplicationFactsTest, ABuildThatIsNoNumberIsZero) {
    for (const char* const build : {"12a", "", "-3", "1.5", "0x10", "99999999999999999999"}) {
        EXPECT_EQ(ApplicationFacts::parse(std::string{"build "} + build + "\n").build, 0) << build;
    }
}

}  // namespace
}  // namespace orvu

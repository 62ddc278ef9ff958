#include "pagetools/ReaderLook.h"

#include "fakes/FakeUserDefaults.h"
#include "support/StoreWorld.h"

#include <limits>

namespace orvu {
namespace {

class ReaderLookTest : public testing::Test {
protected:
    FakeUserDefaults defaults;
    Settings settings{defaults};
    ReaderLook look{settings};
    ChangeCounter changes{look};
};

TEST_F(ReaderLookTest, WithoutSettingsTextIsEighteenPointsOnPaper) {
    EXPECT_EQ(look.size(), 18);
    EXPECT_EQ(look.theme(), ReaderTheme::paper);
}

TEST_F(ReaderLookTest, EachStepIsOnePointAndWrittenAtOnce) {
    look.larger();
    EXPECT_EQ(defaults.number("readerSize"), 19);
    look.smaller();
    look.smaller();

    EXPECT_EQ(defaults.number("readerSize"), 17);
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(ReaderLookTest, SmallestTextDoesNotBecomeSmaller) {
    defaults.setNumber("readerSize", 14);

    look.smaller();

    EXPECT_EQ(look.size(), 14);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(ReaderLookTest, LargestTextDoesNotBecomeLarger) {
    defaults.setNumber("readerSize", 26);

    look.larger();

    EXPECT_EQ(look.size(), 26);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(ReaderLookTest, StepsEndAtTheLimitAlsoFromBetweenTwoPoints) {
    defaults.setNumber("readerSize", 25.5);
    look.larger();
    EXPECT_EQ(look.size(), 26);

    defaults.setNumber("readerSize", 14.5);
    look.smaller();
    EXPECT_EQ(look.size(), 14);
}

TEST_F(ReaderLookTest, StoredSizeBeyondTheLimitsCountsAndTheFirstStepLeadsWithinThem) {
    defaults.setNumber("readerSize", 40);
    EXPECT_EQ(look.size(), 40);
    look.smaller();
    EXPECT_EQ(look.size(), 26);

    defaults.setNumber("readerSize", 3);
    EXPECT_EQ(look.size(), 3);
    look.smaller();
    EXPECT_EQ(look.size(), 14);
}

TEST_F(ReaderLookTest, StoredSizeThatIsNoNumberCountsAsNone) {
    defaults.setString("readerSize", "large");
    EXPECT_EQ(look.size(), 18);

    for (const double stored :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        defaults.setNumber("readerSize", stored);
        EXPECT_EQ(look.size(), 18);
    }
}

TEST_F(ReaderLookTest, ThemesAreStoredByTheirNames) {
    look.setTheme(ReaderTheme::night);
    EXPECT_EQ(defaults.string("readerTheme"), "night");
    look.setTheme(ReaderTheme::white);
    EXPECT_EQ(defaults.string("readerTheme"), "white");
    look.setTheme(ReaderTheme::paper);

    EXPECT_EQ(defaults.string("readerTheme"), "paper");
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(ReaderLookTest, UnknownStoredThemeIsPaper) {
    for (const auto* stored : {"", "sepia", "Night", "paper "}) {
        defaults.setString("readerTheme", stored);
        EXPECT_EQ(look.theme(), ReaderTheme::paper) << stored;
    }
    defaults.setInteger("readerTheme", 2);
    EXPECT_EQ(look.theme(), ReaderTheme::paper);
}

TEST_F(ReaderLookTest, ThemeInUseIsNotSetAgain) {
    look.setTheme(ReaderTheme::paper);

    EXPECT_EQ(changes.count(), 0);
}

TEST(ReaderThemeTest, ColorsAreThoseOfTheTable) {
    EXPECT_EQ(facts(ReaderTheme::paper).background, (Color{251, 250, 247}));
    EXPECT_EQ(facts(ReaderTheme::white).background, (Color{255, 255, 255}));
    EXPECT_EQ(facts(ReaderTheme::night).background, (Color{22, 23, 27}));
    for (const auto light : {ReaderTheme::paper, ReaderTheme::white}) {
        EXPECT_EQ(facts(light).ink, (Color{29, 31, 36}));
        EXPECT_EQ(facts(light).muted, (Color{107, 111, 119}));
    }
    EXPECT_EQ(facts(ReaderTheme::night).ink, (Color{232, 233, 236}));
    EXPECT_EQ(facts(ReaderTheme::night).muted, (Color{158, 162, 170}));
}

TEST(ReaderThemeTest, FactsAreFoundByTheirTheme) {
    for (const ReaderThemeFacts& each : readerThemes) {
        EXPECT_EQ(facts(each.theme).rawValue, each.rawValue);
    }
}

}  // namespace
}  // namespace orvu

#include "foundation/Uuid.h"

#include "RandomText.h"

#include <gtest/gtest.h>

#include <set>
#include <unordered_set>

namespace orvu {
namespace {

TEST(UuidTest, IsReadInEitherCaseAndWrittenInCapitals) {
    const auto lower = Uuid::parse("0badcafe-0000-4000-8000-00000000f00d");
    const auto upper = Uuid::parse("0BADCAFE-0000-4000-8000-00000000F00D");

    ASSERT_TRUE(lower);
    EXPECT_EQ(lower, upper);
    EXPECT_EQ(lower->string(), "0BADCAFE-0000-4000-8000-00000000F00D");
}

TEST(UuidTest, BytesStandInTheOrderOfTheDigits) {
    const auto id = Uuid::parse("00010203-0405-0607-0809-0A0B0C0D0E0F");

    ASSERT_TRUE(id);
    EXPECT_EQ(id->bytes(),
              (std::array<std::uint8_t, 16>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
}

TEST(UuidTest, EveryOtherTextIsRefused) {
    const std::vector<std::string> bad{
        "",
        "0BADCAFE",
        "0BADCAFE00004000800000000000F00D",
        "{0BADCAFE-0000-4000-8000-00000000F00D}",
        "0BADCAFE-0000-4000-8000-00000000F00",
        "0BADCAFE-0000-4000-8000-00000000F00D0",
        "0BADCAFE-0000-4000-8000-00000000F00G",
        "0BADCAFE-0000-4000-8000_00000000F00D",
        "0BADCAFE0-000-4000-8000-00000000F00D",
        " 0BADCAFE-0000-4000-8000-0000000F00D",
        "+BADCAFE-0000-4000-8000-00000000F00D",
        std::string(36, '-'),
        std::string(36, '\0'),
    };

    for (const auto& text : bad) EXPECT_EQ(Uuid::parse(text), std::nullopt) << text;
}

TEST(UuidTest, TheDefaultValueIsTheNilIdentifier) {
    EXPECT_EQ(Uuid{}.string(), "00000000-0000-0000-0000-000000000000");
    EXPECT_EQ(Uuid::parse("00000000-0000-0000-0000-000000000000"), Uuid{});
}

TEST(UuidTest, RandomOnesAreOfVersion4AndDiffer) {
    std::set<Uuid> ordered;
    std::unordered_set<Uuid> hashed;

    for (int i = 0; i < 1000; ++i) {
        const Uuid id = Uuid::random();
        EXPECT_EQ(id.string()[14], '4');
        EXPECT_NE(std::string_view{"89AB"}.find(id.string()[19]), std::string_view::npos);
        ordered.insert(id);
        hashed.insert(id);
    }

    EXPECT_EQ(ordered.size(), 1000U);
    EXPECT_EQ(hashed.size(), 1000U);
}

TEST(UuidTest, WhatIsWrittenIsReadBack) {
    for (int i = 0; i < 1000; ++i) {
        const Uuid id = Uuid::random();

        EXPECT_EQ(Uuid::parse(id.string()), id);
    }
}

TEST(UuidTest, AnyBytesGiveAnIdentifierThatIsWrittenBackOrNone) {
    RandomText random{1};
    for (int i = 0; i < 10000; ++i) {
        std::string text = Uuid{}.string();
        for (std::size_t change = random.below(3); change > 0; --change) {
            text[random.below(text.size())] = static_cast<char>(random.below(256));
        }

        const auto id = Uuid::parse(text);

        if (!id) continue;
        EXPECT_EQ(Uuid::parse(id->string()), id);
    }
}

}  // namespace
}  // namespace orvu

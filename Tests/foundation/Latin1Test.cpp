#include "foundation/text/Latin1.h"

#include "foundation/text/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace orvu {
namespace {

TEST(Latin1Test, EachByteIsTheCharacterOfItsNumber) {
    for (int byte = 0; byte < 0x100; ++byte) {
        const std::string text = fromLatin1(std::string(1, static_cast<char>(byte)));
        std::size_t at = 0;

        EXPECT_EQ(nextCodePoint(text, at), byte);
        EXPECT_EQ(at, text.size());
    }
}

TEST(Latin1Test, TheCharactersKeepTheirOrder) {
    EXPECT_EQ(fromLatin1(""), "");
    EXPECT_EQ(fromLatin1("caf\xE9 au lait, 100 \xA3"), "café au lait, 100 £");
    EXPECT_EQ(fromLatin1("é"), "Ã©");
}

}  // namespace
}  // namespace orvu

#include "platform/SourceAddress.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(SourceAddress, NamesThePage) {
    const auto page = *Url::parse("https://a.example/b?c=d#e");
    const auto source = sourceAddress(page);
    ASSERT_TRUE(source);
    EXPECT_EQ(source->absoluteString(), "view-source:https://a.example/b?c=d#e");
    EXPECT_EQ(pageOfSource(*source), page);
}

TEST(SourceAddress, OfASourceIsTheSame) {
    const auto source = *Url::parse("view-source:https://a.example/");
    EXPECT_EQ(sourceAddress(source), source);
}

TEST(SourceAddress, IsNoOtherAddress) {
    for (const auto* const other : {"https://a.example/", "view-sources:x", "about:blank"}) {
        EXPECT_EQ(pageOfSource(*Url::parse(other)), std::nullopt) << other;
    }
    EXPECT_EQ(pageOfSource(*Url::parse("view-source:")), std::nullopt);
}

}  // namespace
}  // namespace orvu

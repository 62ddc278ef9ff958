#include "notch/candidates/TopHits.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(TopHitsTest, AHostThatIsGoneCountsNoMore) {
    using enum TopHits::Source;
    TopHits hits;
    const auto address = [](std::string_view text) { return Url::parse(text); };
    hits.append(visits, address("https://garden.example/"));
    hits.append(visits, address("https://garden.example/2"));
    hits.append(visits, address("https://gardens.example/"));
    hits.append(bookmarks, address("https://gardens.example/"));

    EXPECT_EQ(hits.best("ga"), "garden.example");
    hits.erase(visits, 0);
    EXPECT_EQ(hits.best("ga"), "gardens.example");
    hits.clear(bookmarks);
    EXPECT_EQ(hits.best("ga"), "garden.example");
    hits.clear(visits);
    EXPECT_EQ(hits.best("ga"), std::nullopt);
}

}  // namespace
}  // namespace orvu

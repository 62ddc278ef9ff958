#include "shell/NewTabPage.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

using Strings = std::vector<std::string>;

/// Visits to these addresses, one a second.
std::vector<Visit> visits(const Strings& pages) {
    std::vector<Visit> result;
    for (const auto& text : pages) {
        const Date date{static_cast<double>(result.size())};
        result.push_back({Uuid::random(), url(text), "", date});
    }
    return result;
}

TEST(NewTabPageTest, HostComesOnceWithItsLatestVisitNewestFirst) {
    const auto sites = NewTabPage::recentSites(
        visits({"https://a.example/old", "https://b.example/", "https://a.example/new"}));

    EXPECT_EQ(addresses(sites), (Strings{"https://a.example/new", "https://b.example/"}));
}

TEST(NewTabPageTest, NinthHostIsNotShown) {
    Strings pages;
    for (int i = 1; i <= 9; ++i) pages.push_back("https://" + std::to_string(i) + ".example/");

    const auto sites = addresses(NewTabPage::recentSites(visits(pages)));

    ASSERT_EQ(sites.size(), 8u);
    EXPECT_EQ(sites.front(), "https://9.example/");
    EXPECT_EQ(sites.back(), "https://2.example/");
}

TEST(NewTabPageTest, VisitsWithoutAHostAreLeftOut) {
    EXPECT_EQ(addresses(NewTabPage::recentSites(
                  visits({"about:blank", "file:///tmp/page", "https://a.example/"}))),
              Strings{"https://a.example/"});
}

TEST(NewTabPageTest, HostsWithAndWithoutWwwAreTwoSites) {
    EXPECT_EQ(
        NewTabPage::recentSites(visits({"https://www.a.example/", "https://a.example/"})).size(),
        2u);
}

TEST(NewTabPageTest, NothingWasVisited) { EXPECT_TRUE(NewTabPage::recentSites({}).empty()); }

}  // namespace
}  // namespace orvu

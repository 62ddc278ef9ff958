#include "shell/pagearea/BrowserNewTabPage.h"

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

TEST(BrowserNewTabPageTest, HostComesOnceWithItsLatestVisitNewestFirst) {
    const auto sites = BrowserNewTabPage::recentSites(
        visits({"https://a.example/old", "https://b.example/", "https://a.example/new"}));

    EXPECT_EQ(addresses(sites), (Strings{"https://a.example/new", "https://b.example/"}));
}

TEST(BrowserNewTabPageTest, NinthHostIsNotShown) {
    Strings pages;
    for (int i = 1; i <= 9; ++i) pages.push_back("https://" + std::to_string(i) + ".example/");

    const auto sites = addresses(BrowserNewTabPage::recentSites(visits(pages)));

    ASSERT_EQ(sites.size(), 8u);
    EXPECT_EQ(sites.front(), "https://9.example/");
    EXPECT_EQ(sites.back(), "https://2.example/");
}

TEST(BrowserNewTabPageTest, VisitsWithoutAHostAreLeftOut) {
    EXPECT_EQ(addresses(BrowserNewTabPage::recentSites(
                  visits({"about:blank", "file:///tmp/page", "https://a.example/"}))),
              Strings{"https://a.example/"});
}

TEST(BrowserNewTabPageTest, HostsWithAndWithoutWwwAreTwoSites) {
    EXPECT_EQ(
        BrowserNewTabPage::recentSites(visits({"https://www.a.example/", "https://a.example/"}))
            .size(),
        2u);
}

TEST(BrowserNewTabPageTest, NothingWasVisited) {
    EXPECT_TRUE(BrowserNewTabPage::recentSites({}).empty());
}

}  // namespace
}  // namespace orvu

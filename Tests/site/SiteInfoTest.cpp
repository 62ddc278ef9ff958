#include "site/SiteInfo.h"

#include "site/permissions/RefusedPermissions.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

using Names = std::vector<std::string>;

TEST(SiteInfoTest, TheBadgeTellsHowTheTabStandsWithItsSite) {
    EXPECT_EQ(SiteBadge::of(SiteSecurity::none), (SiteBadge{"magnifyingglass", "Search"}));
    EXPECT_EQ(SiteBadge::of(SiteSecurity::secure), (SiteBadge{"lock.fill", "Site info"}));
    EXPECT_EQ(SiteBadge::of(SiteSecurity::insecure),
              (SiteBadge{"exclamationmark.triangle.fill", "Site info"}));
}

TEST(SiteInfoTest, ThePanelSaysWhetherTheConnectionIsSecure) {
    EXPECT_EQ(SiteInfo::of(SiteSecurity::secure).security, "Connection is secure");
    EXPECT_EQ(SiteInfo::of(SiteSecurity::secure).symbol, "lock.fill");
    EXPECT_EQ(SiteInfo::of(SiteSecurity::insecure).security, "Connection isn't secure");
    EXPECT_EQ(SiteInfo::of(SiteSecurity::insecure).symbol, "exclamationmark.triangle.fill");
}

TEST(SiteInfoTest, KindsAndChoicesAreCalledByTheirNamesWithACapital) {
    EXPECT_EQ(SiteInfo::title(CaptureKind::camera), "Camera");
    EXPECT_EQ(SiteInfo::title(CaptureKind::microphone), "Microphone");
    EXPECT_EQ(SiteInfo::title(SitePermissions::Choice::ask), "Ask");
    EXPECT_EQ(SiteInfo::title(SitePermissions::Choice::allow), "Allow");
    EXPECT_EQ(SiteInfo::title(SitePermissions::Choice::block), "Block");
    EXPECT_EQ(SiteInfo::symbolOf(CaptureKind::camera), "video");
    EXPECT_EQ(SiteInfo::symbolOf(CaptureKind::microphone), "mic");
}

TEST(SiteInfoTest, EverythingThatIsRefusedHasAnOwnTitle) {
    std::set<std::string_view> titles;

    for (const auto permission : RefusedPermissions::all) {
        titles.insert(SiteInfo::title(permission));
    }

    EXPECT_EQ(titles.size(), RefusedPermissions::all.size());
    EXPECT_EQ(SiteInfo::title(RefusedPermission::location), "Location");
    EXPECT_EQ(SiteInfo::title(RefusedPermission::otherSitesData), "Data of other sites");
}

TEST(RecordsOfSiteTest, RecordsOfTheDomainsAboveAndBelowGoAlong) {
    const Names names{"example", "a.example", "x.a.example", "b.example", "127.0.0.1"};

    EXPECT_EQ(recordsOfSite(names, "a.example"), (Names{"example", "a.example", "x.a.example"}));
}

TEST(RecordsOfSiteTest, TheMatchHasNoDotBoundary) {
    EXPECT_EQ(recordsOfSite({"bees.example", "s.example"}, "es.example"),
              (Names{"bees.example", "s.example"}));
}

TEST(RecordsOfSiteTest, APageWithoutAHostHasNoRecords) {
    EXPECT_EQ(recordsOfSite({"a.example", ""}, ""), Names{});
}

}  // namespace
}  // namespace orvu

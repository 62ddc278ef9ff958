#include "site/permissions/RefusedPermissions.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace orvu {
namespace {

using enum RefusedPermission;

TEST(RefusedPermissionsTest, AThingCountsOnceHoweverOftenItIsAskedFor) {
    RefusedPermissions refused;

    EXPECT_TRUE(refused.add(location));
    for (int i = 0; i < 1000; ++i) EXPECT_FALSE(refused.add(location));

    EXPECT_TRUE(refused.contains(location));
    EXPECT_FALSE(refused.contains(notifications));
}

TEST(RefusedPermissionsTest, TheEndOfTheDocumentForgetsEverything) {
    RefusedPermissions refused;
    refused.add(location);
    refused.add(otherSitesData);

    EXPECT_TRUE(refused.documentUnloaded());

    EXPECT_TRUE(std::ranges::none_of(
        RefusedPermissions::all, [&](RefusedPermission each) { return refused.contains(each); }));
    EXPECT_FALSE(refused.documentUnloaded());
    EXPECT_TRUE(refused.add(location));
}

}  // namespace
}  // namespace orvu

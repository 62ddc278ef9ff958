#include "import/formats/ProfilesIni.h"

#include "foundation/RandomText.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

std::vector<std::filesystem::path> read(std::string_view ini) { return profileFolders(ini, "/b"); }

TEST(ProfilesIni, FoldersAreToldFromTheFileOrFromTheRoot) {
    EXPECT_EQ(read("[Profile0]\nName=default\nIsRelative=1\nPath=Profiles/a.default\n\n"
                   "[Profile1]\r\nIsRelative=0\r\nPath=/disk/my profile\r\n"
                   "[Profile2]\nPath=last"),
              (std::vector<std::filesystem::path>{"/b/Profiles/a.default", "/disk/my profile",
                                                  "/b/last"}));
}

TEST(ProfilesIni, OtherLinesSayNothing) {
    EXPECT_TRUE(read("").empty());
    EXPECT_TRUE(read("Path=\n;Path=a\n#Path=b\nDefaultPath=c\n[Path=d]\n\n").empty());
    EXPECT_TRUE(read(joined({"Path=a", std::string_view{"\0", 1}, "b"})).empty());
}

TEST(ProfilesIni, ItStopsAtTenThousandFolders) {
    EXPECT_EQ(read(repeated("Path=a\n", 20'000)).size(), 10'000U);
}

}  // namespace
}  // namespace orvu

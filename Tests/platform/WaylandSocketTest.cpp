#include "platform/linux/desktop/WaylandSocket.h"

#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace orvu {
namespace {

class WaylandSocketTest : public testing::Test {
protected:
    WaylandSocketTest() {
        std::filesystem::create_directories(runtime);
        std::filesystem::create_directories(other);
    }

    TemporaryFolder temporary;
    std::filesystem::path runtime = temporary.path() / "run";
    std::filesystem::path other = temporary.path() / "other/sockets";
};

TEST_F(WaylandSocketTest, ASocketOfTheRuntimeFolderHasItsOwnName) {
    EXPECT_EQ(waylandSocketName(runtime / "wayland-1", runtime), "wayland-1");
    EXPECT_EQ(waylandSocketName(runtime / "wayland-1", runtime / ""), "wayland-1");
}

TEST_F(WaylandSocketTest, ASocketElsewhereIsNamedByTheWayThere) {
    EXPECT_EQ(waylandSocketName(other / "wayland-1", runtime), "../other/sockets/wayland-1");
}

TEST_F(WaylandSocketTest, TheWayLeadsThroughTheRealFolders) {
    const auto linked = temporary.path() / "linked";
    std::filesystem::create_directory_symlink(other, linked);

    EXPECT_EQ(waylandSocketName(linked / "wayland-1", other), "wayland-1");
    EXPECT_EQ(waylandSocketName(runtime / "wayland-1", linked), "../../run/wayland-1");
}

TEST_F(WaylandSocketTest, ANameStaysAsItIs) {
    EXPECT_EQ(waylandSocketName("wayland-1", runtime), std::nullopt);
    EXPECT_EQ(waylandSocketName("", runtime), std::nullopt);
}

TEST_F(WaylandSocketTest, WithoutOneOfTheFoldersThereIsNoName) {
    EXPECT_EQ(waylandSocketName(other / "gone/wayland-1", runtime), std::nullopt);
    EXPECT_EQ(waylandSocketName(other / "wayland-1", temporary.path() / "gone"), std::nullopt);
    EXPECT_EQ(waylandSocketName(other / "wayland-1", ""), std::nullopt);
    EXPECT_EQ(waylandSocketName(other / "", runtime), std::nullopt);
}

TEST_F(WaylandSocketTest, ANameThatIsTooLongForASocketIsNone) {
    EXPECT_EQ(waylandSocketName(other / std::string(108, 'w'), runtime), std::nullopt);
}

}  // namespace
}  // namespace orvu

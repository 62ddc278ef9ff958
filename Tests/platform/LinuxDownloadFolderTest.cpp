#include "platform/linux/files/LinuxDownloadFolder.h"

#include "platform/TemporaryFolder.h"
#include "platform/linux/files/FileMove.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>

namespace orvu {
namespace {

using Move = PartialFile::Move;
using Path = std::filesystem::path;

void write(const Path& file, std::string_view text) { std::ofstream{file} << text; }

std::string contentOf(const Path& file) {
    std::ifstream stream{file};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

std::set<std::string> namesIn(const Path& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator{folder}) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

class LinuxDownloadFolderTest : public testing::Test {
protected:
    TemporaryFolder temporary;
    Path path = temporary.path() / "Down loads";
    LinuxDownloadFolder folder{path};
};

TEST_F(LinuxDownloadFolderTest, AMissingFolderIsMadeWithThoseAboveIt) {
    LinuxDownloadFolder deep{path / "a/b"};

    const auto place = deep.makePartialFile();

    ASSERT_TRUE(place);
    EXPECT_TRUE(std::filesystem::is_directory(path / "a/b"));
}

TEST_F(LinuxDownloadFolderTest, WhereAFileStandsInTheFoldersPlaceThereIsNoPlace) {
    write(path, "mine");

    EXPECT_EQ(folder.makePartialFile(), nullptr);
    EXPECT_EQ(contentOf(path), "mine");
}

TEST_F(LinuxDownloadFolderTest, APlaceIsOnTheFoldersDiskAndNothingIsThereYet) {
    const auto place = folder.makePartialFile();

    EXPECT_EQ(place->file().parent_path().parent_path(), path);
    EXPECT_TRUE(namesIn(place->file().parent_path()).empty());
}

TEST_F(LinuxDownloadFolderTest, EachPlaceIsAnother) {
    const auto first = folder.makePartialFile();
    const auto second = folder.makePartialFile();

    EXPECT_NE(first->file(), second->file());
}

TEST_F(LinuxDownloadFolderTest, APlaceGoesWithAllThatTheEngineWroteThere) {
    auto place = folder.makePartialFile();
    write(place->file(), "");
    write(place->file().string() + ".wkdownload", "half");

    place.reset();

    EXPECT_TRUE(namesIn(path).empty());
}

TEST_F(LinuxDownloadFolderTest, APlaceThatSomebodyRemovedIsNoTrouble) {
    auto place = folder.makePartialFile();
    std::filesystem::remove_all(place->file().parent_path());

    EXPECT_EQ(place->moveTo(path / "a.txt"), Move::failed);
    place.reset();

    EXPECT_TRUE(namesIn(path).empty());
}

TEST_F(LinuxDownloadFolderTest, AFileThatIsWholeGetsItsName) {
    auto place = folder.makePartialFile();
    write(place->file(), "whole");

    EXPECT_EQ(place->moveTo(path / "a.txt"), Move::done);
    place.reset();

    EXPECT_EQ(contentOf(path / "a.txt"), "whole");
    EXPECT_EQ(namesIn(path), (std::set<std::string>{"a.txt"}));
}

TEST_F(LinuxDownloadFolderTest, ALinkThatLeadsNowhereExists) {
    std::filesystem::create_directory(path);
    std::filesystem::create_symlink("nowhere", path / "link");

    EXPECT_TRUE(folder.exists(path / "link"));
    EXPECT_FALSE(folder.exists(path / "other"));
}

TEST_F(LinuxDownloadFolderTest, WhatAKilledProcessLeftIsRemoved) {
    const auto left = path / ".orvu-download-Ab12Cd";
    std::filesystem::create_directories(left);
    write(left / "part", "");
    write(left / "part.wkdownload", "half");

    LinuxDownloadFolder::removeLeftovers(path);

    EXPECT_TRUE(namesIn(path).empty());
}

TEST_F(LinuxDownloadFolderTest, APlaceInUseIsNoLeftover) {
    const auto place = folder.makePartialFile();
    write(place->file(), "half");

    LinuxDownloadFolder::removeLeftovers(path);

    EXPECT_EQ(contentOf(place->file()), "half");
}

TEST_F(LinuxDownloadFolderTest, NothingOfThePersonsIsTakenForALeftover) {
    std::filesystem::create_directories(path / ".orvu-download-family");
    write(path / ".orvu-download-family/holiday.jpg", "mine");
    std::filesystem::create_directories(path / ".orvu-download-longer-name");
    std::filesystem::create_directories(path / "orvu-download-Ab12Cd");
    write(path / ".orvu-download-letter", "mine");
    std::filesystem::create_directory(temporary.path() / "elsewhere");
    write(temporary.path() / "elsewhere/part", "mine");
    std::filesystem::create_directory_symlink(temporary.path() / "elsewhere",
                                              path / ".orvu-download-linked");
    write(path / "a.wkdownload", "mine");
    const auto before = namesIn(path);

    LinuxDownloadFolder::removeLeftovers(path);

    EXPECT_EQ(namesIn(path), before);
    EXPECT_EQ(contentOf(path / ".orvu-download-family/holiday.jpg"), "mine");
    EXPECT_EQ(contentOf(temporary.path() / "elsewhere/part"), "mine");
}

TEST_F(LinuxDownloadFolderTest, AFolderThatIsMissingHasNoLeftovers) {
    LinuxDownloadFolder::removeLeftovers(path);

    EXPECT_FALSE(std::filesystem::exists(path));
}

struct Way {
    std::string name;
    FileMove::Result (*move)(const Path&, const Path&);
};

class FileMoveTest : public testing::TestWithParam<Way> {
protected:
    TemporaryFolder temporary;
    Path from = temporary.path() / "from";
    Path to = temporary.path() / "to";
};

TEST_P(FileMoveTest, TheFileHasTheNewNameAlone) {
    write(from, "whole");

    EXPECT_EQ(GetParam().move(from, to), Move::done);

    EXPECT_EQ(contentOf(to), "whole");
    EXPECT_FALSE(std::filesystem::exists(from));
}

TEST_P(FileMoveTest, WhatHasTheNameKeepsIt) {
    write(from, "new");
    write(to, "old");

    EXPECT_EQ(GetParam().move(from, to), Move::taken);

    EXPECT_EQ(contentOf(to), "old");
    EXPECT_EQ(contentOf(from), "new");
}

TEST_P(FileMoveTest, AFolderOrALinkThatHasTheNameKeepsIt) {
    write(from, "new");
    std::filesystem::create_directory(temporary.path() / "folder");
    std::filesystem::create_symlink("nowhere", temporary.path() / "link");

    EXPECT_EQ(GetParam().move(from, temporary.path() / "folder"), Move::taken);
    EXPECT_EQ(GetParam().move(from, temporary.path() / "link"), Move::taken);

    EXPECT_EQ(contentOf(from), "new");
}

TEST_P(FileMoveTest, NothingComesOfAFileThatIsNotThere) {
    EXPECT_EQ(GetParam().move(from, to), Move::failed);
    EXPECT_FALSE(std::filesystem::exists(to));
}

TEST_P(FileMoveTest, NothingComesOfAFolderThatIsNotThere) {
    write(from, "whole");

    EXPECT_EQ(GetParam().move(from, temporary.path() / "gone/to"), Move::failed);
    EXPECT_EQ(contentOf(from), "whole");
}

INSTANTIATE_TEST_SUITE_P(Ways, FileMoveTest,
                         testing::Values(Way{"rename", FileMove::byRename},
                                         Way{"link", FileMove::byLink},
                                         Way{"holding", FileMove::byHolding},
                                         Way{"all",
                                             [](const Path& from, const Path& to) {
                                                 return FileMove::Result{FileMove::move(from, to)};
                                             }}),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace orvu

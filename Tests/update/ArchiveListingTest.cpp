#include "update/ArchiveListing.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using Kind = ArchiveEntry::Kind;
using Verdict = ArchiveListing::Verdict;

ArchiveEntry file(const std::string& path, std::uint64_t size = 1) {
    return {path, Kind::file, size, true};
}
ArchiveEntry folder(const std::string& path) { return {path, Kind::folder, 0, true}; }

Verdict verdictOf(const std::vector<ArchiveEntry>& entries, std::uint64_t archiveSize = 1000) {
    ArchiveListing listing{archiveSize};
    for (const auto& entry : entries) {
        if (!listing.add(entry)) break;
    }
    return listing.verdict();
}

TEST(ArchiveListingTest, FilesAndFoldersOfTheApplicationAreAllowed) {
    EXPECT_EQ(verdictOf({folder("Orvu.app/"), folder("Orvu.app/bin"), file("Orvu.app/bin/orvu")}),
              Verdict::allowed);
    EXPECT_EQ(verdictOf({file("Orvu.app/bin/orvu"), folder("Orvu.app/bin/")}), Verdict::allowed);
}

TEST(ArchiveListingTest, WithoutTheApplicationThereIsNone) {
    EXPECT_EQ(verdictOf({}), Verdict::noApplication);
    EXPECT_EQ(verdictOf({folder("Other.app"), file("Other.app/x")}), Verdict::noApplication);
    EXPECT_EQ(verdictOf({file("Orvu.apple/x")}), Verdict::noApplication);
}

TEST(ArchiveListingTest, OneBadEntryRefusesAll) {
    for (const auto& bad : {ArchiveEntry{"Orvu.app/a", Kind::other, 0, true},
                            ArchiveEntry{"Orvu.app/a", Kind::file, 1, false}, file("x"),
                            file("Orvu.app"), file("Orvu.app/"), file("Orvu.app/a/"),
                            folder("Orvu.app//"), file("Orvu.app/../a"), file("/Orvu.app/a")}) {
        EXPECT_EQ(verdictOf({folder("Orvu.app"), bad}), Verdict::refused) << bad.path;
        EXPECT_EQ(verdictOf({bad, folder("Orvu.app")}), Verdict::refused) << bad.path;
    }
}

TEST(ArchiveListingTest, NothingStandsTwice) {
    EXPECT_EQ(verdictOf({file("Orvu.app/a"), file("Orvu.app/a")}), Verdict::refused);
    EXPECT_EQ(verdictOf({folder("Orvu.app/a"), folder("Orvu.app/a/")}), Verdict::refused);
    EXPECT_EQ(verdictOf({file("Orvu.app/a"), file("Orvu.app/A")}), Verdict::refused);
    EXPECT_EQ(verdictOf({file("Orvu.app/a/x"), file("Orvu.app/A/y")}), Verdict::refused);
    EXPECT_EQ(verdictOf({file("Orvu.app/a"), file("Orvu.app/a/x")}), Verdict::refused);
    EXPECT_EQ(verdictOf({file("Orvu.app/a/x"), file("Orvu.app/a")}), Verdict::refused);
    EXPECT_EQ(verdictOf({folder("Orvu.app"), file("orvu.app/a")}), Verdict::refused);
}

TEST(ArchiveListingTest, WhatItHoldsIsInProportionToItsSize) {
    const auto most = ArchiveListing::freeBytes + 1000 * ArchiveListing::mostGrowth;

    EXPECT_EQ(verdictOf({file("Orvu.app/a", most)}), Verdict::allowed);
    EXPECT_EQ(verdictOf({file("Orvu.app/a", most - 5), file("Orvu.app/b", 5)}), Verdict::allowed);
    EXPECT_EQ(verdictOf({file("Orvu.app/a", most + 1)}), Verdict::refused);
    EXPECT_EQ(verdictOf({file("Orvu.app/a", most - 5), file("Orvu.app/b", 6)}), Verdict::refused);
    EXPECT_EQ(verdictOf({file("Orvu.app/a", 1), file("Orvu.app/b", UINT64_MAX)}), Verdict::refused);
}

TEST(ArchiveListingTest, ALargeArchiveHasALimitToo) {
    const std::uint64_t size = UINT64_MAX;

    EXPECT_EQ(verdictOf({file("Orvu.app/a", ArchiveListing::mostBytes)}, size), Verdict::allowed);
    EXPECT_EQ(verdictOf({file("Orvu.app/a", ArchiveListing::mostBytes + 1)}, size),
              Verdict::refused);
}

}  // namespace
}  // namespace orvu

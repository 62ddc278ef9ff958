#include "import/formats/GnomeWebBookmarks.h"

#include "foundation/RandomText.h"
#include "import/formats/GvdbFile.h"
#include "import/GvdbBuilder.h"
#include "import/ImportLines.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

std::string file(const GvdbBuilder::Entries& bookmarks) {
    GvdbBuilder builder;
    builder.addTable("tags", {{"news", GvdbBuilder::framed("", "s")}});
    builder.addTable("bookmarks", bookmarks);
    return std::move(builder).finish();
}

Strings read(std::string_view bytes) { return lines(gnomeWebBookmarks(bytes)); }

TEST(GnomeWebBookmarks, AddressesAndTitlesAreRead) {
    EXPECT_EQ(read(file({{"https://a.example/", GvdbBuilder::bookmark("A page")},
                         {"http://b.example/", GvdbBuilder::bookmark("Bücher")}})),
              (Strings{"https://a.example/ A page", "http://b.example/ Bücher"}));
}

TEST(GnomeWebBookmarks, EachFormOfAValueGivesItsTitle) {
    const std::string time(8, '\x07');
    const std::string_view zero{"\0", 1};
    EXPECT_EQ(
        read(file(
            {{"https://a.example/",
              GvdbBuilder::framed(joined({time, "A", zero, "id", zero}), "(xssxbas)")},
             {"https://b.example/", GvdbBuilder::framed(joined({time, "B", zero, zero}), "(xsas)")},
             {"https://c.example/",
              GvdbBuilder::framed(joined({"C", zero, "tag", zero, "\x02\x06"}), "as")}})),
        (Strings{"https://a.example/ A", "https://b.example/ B", "https://c.example/ C"}));
}

TEST(GnomeWebBookmarks, WithoutATitleTheHostStandsForIt) {
    EXPECT_EQ(read(file({{"https://a.example/", GvdbBuilder::bookmark("")},
                         {"https://b.example/", GvdbBuilder::framed("x", "(us)")},
                         {"https://c.example/", GvdbBuilder::framed("short", "(xs)")}})),
              (Strings{"https://a.example/ a.example", "https://b.example/ b.example",
                       "https://c.example/ c.example"}));
}

TEST(GnomeWebBookmarks, OtherSchemesAreDropped) {
    EXPECT_EQ(read(file({{"about:overview", GvdbBuilder::bookmark("x")},
                         {"https://a.example/", GvdbBuilder::bookmark("A")}})),
              Strings{"https://a.example/ A"});
}

TEST(GnomeWebBookmarks, AFileWithoutTheTableGivesNothing) {
    GvdbBuilder builder;
    builder.addTable("tags", {{"bookmarks", GvdbBuilder::bookmark("x")}});

    EXPECT_EQ(read(std::move(builder).finish()), Strings{});
    EXPECT_EQ(read(""), Strings{});
    EXPECT_EQ(read("GVariant"), Strings{});
}

TEST(GnomeWebBookmarks, ATableWhoseItemsTellTheSameBytesIsRefused) {
    GvdbBuilder builder;
    builder.addTable("bookmarks",
                     {{"https://a.example/" + std::string(200, 'x'), GvdbBuilder::bookmark("A")}});
    std::string bytes = std::move(builder).finish();
    ASSERT_EQ(read(bytes).size(), 1U);
    const std::size_t tableEnd = bytes.find("bookmarks");
    const std::string item = bytes.substr(tableEnd - 24, 24);

    // The same item a hundred times over, in a table that now ends behind them.
    const std::string head{"\1\0\0\0\1\0\0\0\xFF\xFF\xFF\xFF\0\0\0\0", 16};
    const auto begin = static_cast<std::uint32_t>(bytes.size());
    bytes += head + repeated(item, 100);
    const auto end = static_cast<std::uint32_t>(bytes.size());
    std::string place;
    for (const std::uint32_t each : {begin, end}) {
        for (int i = 0; i < 4; ++i) place.push_back(static_cast<char>(each >> (8 * i)));
    }
    bytes.replace(tableEnd + 9 + 16 + 16, 8, place);

    EXPECT_EQ(GvdbFile{bytes}.valuesOf("bookmarks").size(), 0U);
}

TEST(GnomeWebBookmarks, DamagedFilesGiveOnlyWhatIsAWebPage) {
    const std::string whole = file({{"https://a.example/", GvdbBuilder::bookmark("A page")},
                                    {"https://b.example/", GvdbBuilder::bookmark("B")}});
    RandomText random{3};
    std::size_t total = 0;
    for (int round = 0; round < 50'000; ++round) {
        std::string damaged = whole;
        if (random.below(8) == 0) damaged.resize(random.below(whole.size()) + 1);
        for (std::size_t left = random.below(4); left > 0; --left) {
            damaged[random.below(damaged.size())] = static_cast<char>(random.below(256));
        }

        for (const auto& [url, title] : gnomeWebBookmarks(damaged)) {
            ASSERT_TRUE(isWebUrl(url));
            // A byte that is no UTF-8 takes three where it is replaced.
            ASSERT_LE(title.size(), 3 * whole.size());
            ++total;
        }
    }
    EXPECT_GT(total, 50'000U);
}

}  // namespace
}  // namespace orvu

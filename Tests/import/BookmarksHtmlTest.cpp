#include "import/formats/BookmarksHtml.h"

#include "foundation/RandomText.h"
#include "import/formats/ImportedPage.h"
#include "import/ImportLines.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <regex>

namespace orvu {
namespace {

Strings read(std::string_view html) { return lines(bookmarksInHtml(html)); }

TEST(BookmarksHtml, LinksAreReadInTheirOrderWhateverFoldersTheyAreIn) {
    EXPECT_EQ(read(R"(<!DOCTYPE NETSCAPE-Bookmark-file-1>
<META HTTP-EQUIV="Content-Type" CONTENT="text/html; charset=UTF-8">
<TITLE>Bookmarks</TITLE>
<DL><p>
    <DT><H3 ADD_DATE="1">Folder</H3>
    <DL><p>
        <DT><A HREF="https://a.example/" ADD_DATE="2" ICON="data:image/png;base64,x=">A page</A>
    </DL><p>
    <DT><A ADD_DATE="3" HREF="http://b.example/?x=1&y=2" TAGS="one">B</A>
</DL><p>)"),
              (Strings{"https://a.example/ A page", "http://b.example/?x=1&y=2 B"}));
}

TEST(BookmarksHtml, AnchorsInLowerCaseMatchAndTheAmpersandOfATitleIsDecoded) {
    EXPECT_EQ(
        read(R"(<a href="https://a.example/?a&amp;b">Salt &amp; &lt;Pepper&gt; &AMP; &#39;</a>)"),
        Strings{"https://a.example/?a&amp;b Salt & &lt;Pepper&gt; &AMP; &#39;"});
}

TEST(BookmarksHtml, AnAnchorWithATagInItsTextIsSkipped) {
    EXPECT_EQ(read(R"(<A HREF="https://a.example/">a <B>bold</B> one</A>)"
                   R"(<A HREF="https://b.example/">plain</A>)"),
              Strings{"https://b.example/ plain"});
}

TEST(BookmarksHtml, AnEmptyTitleIsTheAddress) {
    EXPECT_EQ(read(R"(<A HREF="https://a.example/x"></A>)"),
              Strings{"https://a.example/x https://a.example/x"});
}

TEST(BookmarksHtml, OtherSchemesAreSkipped) {
    EXPECT_EQ(read(R"-(<A HREF="place:sort=8">Recent</A><A HREF="javascript:x()">J</A>)-"
                   R"(<A HREF="/relative">R</A><A HREF="">E</A><A HREF="HTTP://a.example">A</A>)"),
              Strings{"HTTP://a.example A"});
}

TEST(BookmarksHtml, WhatIsNoUtf8GivesNothing) {
    EXPECT_EQ(read("<A HREF=\"https://a.example/\">\xE9</A>"), Strings{});
}

TEST(BookmarksHtml, TitlesAreCutAndAddressesTooLongToBeStoredAreDropped) {
    const std::string address = "https://a.example/" + std::string(65'536 - 18, 'x');
    const auto found = bookmarksInHtml("<A HREF=\"" + address + "\">" + repeated("ü", 500'000) +
                                       "</A><A HREF=\"" + address + "x\">b</A>");

    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].second, repeated("ü", 1000));
}

/// What a regular expression finds that goes back and forth.
Strings readPlainly(const std::string& html) {
    static const std::regex link{R"-(<A[^>]*HREF="([^"]+)"[^>]*>([^<]*)</A>)-", std::regex::icase};
    Strings result;
    for (auto match = std::sregex_iterator{html.begin(), html.end(), link};
         match != std::sregex_iterator{}; ++match) {
        const std::string address = (*match)[1];
        if (!web(address)) continue;
        const std::string title = (*match)[2];
        result.push_back(address + " " + (title.empty() ? address : title));
    }
    return result;
}

TEST(BookmarksHtml, RandomMarkupGivesWhatTheRegularExpressionFinds) {
    constexpr std::array<std::string_view, 17> pieces{"<A",
                                                      "<a ",
                                                      " HREF=\"",
                                                      "href=\"",
                                                      "HREF=\"http://x/",
                                                      "http://a.b/",
                                                      "\"",
                                                      "\"",
                                                      ">",
                                                      ">",
                                                      "</A>",
                                                      "</a>",
                                                      "<",
                                                      "title",
                                                      " ",
                                                      "\n",
                                                      "<A HREF=\"https://q/\">"};
    RandomText random{11};
    std::size_t total = 0;
    for (int round = 0; round < 60'000; ++round) {
        std::string html;
        for (std::size_t left = random.below(24); left > 0; --left) {
            html += pieces[random.below(pieces.size())];
        }

        const auto found = read(html);

        ASSERT_EQ(found, readPlainly(html)) << html;
        total += found.size();
    }
    EXPECT_GT(total, 1000U);
}

/// Each of these makes a search that goes back take time without end.
TEST(BookmarksHtml, FortyMegabytesOfWhatNeverEndsAreReadAtOnce) {
    for (const char* const piece :
         {"<A ", "<A HREF=\"", "<A HREF=\"x", "<A HREF=\"x\" ", "<A HREF=\"x>", "<A HREF=\"x\">",
          "HREF=\"", "<A HREF=\"x\"\">t<"}) {
        const std::string html = repeated(piece, 40'000'000 / std::string_view{piece}.size());

        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(read(html), Strings{});
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds{20}) << piece;
    }
}

}  // namespace
}  // namespace orvu

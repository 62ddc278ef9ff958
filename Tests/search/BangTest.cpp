#include "search/Bang.h"

#include "foundation/RandomText.h"
#include "foundation/text/Text.h"

#include <gtest/gtest.h>

#include <set>

namespace orvu {
namespace {

std::optional<Bang::Parsed> parsed(std::string_view key, std::string query) {
    const auto found = std::ranges::find(Bang::all, key, &Bang::key);
    return Bang::Parsed{*found, std::move(query)};
}

/// Where the bang of `key` sends `query`.
std::string expanded(std::string_view key, std::string_view query) {
    const auto url = std::ranges::find(Bang::all, key, &Bang::key)->expand(query);
    return url ? url->absoluteString() : "";
}

TEST(BangTest, TheTableHasTenRows) {
    const std::vector<Bang> table(Bang::all.begin(), Bang::all.end());

    EXPECT_EQ(
        table,
        (std::vector<Bang>{
            {"!g", phrase("Google"), "google.com", "https://www.google.com/search?q=%s"},
            {"!d", phrase("DuckDuckGo"), "duckduckgo.com", "https://duckduckgo.com/?q=%s"},
            {"!b", phrase("Bing"), "bing.com", "https://www.bing.com/search?q=%s"},
            {"!w", phrase("Wikipedia"), "wikipedia.org",
             "https://en.wikipedia.org/w/index.php?search=%s"},
            {"!yt", phrase("YouTube"), "youtube.com",
             "https://www.youtube.com/results?search_query=%s"},
            {"!m", phrase("Maps"), "maps.apple.com", "https://maps.apple.com/?q=%s"},
            {"!i", phrase("Images"), "google.com", "https://www.google.com/search?udm=2&q=%s"},
            {"!gh", phrase("GitHub"), "github.com", "https://github.com/search?q=%s"},
            {"!r", phrase("Reddit"), "reddit.com", "https://www.reddit.com/search/?q=%s"},
            {"!a", phrase("Amazon"), "amazon.com", "https://www.amazon.com/s?k=%s"},
        }));
}

TEST(BangTest, KeysAreUniqueAndInLowerCase) {
    std::set<std::string_view> keys;
    for (const Bang& bang : Bang::all) {
        EXPECT_TRUE(bang.key.starts_with('!'));
        EXPECT_EQ(lowercased(bang.key), bang.key);
        keys.insert(bang.key);
    }

    EXPECT_EQ(keys.size(), Bang::all.size());
}

TEST(BangTest, ImagesAndGoogleShareAHostAndDifferInNameAndTemplate) {
    const Bang google = *std::ranges::find(Bang::all, "!g", &Bang::key);
    const Bang images = *std::ranges::find(Bang::all, "!i", &Bang::key);

    EXPECT_EQ(google.host, images.host);
    EXPECT_NE(google.name, images.name);
    EXPECT_NE(google.urlTemplate, images.urlTemplate);
}

TEST(BangTest, AKeyASpaceAndASearchMakeABang) {
    EXPECT_EQ(Bang::parse("!w otters"), parsed("!w", "otters"));
    EXPECT_EQ(Bang::parse("!yt otters at sea"), parsed("!yt", "otters at sea"));
}

TEST(BangTest, AKeyAloneIsNoBangEvenWithASpaceBehindIt) {
    EXPECT_EQ(Bang::parse("!w"), std::nullopt);
    EXPECT_EQ(Bang::parse("!w "), std::nullopt);
    EXPECT_EQ(Bang::parse("!w \t\u00A0 "), std::nullopt);
}

TEST(BangTest, CapitalsInTheKeyFindTheRowAndTheQueryKeepsItsOwn) {
    EXPECT_EQ(Bang::parse("!YT Sea Otters"), parsed("!yt", "Sea Otters"));
    EXPECT_EQ(Bang::parse("!Gh Orvu"), parsed("!gh", "Orvu"));
}

TEST(BangTest, BlanksAroundTheQueryAreTrimmedAway) {
    EXPECT_EQ(Bang::parse("!w    otters  \t"), parsed("!w", "otters"));
    EXPECT_EQ(Bang::parse("!w \u2003otters\u00A0"), parsed("!w", "otters"));
}

TEST(BangTest, LeadingBlanksAreAllowed) {
    EXPECT_EQ(Bang::parse("  \t!w otters"), parsed("!w", "otters"));
}

TEST(BangTest, LineEndsAreNoBlanks) {
    EXPECT_EQ(Bang::parse("\n!w otters"), std::nullopt);
    EXPECT_EQ(Bang::parse("!w \notters\n"), parsed("!w", "\notters\n"));
}

TEST(BangTest, OnlyASpaceEndsTheKey) {
    EXPECT_EQ(Bang::parse("!w\totters"), std::nullopt);
    EXPECT_EQ(Bang::parse("!w\totters at sea"), std::nullopt);
    EXPECT_EQ(Bang::parse("!w\u00A0otters"), std::nullopt);
    EXPECT_EQ(Bang::parse("!w\notters at sea"), std::nullopt);
}

TEST(BangTest, AKeyThatIsNotInTheTableIsNoBang) {
    for (const std::string_view text :
         {"!x otters", "! otters", "!ww otters", "!wé otters", "!!w otters", "w otters"}) {
        EXPECT_EQ(Bang::parse(text), std::nullopt) << text;
    }
}

TEST(BangTest, ABangBehindTheSearchIsNoBang) {
    EXPECT_EQ(Bang::parse("otters !w"), std::nullopt);
    EXPECT_EQ(Bang::parse("otters !w sea"), std::nullopt);
}

TEST(BangTest, EmptyTextIsNoBang) {
    EXPECT_EQ(Bang::parse(""), std::nullopt);
    EXPECT_EQ(Bang::parse(" "), std::nullopt);
    EXPECT_EQ(Bang::parse("!"), std::nullopt);
}

TEST(BangTest, ASpaceInTheQueryIsPercentEncodedAndLetterCaseKept) {
    EXPECT_EQ(expanded("!w", "Sea Otters"),
              "https://en.wikipedia.org/w/index.php?search=Sea%20Otters");
}

TEST(BangTest, TheFiveSignsOfAQueryArePercentEncoded) {
    EXPECT_EQ(expanded("!d", "a&b+c=d?e#f"), "https://duckduckgo.com/?q=a%26b%2Bc%3Dd%3Fe%23f");
}

TEST(BangTest, WhatAQueryMayHoldStands) {
    EXPECT_EQ(expanded("!d", "a/b:c@d;e,f(g)*!'$"), "https://duckduckgo.com/?q=a/b:c@d;e,f(g)*!'$");
}

TEST(BangTest, LettersOutsideAsciiAndPercentSignsArePercentEncoded) {
    EXPECT_EQ(expanded("!g", "né 100%"), "https://www.google.com/search?q=n%C3%A9%20100%25");
}

TEST(BangTest, APlaceholderInTheQueryIsNotReplacedAgain) {
    EXPECT_EQ(expanded("!d", "%s"), "https://duckduckgo.com/?q=%25s");
}

TEST(BangTest, ATemplateThatHoldsThePlaceholderTwiceGetsTheQueryTwice) {
    const Bang twice{"!t", phrase("Twice"), "t.example", "https://t.example/%s?q=%s"};

    EXPECT_EQ(twice.expand("a b"), Url::parse("https://t.example/a%20b?q=a%20b"));
}

TEST(BangTest, ATemplateThatGivesNoAddressExpandsToNothing) {
    const Bang broken{"!t", phrase("Broken"), "t.example", "https://t.example:port/?q=%s"};

    EXPECT_EQ(broken.expand("a"), std::nullopt);
}

TEST(BangTest, EveryRowHasAnAddressForEveryQuery) {
    RandomText random{20};
    for (int i = 0; i < 1000; ++i) {
        const auto query = random.below(4) == 0 ? random.bytes(12) : random.text(12);
        for (const Bang& bang : Bang::all) {
            const auto url = bang.expand(query);

            ASSERT_TRUE(url) << testing::PrintToString(query);
            EXPECT_EQ(url->scheme(), "https");
            EXPECT_TRUE(url->query());
        }
    }
}

TEST(BangTest, AQueryThatWasParsedIsNeverEmpty) {
    RandomText random{21};
    for (int i = 0; i < 5000; ++i) {
        const auto text = joined({"!w", random.text(6)});

        const auto bang = Bang::parse(text);

        if (!bang) continue;
        EXPECT_FALSE(bang->query.empty()) << testing::PrintToString(text);
    }
}

TEST(BangTest, LongTextsAreReadToTheEnd) {
    for (const std::string_view piece : {"a", " ", "!", "!w ", "\u0301", "\xFF", "%s", "\u200F"}) {
        const auto tail = repeated(piece, 100000);

        const auto bang = Bang::parse(joined({"!d x", tail}));

        ASSERT_TRUE(bang);
        EXPECT_TRUE(bang->query.starts_with('x'));
        EXPECT_TRUE(bang->bang.expand(bang->query));
        EXPECT_FALSE(Bang::parse(joined({"!", tail, "q"})));
    }
}

}  // namespace
}  // namespace orvu

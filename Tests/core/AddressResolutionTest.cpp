#include "core/AddressResolution.h"

#include "fakes/FakeUserDefaults.h"
#include "foundation/RandomText.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

class ResolveAddressTest : public testing::Test {
protected:
    /// The address that `text` leads to, or "nothing".
    std::string resolved(std::string_view text) const {
        const auto url = resolveAddress(text, settings);
        return url ? url->absoluteString() : "nothing";
    }
    /// The address of a search whose text is already escaped.
    static std::string search(std::string_view escaped) {
        return joined({"https://www.google.com/search?q=", escaped});
    }

    FakeUserDefaults defaults;
    Settings settings{defaults};
};

TEST_F(ResolveAddressTest, BlankTextGivesNothing) {
    for (const std::string_view blank : {"", " ", "\n", " \t\r\n ", "\u2003\u2028", "\uFEFF"}) {
        EXPECT_EQ(resolved(blank), "nothing") << testing::PrintToString(blank);
    }
}

TEST_F(ResolveAddressTest, WhiteSpaceAroundASiteAddressIsDropped) {
    EXPECT_EQ(resolved(" \n example.com\t\r\n"), "https://example.com");
}

TEST_F(ResolveAddressTest, ADottedTextThatEndsWithAFullStopIsASearch) {
    EXPECT_EQ(resolved("example.com."), search("example.com."));
    EXPECT_EQ(resolved("etc."), search("etc."));
    EXPECT_EQ(resolved("."), search("."));
}

TEST_F(ResolveAddressTest, ASpaceBeforeTheDotMakesASearch) {
    EXPECT_EQ(resolved("what is example.com"), search("what%20is%20example.com"));
    EXPECT_EQ(resolved("a .b"), search("a%20.b"));
    EXPECT_EQ(resolved("example.com is down"), search("example.com%20is%20down"));
}

TEST_F(ResolveAddressTest, AboutBlankAndAFileOpenDirectly) {
    EXPECT_EQ(resolved("about:blank"), "about:blank");
    EXPECT_EQ(resolved("file:///home/me/page.html"), "file:///home/me/page.html");
}

TEST_F(ResolveAddressTest, WebAddressesOpenAsTheyAreTyped) {
    EXPECT_EQ(resolved("http://example.com"), "http://example.com");
    EXPECT_EQ(resolved("https://Example.COM/a?b#c"), "https://Example.COM/a?b#c");
    EXPECT_EQ(resolved("http://localhost:8080/x"), "http://localhost:8080/x");
    EXPECT_EQ(resolved("https://x"), "https://x");
}

TEST_F(ResolveAddressTest, AnAddressNeedsNoFullStopAndMayEndWithOne) {
    EXPECT_EQ(resolved("http://localhost"), "http://localhost");
    EXPECT_EQ(resolved("http://example.com."), "http://example.com.");
}

TEST_F(ResolveAddressTest, OneWordIsASearch) {
    EXPECT_EQ(resolved("otters"), search("otters"));
    EXPECT_EQ(resolved("localhost"), search("localhost"));
    EXPECT_EQ(resolved("localhost:8080"), search("localhost:8080"));
}

TEST_F(ResolveAddressTest, TwoWordsWithAFullStopBetweenThemAreASite) {
    EXPECT_EQ(resolved("hello.world"), "https://hello.world");
    EXPECT_EQ(resolved("3.14"), "https://3.14");
    EXPECT_EQ(resolved("example.com:8080/a?b=c d"), search("example.com:8080/a?b%3Dc%20d"));
    EXPECT_EQ(resolved("example.com:8080/a?b=c"), "https://example.com:8080/a?b=c");
}

TEST_F(ResolveAddressTest, ASiteKeepsTheLettersThatWereTyped) {
    EXPECT_EQ(resolved("Bücher.Example/Straße"), "https://Bücher.Example/Straße");
}

TEST_F(ResolveAddressTest, ASchemeInCapitalsGoesOnToTheSiteRule) {
    EXPECT_EQ(resolved("HTTP://example.com"), "https://HTTP://example.com");
    EXPECT_EQ(resolved("HTTP://localhost"), search("HTTP://localhost"));
    EXPECT_EQ(resolved("About:blank"), search("About:blank"));
}

TEST_F(ResolveAddressTest, OtherSchemesDoNotOpenDirectly) {
    EXPECT_EQ(resolved("mailto:me@example.com"), "https://mailto:me@example.com");
    EXPECT_EQ(resolved("javascript:alert(1)"), search("javascript:alert(1)"));
    EXPECT_EQ(resolved("data:text/html,x"), search("data:text/html,x"));
    EXPECT_EQ(resolved("view-source:http://localhost"), search("view-source:http://localhost"));
    EXPECT_EQ(resolved("ftp://localhost"), search("ftp://localhost"));
}

TEST_F(ResolveAddressTest, AWebSchemeWithNothingBehindItDoesNotOpenDirectly) {
    for (const auto text : {"http:", "https:", "http:/", "http://", "https://", "https:///"}) {
        EXPECT_EQ(resolved(text), search(text));
    }
}

TEST_F(ResolveAddressTest, ASlipInTheSlashesStaysAsItIsTyped) {
    for (const auto text : {"http:/a.example", "https:///a.example", "http:a.example",
                            "http:example", "https:////a.example/x?y", "https:/?x"}) {
        EXPECT_EQ(resolved(text), text);
    }
}

TEST_F(ResolveAddressTest, ASiteThatGivesNoAddressIsASearch) {
    EXPECT_EQ(resolved("a.b:port"), search("a.b:port"));
    EXPECT_EQ(resolved("a.b\tc"), search("a.b%09c"));
    EXPECT_EQ(resolved("[::1.x"), search("%5B::1.x"));
    EXPECT_EQ(resolved("/etc/a.conf"), search("/etc/a.conf"));
    EXPECT_EQ(resolved("?a.b"), search("?a.b"));
    EXPECT_EQ(resolved("a\u202Eb.c"), search("a%E2%80%AEb.c"));
}

TEST_F(ResolveAddressTest, AnAddressWithABlankInItIsASearch) {
    EXPECT_EQ(resolved("https://example.com/a b"), search("https://example.com/a%20b"));
    EXPECT_EQ(resolved("https://exam\nple.com"), search("https://exam%0Aple.com"));
}

TEST_F(ResolveAddressTest, ABangGoesToItsSite) {
    EXPECT_EQ(resolved("!w Sea Otters"),
              "https://en.wikipedia.org/w/index.php?search=Sea%20Otters");
    EXPECT_EQ(resolved(" \n!GH orvu\n"), "https://github.com/search?q=orvu");
}

TEST_F(ResolveAddressTest, ABangWithADottedQueryIsABangAndNoSite) {
    EXPECT_EQ(resolved("!d example.com"), "https://duckduckgo.com/?q=example.com");
    EXPECT_EQ(resolved("!d https://example.com"), "https://duckduckgo.com/?q=https://example.com");
}

TEST_F(ResolveAddressTest, ABangWithoutASpaceIsASearchForThatText) {
    EXPECT_EQ(resolved("!w"), search("!w"));
    EXPECT_EQ(resolved("!w "), search("!w"));
    EXPECT_EQ(resolved("!wotters"), search("!wotters"));
    EXPECT_EQ(resolved("!w\totters"), search("!w%09otters"));
}

TEST_F(ResolveAddressTest, AnUnknownBangIsASearchForTheWholeText) {
    EXPECT_EQ(resolved("!x otters"), search("!x%20otters"));
}

TEST_F(ResolveAddressTest, TheFiveSignsInABangsQueryArePercentEncoded) {
    EXPECT_EQ(resolved("!d a&b+c=d?e#f"), "https://duckduckgo.com/?q=a%26b%2Bc%3Dd%3Fe%23f");
}

TEST_F(ResolveAddressTest, ThePlusSignOfASearchStays) {
    EXPECT_EQ(resolved("c++ or c"), search("c++%20or%20c"));
}

TEST_F(ResolveAddressTest, ASearchGoesToTheChosenEngine) {
    defaults.setString("searchEngine", "duckduckgo");
    EXPECT_EQ(resolved("otters"), "https://duckduckgo.com/?q=otters");

    defaults.setString("searchEngine", "nobody's");
    EXPECT_EQ(resolved("otters"), search("otters"));
}

TEST_F(ResolveAddressTest, TextThatIsNotBlankAlwaysLeadsSomewhere) {
    RandomText random{24};
    for (int i = 0; i < 5000; ++i) {
        const auto text = joined({"x", random.below(4) == 0 ? random.bytes(12) : random.text(12)});

        const auto url = resolveAddress(text, settings);

        ASSERT_TRUE(url) << testing::PrintToString(text);
        EXPECT_EQ(Url::parse(url->absoluteString()), url);
        EXPECT_NE(url->scheme(), "");
    }
}

TEST_F(ResolveAddressTest, LongAndOddTextsHaveAClearOutcome) {
    for (const std::string_view piece :
         {"a",      "a.",     ".a",     " ",    " a.b", "%",        "%4",
          "\u0301", "\u200F", "\u202E", "\x01", "\xFF", "!",        "!w ",
          "[",      "@",      ":",      "/",    "x:",   "https://", "👩‍👩‍👧",
          "\n"}) {
        const auto text = repeated(piece, 100000);

        const auto first = resolved(text);

        EXPECT_EQ(resolved(joined({"\n ", text, " \n"})), first) << piece;
        EXPECT_NE(resolved(joined({"https://a.b/", text})), "nothing") << piece;
        EXPECT_NE(resolved(joined({"!w x", text})), "nothing") << piece;
    }
}

}  // namespace
}  // namespace orvu

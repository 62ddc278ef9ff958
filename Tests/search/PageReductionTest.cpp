#include "search/answers/PageReduction.h"

#include "foundation/RandomText.h"
#include "foundation/text/Text.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

std::string reduced(std::string_view html) { return PageReduction::text(html); }

TEST(PageReductionTest, APageIsWhatItSays) {
    constexpr std::string_view page = R"(<!doctype html>
<html lang="en"><head><title>Otters</title><style>p { color: red; }</style></head>
<body><header class="top"><a href="/">Home</a></header>
<nav><ul><li>One</li></ul></nav>
<!-- <p>Not yet.</p> -->
<h1>Sea otters</h1><p>They hold&nbsp;hands &amp; sleep
on   their backs.</p><script>count(1 < 2);</script>
<footer>&copy; 2026</footer></body></html>)";

    EXPECT_EQ(reduced(page), " Otters Sea otters They hold hands & sleep on their backs. ");
}

TEST(PageReductionTest, AnEmptyPageSaysNothing) { EXPECT_EQ(reduced(""), ""); }

TEST(PageReductionTest, EachElementOfTheListIsLeftOutWithItsContents) {
    for (const std::string_view name :
         {"script", "style", "noscript", "svg", "nav", "footer", "header"}) {
        EXPECT_EQ(reduced(joined({"a<", name, " id=x>b\n<i>c</i></", name, ">d"})), "a d") << name;
    }
    EXPECT_EQ(reduced("<nav>a</nav>b"), " b");
    EXPECT_EQ(reduced("a<aside>b</aside>c<main>d</main>e"), "a b c d e");
}

TEST(PageReductionTest, AnElementsNameIsTheSameInEitherCase) {
    EXPECT_EQ(reduced("a<SCRIPT>b</script>c<nAv>d</NaV>e"), "a c e");
}

TEST(PageReductionTest, CharactersThatFoldToAnElementsLettersAreThoseLetters) {
    EXPECT_EQ(reduced("a<ſcript>b</script>c<noscript>d</noſcript>e"), "a c e");
    EXPECT_EQ(reduced("a<ﬆyle>b</style>c<STYLE>d</ﬅyle>e<ﬅYLE>f</ﬆyle>g"), "a c e g");
    EXPECT_EQ(reduced("a<ſvg>b</ſVG>c<ſtyle>d</ﬆyle>e"), "a c e");
}

TEST(PageReductionTest, CharactersThatOnlyLookLikeAnElementsLettersAreNot) {
    EXPECT_EQ(reduced("a<ѕcript>b</ѕcript>c"), "a b c");        // a Cyrillic letter
    EXPECT_EQ(reduced("a<ｓvg>b</ｓvg>c"), "a b c");            // a wide one
    EXPECT_EQ(reduced("a<scrı\u0307pt>b</script>c"), "a b c");  // a dotless one with a dot
    EXPECT_EQ(reduced("a<ﬆ>b</ﬆ>c<ﬆ"), "a b c<ﬆ");
}

TEST(PageReductionTest, AnOpeningTagsNameMayGoOn) {
    EXPECT_EQ(reduced("a<navigation class=x>b</nav>c"), "a c");
    EXPECT_EQ(reduced("a<header-row>b</header-row>c</header>d"), "a d");
    EXPECT_EQ(reduced("a<nav/>b</nav>c"), "a c");
    EXPECT_EQ(reduced("a<script<script>b</script>c"), "a c");
}

TEST(PageReductionTest, AClosingTagsNameMayNot) {
    EXPECT_EQ(reduced("a<nav>b</navigation>c</nav >d</ nav>e</nav>f"), "a f");
    EXPECT_EQ(reduced("a<nav>b</nav\n>c"), "a b c");
    EXPECT_EQ(reduced("a<nav>b</</nav>c"), "a c");
}

TEST(PageReductionTest, NothingStandsBetweenTheBracketAndTheName) {
    EXPECT_EQ(reduced("a< script>b</script>c"), "a b c");
    EXPECT_EQ(reduced("a<xscript>b</script>c"), "a b c");
}

TEST(PageReductionTest, AnElementEndsWithTheFirstClosingTagOfItsName) {
    EXPECT_EQ(reduced("a<nav>b<nav>c</nav>d</nav>e"), "a d e");
    EXPECT_EQ(reduced("a<script>b</style>c</nav>d</script>e"), "a e");
    EXPECT_EQ(reduced("a<noscript>b</script>c</noscript>d"), "a d");
}

TEST(PageReductionTest, AClosingTagWithinTheOpeningOneClosesNothing) {
    EXPECT_EQ(reduced("a<nav</nav>b</nav>c"), "a c");
    EXPECT_EQ(reduced("a<nav</nav>b"), "a b");
}

TEST(PageReductionTest, OfAnElementWithoutItsClosingTagOnlyTheTagIsLeftOut) {
    EXPECT_EQ(reduced("a<script>b<i>c"), "a b c");
    EXPECT_EQ(reduced("a</nav>b<nav>c"), "a b c");
    EXPECT_EQ(reduced("a<script>b</script"), "a b</script");
    EXPECT_EQ(reduced("a<script"), "a<script");
}

TEST(PageReductionTest, AnElementIsFoundBehindOneThatNeverCloses) {
    EXPECT_EQ(reduced("a<script>b<nav>c</nav>d"), "a b d");
}

TEST(PageReductionTest, ElementsGoBeforeComments) {
    EXPECT_EQ(reduced("a<!-- <script> -->b</script>c"), "a<!-- c");
    EXPECT_EQ(reduced("a<script><!-- </script>b-->c"), "a b-->c");
}

TEST(PageReductionTest, ACommentEndsWithTheFirstTwoHyphensAndBracketBehindItsBeginning) {
    EXPECT_EQ(reduced("a<!-- <b> > -- >\n-->b-->c"), "a b-->c");
    EXPECT_EQ(reduced("a<!---->b"), "a b");
    EXPECT_EQ(reduced("a<!----->b<!--c--->d"), "a b d");
}

TEST(PageReductionTest, TheHyphensThatBeginACommentDoNotEndIt) {
    EXPECT_EQ(reduced("a<!-->b-->c"), "a c");
    EXPECT_EQ(reduced("a<!--->b-->c"), "a c");
    EXPECT_EQ(reduced("a<!-->b"), "a b");  // as a tag
    EXPECT_EQ(reduced("a<!--->b"), "a b");
}

TEST(PageReductionTest, OfACommentWithoutEndOnlyItsFirstTagIsLeftOut) {
    EXPECT_EQ(reduced("a<!-- b <i>c</i>"), "a c ");
    EXPECT_EQ(reduced("a<!-- b"), "a<!-- b");
}

TEST(PageReductionTest, CommentsGoBeforeTags) { EXPECT_EQ(reduced("a<b <!-- > -->c>d"), "a d"); }

TEST(PageReductionTest, ATagEndsWithTheFirstClosingBracket) {
    EXPECT_EQ(reduced("a<img alt=\"b>c\">d"), "a c\">d");
    EXPECT_EQ(reduced("a<b\nc\r\n>d"), "a d");
    EXPECT_EQ(reduced("1 < 2 and 2 > 1"), "1 1");
    EXPECT_EQ(reduced("a<<b>c"), "a c");
}

TEST(PageReductionTest, BracketsWithNothingBetweenAreNoTag) {
    EXPECT_EQ(reduced("<>"), "<>");
    EXPECT_EQ(reduced("a<>b>c"), "a<>b>c");
    EXPECT_EQ(reduced("<><>"), "<><>");
    EXPECT_EQ(reduced("<><a>"), "<> ");
    EXPECT_EQ(reduced("<<>>"), " >");
    EXPECT_EQ(reduced("< >"), " ");
}

TEST(PageReductionTest, ATagWithoutEndStays) {
    EXPECT_EQ(reduced("a<b>c<d e"), "a c<d e");
    EXPECT_EQ(reduced("a<"), "a<");
}

TEST(PageReductionTest, TheSixEntitiesAreResolved) {
    EXPECT_EQ(reduced("a&amp;b&nbsp;c&quot;d&#39;e&lt;f&gt;g"), "a&b c\"d'e<f>g");
}

TEST(PageReductionTest, OtherSpellingsOfEntitiesStay) {
    constexpr std::string_view others =
        "&AMP;&Nbsp;&amp&lt &#039;&#x27;&apos;&copy;&#38;&;& amp;&am\u0301p;";

    EXPECT_EQ(reduced(others), others);
}

TEST(PageReductionTest, AnAmpersandThatComesOutMayBeginAnotherEntity) {
    EXPECT_EQ(reduced("&amp;lt;b&amp;gt;"), "<b>");
    EXPECT_EQ(reduced("&amp;amp;lt;"), "&amp;lt;");
    EXPECT_EQ(reduced("&amp;nbsp;"), " ");
    EXPECT_EQ(reduced("&&amp;quot;"), "&\"");
    EXPECT_EQ(reduced("&lt;amp;"), "<amp;");
}

TEST(PageReductionTest, WhatEntitiesMakeIsNoMarkup) {
    EXPECT_EQ(reduced("&lt;script&gt;a&lt;/script&gt;"), "<script>a</script>");
    EXPECT_EQ(reduced("&lt;!-- a --&gt;"), "<!-- a -->");
}

TEST(PageReductionTest, AnEntityMayStandWhereATagWas) { EXPECT_EQ(reduced("&am<b>p;"), "&am p;"); }

TEST(PageReductionTest, ARunOfBlanksIsOneSpaceAtTheEndsToo) {
    EXPECT_EQ(reduced(" \t\r\n a \n\n b\n"), " a b ");
    EXPECT_EQ(reduced("a <b> </b>&nbsp;\n c"), "a c");
}

TEST(PageReductionTest, BlanksAreThoseOfUnicode) {
    for (const std::string_view blank :
         {"\t", "\n", "\v", "\f", "\r", " ", "\u0085", "\u00A0", "\u1680", "\u2000", "\u200A",
          "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"}) {
        EXPECT_EQ(reduced(joined({"a", blank, blank, "b"})), "a b") << blank;
    }
    for (const std::string_view other : {"\u001C", "\u180E", "\u200B", "\u2060", "\uFEFF"}) {
        EXPECT_EQ(reduced(joined({"a", other, "b"})), joined({"a", other, "b"})) << other;
    }
}

TEST(PageReductionTest, TheTextEndsAfter1500Characters) {
    for (const std::string_view character :
         {"a", "é", "e\u0301", "👩‍👩‍👧", "한", "&"}) {
        const auto page = repeated(character, PageReduction::maxCharacters);

        EXPECT_EQ(reduced(page), page);
        EXPECT_EQ(reduced(page + "b"), page);
        EXPECT_EQ(reduced("<b>" + page), " " + repeated(character, 1499));
    }
}

TEST(PageReductionTest, ABlankAtTheEndOfTheTextStays) {
    const auto page = repeated("a", 1499);

    EXPECT_EQ(reduced(page + "\n\nb"), page + " ");
}

TEST(PageReductionTest, APageThatIsNoUtf8IsLatin1) {
    EXPECT_EQ(reduced("<p>caf\xE9\xA0\xA0 100 \xA3</p>"), " café 100 £ ");
    EXPECT_EQ(reduced("a\x85\x85\x80\xFF"), "a \u0080ÿ");
    EXPECT_EQ(reduced("é\xFF"), "Ã©ÿ");
    EXPECT_EQ(reduced("\xED\xA0\x80"), "í \u0080");  // half a surrogate pair is no UTF-8
}

TEST(PageReductionTest, APageInUtf8KeepsItsMarkOfTheByteOrder) {
    EXPECT_EQ(reduced("\uFEFF<b>a"), "\uFEFF a");
}

TEST(PageReductionTest, NulIsACharacter) {
    using namespace std::string_view_literals;

    EXPECT_EQ(reduced("a\0<\0b>c"sv), "a\0 c"sv);
    EXPECT_EQ(reduced("<scr\0ipt>a</script>"sv), " a "sv);
}

TEST(PageReductionTest, WhatComesBehind600000BytesIsNotRead) {
    const auto tags = repeated("<b>", 199'999);

    EXPECT_EQ(reduced(tags + "abc"), " abc");
    EXPECT_EQ(reduced(tags + "abcd\xFF"), " abc");
    EXPECT_EQ(reduced(joined({"<script>", tags, "</script>"})), " <");
    EXPECT_EQ(reduced(joined({tags, "a<b>c"})), " a<b");
}

TEST(PageReductionTest, ACharacterAcrossTheLastByteIsLeftOut) {
    const auto tags = repeated("<b>", 199'999);

    EXPECT_EQ(reduced(tags + "aé"), " aé");
    EXPECT_EQ(reduced(tags + "abé"), " ab");
    EXPECT_EQ(reduced(tags + "日"), " 日");
    for (const std::string_view before : {"a", "ab"}) {
        EXPECT_EQ(reduced(joined({tags, before, "日"})), joined({" ", before}));
        EXPECT_EQ(reduced(joined({tags, before, "👩"})), joined({" ", before}));
    }
    EXPECT_EQ(reduced(tags + "👩"), " ");
}

/// A page of 600,000 bytes that is made to take long.
struct HostileHtml {
    std::string_view name;
    std::string begin;
    std::string_view piece;  ///< as often as it fits in between
    std::string end;
    std::string said;  ///< what the page says begins so
};

std::string filled(const HostileHtml& page) {
    const std::size_t room = PageReduction::maxBytes - page.begin.size() - page.end.size();
    return joined({page.begin, repeated(page.piece, room / page.piece.size()), page.end});
}

class HostileHtmlTest : public testing::TestWithParam<HostileHtml> {};

TEST_P(HostileHtmlTest, IsReducedInTime) {
    constexpr double limit = 2;  // seconds, a hundred times what an optimised build takes
    const std::string page = filled(GetParam());
    const std::clock_t begin = std::clock();

    const std::string said = reduced(page);

    const double taken = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    EXPECT_LT(taken, limit);
    EXPECT_TRUE(said == firstCharacters(GetParam().said, PageReduction::maxCharacters))
        << testing::PrintToString(said.substr(0, 100));
}

constexpr std::string_view openings = "<script><style><noscript><svg><nav><footer><header>";

std::vector<HostileHtml> hostileHtml() {
    const std::string all{openings};
    const auto many = [](std::string_view piece) { return repeated(piece, 1500); };
    return {
        {"UnendedScripts", "", "<script", "", many("<script")},
        {"ScriptsWithOneEnd", "", "<script", ">a", " a"},
        {"OpenScripts", "", "<script>", "", " "},
        {"OpenThenClosedNavs", repeated("<nav>", 60'000), "</nav>", "a", " a"},
        {"ClosedScripts", "", "</script>", "", " "},
        {"CrossedElements", "", "<script></style>", "", " "},
        {"EmptyElements", "", "<nav></nav>", "", " "},
        {"OpeningsThenBrackets", all, "<", "", " " + many("<")},
        {"OpeningsThenSlashes", all, "</", "", " " + many("</")},
        {"OpeningsThenHalfNames", all, "</noſcrip", "", " " + many("</noſcrip")},
        {"OpenComments", "", "<!--", "", many("<!--")},
        {"Comments", "", "<!---->", "a", " a"},
        {"Brackets", "", "<", "", many("<")},
        {"EmptyBrackets", "", "<>", "", many("<>")},
        {"ClosingBrackets", "", ">", "", many(">")},
        {"UnendedTag", "<a ", "b=c ", "", "<a " + many("b=c ")},
        {"Ampersands", "", "&", "", many("&")},
        {"AmpersandEntities", "", "&amp;", "", many("&")},
        {"NestedEntities", "&", "amp;", "", "&" + many("amp;")},
        {"CombiningMarks", "", "\u0301", "", repeated("\u0301", 300'000)},
        {"Joiners", "", "\u200D", "", repeated("\u200D", 200'000)},
        {"Families", "", "👩‍👩‍👧", "", many("👩‍👩‍👧")},
        {"Flags", "", "🇩", "", many("🇩🇩")},
        {"Nuls", "", std::string_view{"\0", 1}, "", std::string(1500, '\0')},
        {"NoUtf8", "", "\xFF", "", many("ÿ")},
        {"Blanks", "", " ", "", " "},
        {"WideBlanks", "", "\u3000", "", " "},
    };
}

INSTANTIATE_TEST_SUITE_P(Pages, HostileHtmlTest, testing::ValuesIn(hostileHtml()),
                         [](const auto& each) { return std::string{each.param.name}; });

}  // namespace
}  // namespace orvu

#include "foundation/RandomText.h"
#include "search/answers/PageReduction.h"

#include <unicode/brkiter.h>
#include <unicode/regex.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

/// Replaces the matches of a regular expression by a space, as the library searches for them.
class Replacement {
public:
    explicit Replacement(const char* pattern) {
        matcher_ =
            std::make_unique<icu::RegexMatcher>(icu::UnicodeString::fromUTF8(pattern), 0, status_);
        matcher_->setTimeLimit(0, status_);   // none
        matcher_->setStackLimit(0, status_);  // none
    }
    icu::UnicodeString in(const icu::UnicodeString& text) {
        matcher_->reset(text);
        auto result = matcher_->replaceAll(icu::UnicodeString{" "}, status_);
        EXPECT_TRUE(U_SUCCESS(status_)) << u_errorName(status_);
        return result;
    }

private:
    UErrorCode status_ = U_ZERO_ERROR;
    std::unique_ptr<icu::RegexMatcher> matcher_;
};

/// How many of the texts each step changed.
struct Changes {
    int latin1 = 0;
    int elements = 0;
    int comments = 0;
    int tags = 0;
    int entities = 0;
    int blanks = 0;
    int ends = 0;
};

/// The rules of a page's reduction, step by step, by the library alone.
class PlainPageReduction {
public:
    std::string text(std::string_view html) {
        icu::UnicodeString text = decoded(html.substr(0, PageReduction::maxBytes));
        text = changed(elements_.in(text), text, changes.elements);
        text = changed(comments_.in(text), text, changes.comments);
        text = changed(tags_.in(text), text, changes.tags);
        text = changed(withEntities(text), text, changes.entities);
        text = changed(blanks_.in(text), text, changes.blanks);
        text = changed(head(text), text, changes.ends);
        std::string result;
        return text.toUTF8String(result);
    }

    Changes changes;

private:
    static icu::UnicodeString changed(icu::UnicodeString after, const icu::UnicodeString& before,
                                      int& count) {
        if (after != before) ++count;
        return after;
    }
    icu::UnicodeString decoded(std::string_view html) {
        std::vector<char16_t> units(html.size() + 1);
        const auto size = static_cast<std::int32_t>(html.size());
        std::int32_t length = 0;
        UErrorCode status = U_ZERO_ERROR;
        u_strFromUTF8(units.data(), size + 1, &length, html.data(), size, &status);
        if (U_SUCCESS(status)) return {units.data(), length};
        ++changes.latin1;
        icu::UnicodeString text;
        for (const char c : html) text.append(static_cast<char16_t>(static_cast<unsigned char>(c)));
        return text;
    }
    static icu::UnicodeString withEntities(icu::UnicodeString text) {
        return text.findAndReplace(u"&amp;", u"&")
            .findAndReplace(u"&nbsp;", u" ")
            .findAndReplace(u"&quot;", u"\"")
            .findAndReplace(u"&#39;", u"'")
            .findAndReplace(u"&lt;", u"<")
            .findAndReplace(u"&gt;", u">");
    }
    icu::UnicodeString head(const icu::UnicodeString& text) {
        characters_->setText(text);
        const auto end = characters_->next(static_cast<std::int32_t>(PageReduction::maxCharacters));
        return end == icu::BreakIterator::DONE ? text : text.tempSubString(0, end);
    }

    Replacement elements_{"(?is)<(script|style|noscript|svg|nav|footer|header)[^>]*>.*?</\\1>"};
    Replacement comments_{"(?s)<!--.*?-->"};
    Replacement tags_{"<[^>]+>"};
    Replacement blanks_{"\\s+"};
    UErrorCode status_ = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> characters_{
        icu::BreakIterator::createCharacterInstance(icu::Locale{"en_US"}, status_)};
};

/// Pages of pieces that lie beside each other as they must for each rule.
class RandomPages {
public:
    explicit RandomPages(std::uint64_t seed) : random_(seed) {}

    /// Some 200 bytes at most, most of them markup.
    std::string page() {
        const std::size_t room = random_.below(200) + 1;
        std::string page;
        while (page.size() < room) page += piece();
        if (random_.below(8) == 0) page.insert(random_.below(page.size() + 1), 1, badByte());
        return page;
    }
    /// Some thousands of characters, few of them markup.
    std::string longPage() {
        const std::size_t room = random_.below(20'000) + 1;
        std::string page;
        while (page.size() < room) page += random_.below(200) == 0 ? piece() : plainPiece();
        return page;
    }

private:
    template <std::size_t count>
    std::string_view one(const std::array<std::string_view, count>& pieces) {
        return pieces[random_.below(count)];
    }

    std::string piece() {
        using namespace std::string_view_literals;
        static constexpr std::array marks{
            "<"sv,  "<"sv,   "<"sv,    ">"sv,     ">"sv,      ">"sv,   "/"sv,     "</"sv,
            "<>"sv, "</>"sv, "<!--"sv, "<!--"sv,  "-->"sv,    "-->"sv, "--"sv,    "-"sv,
            "!"sv,  "<!"sv,  "->"sv,   "<!-->"sv, "<!--->"sv, "\""sv,  "</ scr"sv};
        switch (random_.below(8)) {
            case 0:
            case 1:
                return std::string{one(marks)};
            case 2:
                return std::string{name()};
            case 3:
                return joined({"<", name(), plainPiece(), ">"});
            case 4:
                return joined({random_.below(3) == 0 ? "<" : "</", name(), ">"});
            default:
                return std::string{plainPiece()};
        }
    }

    std::string_view plainPiece() {
        using namespace std::string_view_literals;
        static constexpr std::array entities{
            "&"sv,    "&amp;"sv, "&amp;"sv, "&nbsp;"sv, "&quot;"sv, "&#39;"sv, "&lt;"sv,  "&gt;"sv,
            "amp;"sv, "lt;"sv,   "nbsp;"sv, ";"sv,      "&amp"sv,   "&AMP;"sv, "quot;"sv, "#39;"sv,
            "gt;"sv,  "&#"sv,    "&&"sv,    "&am"sv,    "&l"sv,     "p;"sv};
        static constexpr std::array blanks{
            " "sv,      "\t"sv,     "\n"sv,     "\r"sv,     "\r\n"sv,   "\v"sv,
            "\f"sv,     "\u0085"sv, "\u00A0"sv, "\u1680"sv, "\u2003"sv, "\u2028"sv,
            "\u2029"sv, "\u202F"sv, "\u205F"sv, "\u3000"sv, "\u200B"sv, "\x1C"sv};
        static constexpr std::array others{"a"sv,    "b"sv,      "Z"sv,      "1"sv,
                                           "é"sv,    "𝒜"sv,      "\u0301"sv, "👩‍👩‍👧"sv,
                                           "🇩"sv,    "\u200D"sv, "한"sv,     "\0"sv,
                                           "\x01"sv, "\x7F"sv,   "\uFEFF"sv, "İ"sv,
                                           "ß"sv,    "\u212A"sv};
        switch (random_.below(3)) {
            case 0:
                return one(entities);
            case 1:
                return one(blanks);
            default:
                return one(others);
        }
    }

    /// Two times in three one of very few, so that many elements are closed.
    std::string_view name() {
        static constexpr std::array<std::string_view, 32> names{
            "script", "SCRIPT", "ſcript", "sCrIpT", "scr",    "style",    "ﬆyle",     "ﬅYLE",
            "stYle",  "ſtyle",  "ﬆ",      "st",     "tyle",   "noscript", "noſcript", "NOSCRIPT",
            "no",     "svg",    "ſVG",    "SVG",    "nav",    "navi",     "NAV",      "na",
            "footer", "FooTer", "foo",    "header", "HEADER", "head",     "ﬁ",        "scrİpt"};
        static constexpr std::array<std::string_view, 4> usual{"script", "ﬆyle", "style", "Nav"};
        return random_.below(3) == 0 ? one(names) : one(usual);
    }

    char badByte() { return static_cast<char>(0x80 + random_.below(0x80)); }

    RandomText random_;
};

/// In ASCII, as it may stand in a program's source.
std::string escaped(std::string_view text) {
    const auto octal = [](int number) { return static_cast<char>('0' + number % 8); };
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F && c != '\\' && c != '"') {
            result.push_back(c);
        } else {
            result += {'\\', octal(byte / 64), octal(byte / 8), octal(byte)};
        }
    }
    return result;
}

TEST(PageReductionOracleTest, TheTextIsThatOfTheExpressions) {
    RandomPages pages{2026};
    PlainPageReduction plain;
    for (int i = 0; i < 20'000; ++i) {
        const std::string page = pages.page();
        const std::string expected = plain.text(page);

        ASSERT_EQ(escaped(PageReduction::text(page)), escaped(expected)) << escaped(page);
    }
    EXPECT_GT(plain.changes.latin1, 1000);
    EXPECT_GT(plain.changes.elements, 5000);
    EXPECT_GT(plain.changes.comments, 3000);
    EXPECT_GT(plain.changes.tags, 5000);
    EXPECT_GT(plain.changes.entities, 5000);
    EXPECT_GT(plain.changes.blanks, 5000);
}

TEST(PageReductionOracleTest, LongTextsEndWithTheSameCharacter) {
    RandomPages pages{2027};
    PlainPageReduction plain;
    for (int i = 0; i < 200; ++i) {
        const std::string page = pages.longPage();
        const std::string expected = plain.text(page);

        ASSERT_EQ(escaped(PageReduction::text(page)), escaped(expected)) << escaped(page);
    }
    EXPECT_GT(plain.changes.ends, 20);
}

/// The code points that aren't ASCII, with letters of ASCII in what case folding makes of them.
std::vector<std::string> foldingToAscii() {
    std::vector<std::string> result;
    for (UChar32 codePoint = 0x80; codePoint <= 0x10FFFF; ++codePoint) {
        const icu::UnicodeString character{codePoint};
        const icu::UnicodeString folded = icu::UnicodeString{character}.foldCase();
        for (std::int32_t i = 0; i < folded.length(); ++i) {
            if (folded[i] >= 0x80) continue;
            character.toUTF8String(result.emplace_back());
            break;
        }
    }
    return result;
}

TEST(PageReductionOracleTest, EachCharacterThatFoldsToLettersMakesTheSameNames) {
    const auto folding = foldingToAscii();
    PlainPageReduction plain;
    int pages = 0;
    for (const std::string name :
         {"script", "style", "noscript", "svg", "nav", "footer", "header"}) {
        for (std::size_t at = 0; at < name.size(); ++at) {
            for (std::size_t letters = 0; letters < 4; ++letters) {
                for (const auto& character : folding) {
                    std::string other = name;
                    other.replace(at, std::min(letters, name.size() - at), character);
                    const auto page = joined({"<", other, ">a</", name, ">b<", name, ">c</", other,
                                              ">d<", other, ">e</", other, ">f"});

                    ASSERT_EQ(PageReduction::text(page), plain.text(page)) << page;
                    ++pages;
                }
            }
        }
    }
    EXPECT_GE(folding.size(), 19U);
    EXPECT_GT(plain.changes.elements, 0);
    EXPECT_LT(plain.changes.elements, pages / 10);
}

TEST(PageReductionOracleTest, EachCodePointIsABlankOrNoneAsInTheExpression) {
    constexpr UChar32 row = 0x100;
    PlainPageReduction plain;
    for (UChar32 first = 0; first <= 0x10FFFF; first += row) {
        if (U_IS_SURROGATE(first)) continue;
        icu::UnicodeString text;
        for (UChar32 codePoint = first; codePoint < first + row; ++codePoint) {
            text.append(UChar32{'x'}).append(codePoint);
        }
        std::string page;
        text.toUTF8String(page);

        ASSERT_EQ(PageReduction::text(page), plain.text(page)) << first;
    }
    EXPECT_EQ(plain.changes.blanks, 4);  // rows 00, 16, 20 and 30
}

}  // namespace
}  // namespace orvu

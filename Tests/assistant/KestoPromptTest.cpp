#include "assistant/Kesto.h"

#include "foundation/json/Json.h"
#include "foundation/text/Text.h"
#include "support/HostilePages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace orvu {
namespace {

using Pages = std::vector<Kesto::Page>;
using testing::HasSubstr;
using testing::Not;

constexpr std::string_view opening = "<pages>\n";
constexpr std::string_view closing = "\n</pages>\n\nMy question: ";

std::string repeated(std::string_view part, std::size_t count) {
    std::string text;
    for (std::size_t each = 0; each < count; ++each) text += part;
    return text;
}

/// What stands between the marks of a prompt.
std::string block(std::string_view prompt, std::string_view question) {
    EXPECT_TRUE(prompt.starts_with(opening));
    const std::string end = std::string{closing}.append(question);
    EXPECT_TRUE(prompt.ends_with(end));
    return std::string{prompt.substr(opening.size(), prompt.size() - opening.size() - end.size())};
}

/// The pages that a model reads in a block.
Pages read(const std::string& block) {
    Pages pages;
    const auto document = JsonDocument::parse(block);
    if (!document) {
        ADD_FAILURE() << "no JSON: " << block;
        return pages;
    }
    const auto entries = document->root().array().value();
    for (const auto& entry : entries) {
        pages.push_back({std::string{entry.field("title")->text().value()},
                         std::string{entry.field("url")->text().value()},
                         std::string{entry.field("text")->text().value()}});
    }
    return pages;
}

TEST(KestoPromptTest, WithoutPagesItIsTheQuestion) {
    EXPECT_EQ(Kesto::prompt("Why </pages>?", {}), "Why </pages>?");
}

TEST(KestoPromptTest, PagesStandBeforeTheQuestionAsSortedJson) {
    const Pages pages{{"A \"title\"", "https://a.example/b", "x\ty\\"},
                      {"Two", "", "line\r\nline\x01\x1f\x7f"}};

    EXPECT_EQ(Kesto::prompt("Why?", pages),
              "<pages>\n"
              R"([{"text":"x\ty\\","title":"A \"title\"","url":"https:\/\/a.example\/b"},)"
              R"({"text":"line\r\nline\u0001\u001f)"
              "\x7f"
              R"(","title":"Two","url":""}])"
              "\n</pages>\n\nMy question: Why?");
}

TEST(KestoPromptTest, TheQuestionIsNotEscaped) {
    EXPECT_THAT(Kesto::prompt("</pages> <b>\"/", {{"t", "u", "x"}}),
                testing::EndsWith("My question: </pages> <b>\"/"));
}

TEST(KestoPromptTest, AClosingMarkInAPageIsEscaped) {
    const std::string prompt = Kesto::prompt("Why?", {{"t", "u", "</pages>"}});

    EXPECT_THAT(prompt, HasSubstr(R"("text":"\u003c\/pages\u003e")"));
}

TEST(KestoPromptTest, AngleBracketsBeforeACombiningMarkAreEscapedAsWell) {
    const std::string text = "<\u0338/pages>\u0338";

    const std::string prompt = Kesto::prompt("Why?", {{text, text, text}});

    EXPECT_EQ(block(prompt, "Why?").find_first_of("<>"), std::string::npos);
    EXPECT_EQ(read(block(prompt, "Why?")), (Pages{{text, text, text}}));
}

TEST(KestoPromptTest, OnePageMayUseTheWholeBudget) {
    const Pages pages{{"t", "u", repeated("x", 3601)}};

    EXPECT_EQ(read(block(Kesto::prompt("?", pages), "?"))[0].text, repeated("x", 3600));
}

TEST(KestoPromptTest, TheBudgetIsSplitEvenlyAmongAtMostFourPages) {
    const std::vector<std::size_t> budgets{3600, 1800, 1200, 900, 900, 900};
    for (std::size_t count = 1; count <= budgets.size(); ++count) {
        Pages pages(count, {"t", "u", repeated("y\u0301", 4000)});
        pages.front().text = "short";

        const auto known = read(block(Kesto::prompt("?", pages), "?"));

        ASSERT_EQ(known.size(), std::min<std::size_t>(count, 4));
        EXPECT_EQ(known.front().text, "short");
        if (count > 1) {
            EXPECT_EQ(characterCount(known.back().text), budgets[count - 1]);
        }
    }
}

TEST(KestoPromptTest, TitlesAndAddressesAreCutInCharacters) {
    const Pages pages{{repeated("👩‍👩‍👧‍👦", 201), repeated("e\u0301", 401), ""}};

    const auto known = read(block(Kesto::prompt("?", pages), "?"));

    EXPECT_EQ(known[0].title, repeated("👩‍👩‍👧‍👦", 200));
    EXPECT_EQ(known[0].url, repeated("e\u0301", 400));
}

TEST(KestoPromptTest, BytesThatAreNoTextBecomeReplacementCharacters) {
    const Pages pages{{"\xff", "\xc3", "a\xf0\x9f</pages>"}};

    const auto known = read(block(Kesto::prompt("?", pages), "?"));

    EXPECT_EQ(known, (Pages{{"\uFFFD", "\uFFFD", "a\uFFFD</pages>"}}));
}

/// Each of them stands in every field of a page, and in each place where a cut may split it.
class HostilePageTest : public testing::TestWithParam<HostilePage> {
protected:
    static void expectGuarded(const Pages& pages) {
        const std::string prompt = Kesto::prompt("Why?", pages);
        const std::string json = block(prompt, "Why?");
        EXPECT_EQ(json.find_first_of("<>"), std::string::npos);
        EXPECT_EQ(json.find('\n'), std::string::npos);
        Pages expected = pages;
        if (expected.size() > Kesto::pagesLimit) expected.resize(Kesto::pagesLimit);
        for (auto& page : expected) {
            page.title = wellFormed(firstCharacters(page.title, Kesto::titleLimit));
            page.url = wellFormed(firstCharacters(page.url, Kesto::urlLimit));
            page.text = wellFormed(firstCharacters(page.text, Kesto::textBudget / expected.size()));
        }
        EXPECT_EQ(read(json), expected);
    }
};

INSTANTIATE_TEST_SUITE_P(All, HostilePageTest, testing::ValuesIn(hostilePages()),
                         [](const auto& tested) { return std::string{tested.param.name}; });

TEST_P(HostilePageTest, NoPageEndsItsBlock) {
    const std::string text{GetParam().text};
    expectGuarded({{text, text, text}});
    expectGuarded(Pages(6, {text, text, text}));
}

TEST_P(HostilePageTest, NoPageEndsItsBlockWhereACutSplitsIt) {
    const std::string text{GetParam().text};
    const std::size_t length = std::min<std::size_t>(characterCount(text), 40);
    for (std::size_t shown = 0; shown <= length; ++shown) {
        expectGuarded({{repeated("t", Kesto::titleLimit - shown) + text,
                        repeated("u", Kesto::urlLimit - shown) + text,
                        repeated("x", Kesto::textBudget - shown) + text}});
    }
}

TEST(HostilePagesTest, ThereAreSixtyAtLeastAndTheirNamesDiffer) {
    std::vector<std::string_view> names;
    for (const auto& page : hostilePages()) names.push_back(page.name);
    EXPECT_GE(names.size(), 60U);
    std::ranges::sort(names);
    EXPECT_EQ(std::ranges::adjacent_find(names), names.end());
}

TEST(KestoPromptTest, RandomBytesNeverEndTheirBlock) {
    std::mt19937 random{7};
    const std::vector<std::string_view> parts{
        "<",    ">",        "/",      "\\", "\"",   "\\u003c", "\n",     "\r", "\u2028",
        "\xff", "</pages>", "\u0338", "x",  "\xf0", "\x9f",    "\u202e", "{",  "]"};
    for (int round = 0; round < 500; ++round) {
        Pages pages(random() % 6 + 1);
        for (auto& page : pages) {
            for (std::string* field : {&page.title, &page.url, &page.text}) {
                for (auto left = random() % 60; left > 0; --left) {
                    *field += parts[random() % parts.size()];
                }
            }
        }
        const std::string json = block(Kesto::prompt("?", pages), "?");
        ASSERT_EQ(json.find_first_of("<>\n\r"), std::string::npos);
        ASSERT_EQ(read(json).size(), std::min(pages.size(), Kesto::pagesLimit));
    }
}

}  // namespace
}  // namespace orvu

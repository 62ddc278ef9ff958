#include "foundation/text/Translation.h"

#include "platform/TemporaryFolder.h"
#include "foundation/RandomText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <map>

namespace orvu {
namespace {

/// A catalogue as programs read it: texts with their translations, forms for numbers with a zero
/// between them, in numbers of the machine's own order.
std::string catalogue(const std::map<std::string, std::string>& texts) {
    constexpr std::uint32_t magic = 0x950412de;
    constexpr std::uint32_t headSize = 28;
    const auto count = static_cast<std::uint32_t>(texts.size());
    std::string numbers;
    const auto put = [&numbers](std::uint32_t number) {
        numbers.append(reinterpret_cast<const char*>(&number), sizeof number);
    };
    for (const std::uint32_t each :
         {magic, 0U, count, headSize, headSize + 8 * count, 0U, headSize + 16 * count}) {
        put(each);
    }
    std::string bytes;
    const auto add = [&](const std::string& text) {
        put(static_cast<std::uint32_t>(text.size()));
        put(headSize + 16 * count + static_cast<std::uint32_t>(bytes.size()));
        bytes.append(text).push_back('\0');
    };
    for (const auto& [text, told] : texts) add(text);
    for (const auto& [text, told] : texts) add(told);
    return numbers + bytes;
}

/// Speaks a language whose numbers have three forms, until the end of the test.
class TranslationTest : public testing::Test {
protected:
    TranslationTest() {
        const auto messages = folder_.path() / "qps/LC_MESSAGES";
        std::filesystem::create_directories(messages);
        const std::string head =
            "Content-Type: text/plain; charset=UTF-8\n"
            "Plural-Forms: nplurals=3; plural=(n%10==1 && n%100!=11 ? 0 : n%10>=2 && n%10<=4 ? 1 : "
            "2);\n";
        std::ofstream{messages / "orvu.mo", std::ios::binary} << catalogue({
            {"", head},
            {"Close", "Schließen"},
            {"Search {1} for “{2}”", "„{2}“ bei {1} suchen"},
            {std::string{"{1} tab\0{1} tabs", 16}, std::string{"{1} a\0{1} b\0{1} c", 17}},
        });
        speak("C.UTF-8", "qps", folder_.path());
    }
    TranslationTest(const TranslationTest&) = delete;
    TranslationTest& operator=(const TranslationTest&) = delete;
    ~TranslationTest() override { speak("C", "", "/nowhere"); }

private:
    static void speak(const char* locale, const char* language,
                      const std::filesystem::path& folder) {
        setenv("LANGUAGE", language, 1);
        std::setlocale(LC_MESSAGES, locale);
        useTranslations(folder);
    }

    TemporaryFolder folder_;
};

TEST_F(TranslationTest, ATextOfTheCatalogueIsShownInItsLanguage) {
    EXPECT_EQ(std::string{phrase("Close")}, "Schließen");
}

TEST_F(TranslationTest, ATextThatTheCatalogueLacksIsShownInEnglish) {
    EXPECT_EQ(std::string{phrase("Not there")}, "Not there");
    EXPECT_EQ(trn("{1} day", "{1} days", 1), "1 day");
    EXPECT_EQ(trn("{1} day", "{1} days", 5), "5 days");
}

TEST_F(TranslationTest, ValuesStandWhereTheLanguageWantsThem) {
    EXPECT_EQ(tr("Search {1} for “{2}”", "Maps", "here"), "„here“ bei Maps suchen");
}

TEST_F(TranslationTest, NumbersTakeTheFormsOfTheLanguage) {
    EXPECT_EQ(trn("{1} tab", "{1} tabs", 1), "1 a");
    EXPECT_EQ(trn("{1} tab", "{1} tabs", 2), "2 b");
    EXPECT_EQ(trn("{1} tab", "{1} tabs", 5), "5 c");
    EXPECT_EQ(trn("{1} tab", "{1} tabs", 11), "11 c");
    EXPECT_EQ(trn("{1} tab", "{1} tabs", 21), "21 a");
}

TEST_F(TranslationTest, AConstantFollowsTheLanguageOfTheMoment) {
    static constexpr Phrase close = phrase("Close");
    EXPECT_EQ(close, "Schließen");
    EXPECT_FALSE(close == "Close");
    EXPECT_EQ(close, phrase("Close"));
}

TEST_F(TranslationTest, TheEmptyTextIsNotTheHeadOfTheCatalogue) {
    EXPECT_EQ(std::string{Phrase{}}, "");
    EXPECT_TRUE(Phrase{}.empty());
    EXPECT_FALSE(phrase("Close").empty());
}

TEST(WordingTest, WordsTheTextAndNotWhatComesIntoIt) {
    useWording([](std::string_view text) { return "here: " + std::string{text}; });

    EXPECT_EQ(std::string{phrase("On this Mac")}, "here: On this Mac");
    EXPECT_EQ(tr("I can read “{1}”", "this Mac"), "here: I can read “this Mac”");
    EXPECT_EQ(trn("{1} page of {2}", "{1} pages of {2}", 2, "this Mac"),
              "here: 2 pages of this Mac");

    useWording(nullptr);
    EXPECT_EQ(std::string{phrase("On this Mac")}, "On this Mac");
}

TEST(WordingTest, MaySayTextsOfTheProgramItself) {
    useWording([](std::string_view text) { return std::string{text} + std::string{phrase("!")}; });

    EXPECT_EQ(std::string{phrase("Stop")}, "Stop!");
    EXPECT_EQ(std::string{phrase("Stop")}, "Stop!");

    useWording(nullptr);
}

TEST(FilledTest, PutsEachValueIntoItsPlaceAsOftenAsItStands) {
    EXPECT_EQ(filled("{2}, {1} and {2}", {"a", "b"}), "b, a and b");
    EXPECT_EQ(filled("{1}", {""}), "");
    EXPECT_EQ(filled("", {"a"}), "");
}

TEST(FilledTest, LeavesWhatIsNoPlaceOfAValue) {
    EXPECT_EQ(filled("{3} {0} {} {a} {1", {"a", "b"}), "{3} {0} {} {a} {1");
    EXPECT_EQ(filled("{{1}}", {"a"}), "{a}");
}

TEST(FilledTest, TakesNoPlaceFromAValue) {
    EXPECT_EQ(filled("{1} {2}", {"{2}", "{1}"}), "{2} {1}");
}

TEST(FilledTest, LosesNothingOfAnyText) {
    RandomText random{7};
    for (int round = 0; round < 500; ++round) {
        std::string text;
        for (auto left = random.below(30); left > 0; --left) {
            text += std::string_view{"{}012 ab"}[random.below(8)];
        }
        EXPECT_EQ(filled(text, {}), text);
        EXPECT_EQ(filled("{1}", {text}), text);
        EXPECT_EQ(filled(text, {"{1}", "{2}"}), text);
    }
}

}  // namespace
}  // namespace orvu

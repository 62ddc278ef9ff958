#include "profiles/Preferences.h"

#include "fakes/FakeUserDefaults.h"
#include "foundation/RandomText.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

class PrefsTest : public testing::Test {
protected:
    std::string searched(std::string_view query) const {
        const auto url = Prefs::searchURL(defaults, query);
        return url ? url->absoluteString() : "";
    }

    FakeUserDefaults defaults;
};

TEST_F(PrefsTest, AStoredFalseWinsOverADefaultOfTrue) {
    defaults.setBoolean("restoreTabs", false);

    EXPECT_FALSE(Prefs::boolean(defaults, "restoreTabs", true));
}

TEST_F(PrefsTest, AStoredTrueWinsOverADefaultOfFalse) {
    defaults.setBoolean("narrowTabs", true);

    EXPECT_TRUE(Prefs::boolean(defaults, "narrowTabs", false));
}

TEST_F(PrefsTest, AnUnsetSwitchHasItsDefault) {
    EXPECT_TRUE(Prefs::boolean(defaults, "restoreTabs", true));
    EXPECT_FALSE(Prefs::boolean(defaults, "narrowTabs", false));
}

TEST_F(PrefsTest, AStoredNumberOrTextIsReadAsASwitch) {
    defaults.setNumber("number", 0.5);
    defaults.setNumber("zero", 0.0);
    defaults.setString("yes", "YES");
    defaults.setString("other", "no");

    EXPECT_TRUE(Prefs::boolean(defaults, "number", false));
    EXPECT_FALSE(Prefs::boolean(defaults, "zero", true));
    EXPECT_TRUE(Prefs::boolean(defaults, "yes", false));
    EXPECT_FALSE(Prefs::boolean(defaults, "other", true));
}

TEST_F(PrefsTest, AStoredValueThatIsNoSwitchAtAllIsFalse) {
    defaults.setData("restoreTabs", "[]");

    EXPECT_FALSE(Prefs::boolean(defaults, "restoreTabs", true));
}

TEST_F(PrefsTest, TheEnginesAreOfferedInThisOrder) {
    std::vector<std::pair<std::string_view, std::string_view>> offered;
    for (const auto& engine : Prefs::engines)
        offered.emplace_back(engine.rawValue, engine.shownName);

    EXPECT_EQ(offered, (std::vector<std::pair<std::string_view, std::string_view>>{
                           {"google", "Google"},
                           {"duckduckgo", "DuckDuckGo"},
                           {"bing", "Bing"},
                           {"ecosia", "Ecosia"}}));
}

TEST_F(PrefsTest, EachStoredEngineIsReadAndHasItsFacts) {
    for (const auto& facts : Prefs::engines) {
        defaults.setString("searchEngine", facts.rawValue);

        EXPECT_EQ(Prefs::engine(defaults), facts.engine);
        EXPECT_EQ(Prefs::facts(facts.engine).rawValue, facts.rawValue);
    }
}

TEST_F(PrefsTest, AnUnsetEngineIsGoogle) {
    EXPECT_EQ(Prefs::engine(defaults), Prefs::Engine::google);
}

TEST_F(PrefsTest, AnEngineThatIsNotInTheTableIsGoogle) {
    for (const std::string_view unknown : {"", "Google", "DuckDuckGo", "yahoo", "bing ", "\xFF"}) {
        defaults.setString("searchEngine", unknown);

        EXPECT_EQ(Prefs::engine(defaults), Prefs::Engine::google) << unknown;
        EXPECT_EQ(searched("x"), "https://www.google.com/search?q=x");
    }
}

TEST_F(PrefsTest, AnEngineStoredInAnotherTypeIsGoogle) {
    defaults.setInteger("searchEngine", 2);
    EXPECT_EQ(Prefs::engine(defaults), Prefs::Engine::google);

    defaults.setData("searchEngine", "bing");
    EXPECT_EQ(Prefs::engine(defaults), Prefs::Engine::google);
}

TEST_F(PrefsTest, EachEngineSearchesAtItsOwnAddress) {
    const std::vector<std::pair<std::string_view, std::string_view>> expected{
        {"google", "https://www.google.com/search?q=otters"},
        {"duckduckgo", "https://duckduckgo.com/?q=otters"},
        {"bing", "https://www.bing.com/search?q=otters"},
        {"ecosia", "https://www.ecosia.org/search?q=otters"}};

    for (const auto& [engine, address] : expected) {
        defaults.setString("searchEngine", engine);

        EXPECT_EQ(searched("otters"), address);
    }
}

TEST_F(PrefsTest, ThePlusSignOfASearchStaysAsItIs) {
    EXPECT_EQ(searched("c++ or c"), "https://www.google.com/search?q=c++%20or%20c");
}

TEST_F(PrefsTest, SignsThatWouldEndTheSearchArePercentEncoded) {
    EXPECT_EQ(searched("a&b=c#d%e?"), "https://www.google.com/search?q=a%26b%3Dc%23d%25e?");
    EXPECT_EQ(searched("né\n"), "https://www.google.com/search?q=n%C3%A9%0A");
}

TEST_F(PrefsTest, EveryTextHasASearchAddressThatGivesItBack) {
    RandomText random{23};
    for (int i = 0; i < 2000; ++i) {
        const auto text = random.text(12);

        const auto url = Prefs::searchURL(defaults, text);

        ASSERT_TRUE(url) << testing::PrintToString(text);
        EXPECT_EQ(percentDecoded(url->query().value()), "q=" + text);
    }
}

TEST_F(PrefsTest, TheHistoryIsForgottenUnderThisName) {
    EXPECT_EQ(Prefs::clearHistory, "OrvuClearHistory");
}

}  // namespace
}  // namespace orvu

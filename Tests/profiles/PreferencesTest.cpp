#include "profiles/Preferences.h"

#include "fakes/FakeUserDefaults.h"
#include "foundation/RandomText.h"
#include "profiles/Settings.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

class PrefsTest : public testing::Test {
protected:
    std::string searched(std::string_view query) const {
        const auto url = Prefs::searchURL(settings.searchEngine.get(), query);
        return url ? url->absoluteString() : "";
    }

    FakeUserDefaults defaults;
    Settings settings{defaults};
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

        EXPECT_EQ(settings.searchEngine.get(), facts.engine);
        EXPECT_EQ(Prefs::facts(facts.engine).rawValue, facts.rawValue);
    }
}

TEST_F(PrefsTest, AnUnsetEngineIsGoogle) {
    EXPECT_EQ(settings.searchEngine.get(), Prefs::Engine::google);
}

TEST_F(PrefsTest, AnEngineThatIsNotInTheTableIsGoogle) {
    for (const std::string_view unknown : {"", "Google", "DuckDuckGo", "yahoo", "bing ", "\xFF"}) {
        defaults.setString("searchEngine", unknown);

        EXPECT_EQ(settings.searchEngine.get(), Prefs::Engine::google) << unknown;
        EXPECT_EQ(searched("x"), "https://www.google.com/search?q=x");
    }
}

TEST_F(PrefsTest, AnEngineStoredInAnotherTypeIsGoogle) {
    defaults.setInteger("searchEngine", 2);
    EXPECT_EQ(settings.searchEngine.get(), Prefs::Engine::google);

    defaults.setData("searchEngine", "bing");
    EXPECT_EQ(settings.searchEngine.get(), Prefs::Engine::google);
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

        const auto url = Prefs::searchURL(settings.searchEngine.get(), text);

        ASSERT_TRUE(url) << testing::PrintToString(text);
        EXPECT_EQ(percentDecoded(url->query().value()), "q=" + text);
    }
}

TEST_F(PrefsTest, EachEngineIsAskedForSuggestionsAtItsOwnAddress) {
    const auto asked = [](Prefs::Engine engine) {
        return Prefs::suggestURL(engine, "sea otters")->absoluteString();
    };

    EXPECT_EQ(asked(Prefs::Engine::google),
              "https://suggestqueries.google.com/complete/search?client=firefox&q=sea%20otters");
    EXPECT_EQ(asked(Prefs::Engine::duckduckgo),
              "https://duckduckgo.com/ac/?type=list&q=sea%20otters");
    EXPECT_EQ(asked(Prefs::Engine::bing), "https://api.bing.com/osjson.aspx?query=sea%20otters");
    EXPECT_EQ(asked(Prefs::Engine::ecosia),
              "https://ac.ecosia.org/autocomplete?type=list&q=sea%20otters");
}

TEST_F(PrefsTest, SignsThatWouldEndTheTypedTextArePercentEncodedInSuggestions) {
    EXPECT_EQ(Prefs::suggestURL(Prefs::Engine::bing, "c++ a&b=c#d%e é")->absoluteString(),
              "https://api.bing.com/osjson.aspx?query=c++%20a%26b%3Dc%23d%25e%20%C3%A9");
}

TEST_F(PrefsTest, EveryTextHasAnAddressForItsSuggestions) {
    RandomText random{24};
    for (int i = 0; i < 2000; ++i) {
        const auto text = random.below(4) == 0 ? random.bytes(12) : random.text(12);
        for (const auto& facts : Prefs::engines) {
            const auto url = Prefs::suggestURL(facts.engine, text);

            ASSERT_TRUE(url) << testing::PrintToString(text);
            EXPECT_EQ(url->scheme(), "https");
            EXPECT_TRUE(url->absoluteString().starts_with(facts.suggest));
        }
    }
}

/// The search on the page at `address`, as the engine's raw value and the text.
std::string searchOn(std::string_view address) {
    const auto page = Prefs::searchQuery(Url::parse(address));
    if (!page) return "none";
    return joined({Prefs::facts(page->engine).rawValue, ": ", page->query});
}

TEST_F(PrefsTest, AResultsPageReadsBackWithSpacesForItsPlusSigns) {
    EXPECT_EQ(searchOn("https://www.google.com/search?q=sea+otters"), "google: sea otters");
    EXPECT_EQ(searchOn("https://duckduckgo.com/?q=sea+otters&ia=web"), "duckduckgo: sea otters");
    EXPECT_EQ(searchOn("https://www.bing.com/search?form=x&q=sea%20otters"), "bing: sea otters");
    EXPECT_EQ(searchOn("https://www.ecosia.org/search?q=sea+otters#top"), "ecosia: sea otters");
}

TEST_F(PrefsTest, AnEscapedPlusSignBecomesASpaceLikeAnyOther) {
    EXPECT_EQ(searchOn("https://www.google.com/search?q=c%2B%2B"), "google: c  ");
    EXPECT_EQ(searchOn("https://www.google.com/search?q=+"), "google:  ");
}

TEST_F(PrefsTest, ASubdomainOfAnEngineCountsAndOtherHostsDoNot) {
    EXPECT_EQ(searchOn("https://images.google.com/search?q=a"), "google: a");
    EXPECT_EQ(searchOn("https://a.b.bing.com/search?q=a"), "bing: a");
    EXPECT_EQ(searchOn("https://google.com/search?q=a"), "google: a");
    EXPECT_EQ(searchOn("https://example.org/search?q=a"), "none");
    EXPECT_EQ(searchOn("https://google.com.example.org/search?q=a"), "none");
    EXPECT_EQ(searchOn("https://google.de/search?q=a"), "none");
}

TEST_F(PrefsTest, AHostThatMerelyEndsInTheNameOfAnEngineDoesNotCount) {
    EXPECT_EQ(searchOn("https://notgoogle.com/search?q=a"), "none");
    EXPECT_EQ(searchOn("https://my-bing.com/search?q=a"), "none");
}

TEST_F(PrefsTest, TheHostOfAResultsPageMayHaveCapitals) {
    EXPECT_EQ(searchOn("https://WWW.Google.COM/search?q=Otters"), "google: Otters");
}

TEST_F(PrefsTest, ThePathOfAResultsPageBeginsWithSearchExceptOnDuckDuckGo) {
    EXPECT_EQ(searchOn("https://www.google.com/searchbyimage?q=a"), "google: a");
    EXPECT_EQ(searchOn("https://www.google.com/maps?q=a"), "none");
    EXPECT_EQ(searchOn("https://www.google.com/Search?q=a"), "none");
    EXPECT_EQ(searchOn("https://www.google.com/?q=a"), "none");
    EXPECT_EQ(searchOn("https://duckduckgo.com/settings?q=a"), "duckduckgo: a");
}

TEST_F(PrefsTest, OnlyTheFirstItemCalledQCountsAndItMustSaySomething) {
    EXPECT_EQ(searchOn("https://www.google.com/search?oq=x&q=a&q=b"), "google: a");
    EXPECT_EQ(searchOn("https://www.google.com/search?%71=a"), "google: a");
    EXPECT_EQ(searchOn("https://www.google.com/search?q&q=b"), "none");
    EXPECT_EQ(searchOn("https://www.google.com/search?q=&q=b"), "none");
    EXPECT_EQ(searchOn("https://www.google.com/search?Q=a"), "none");
    EXPECT_EQ(searchOn("https://www.google.com/search?oq=a"), "none");
    EXPECT_EQ(searchOn("https://www.google.com/search?"), "none");
    EXPECT_EQ(searchOn("https://www.google.com/search"), "none");
    EXPECT_EQ(searchOn("https://www.google.com/search#q=a"), "none");
}

TEST_F(PrefsTest, WithoutAnAddressOrAHostThereIsNoSearch) {
    EXPECT_EQ(Prefs::searchQuery(std::nullopt), std::nullopt);
    EXPECT_EQ(searchOn("about:blank?q=a"), "none");
    EXPECT_EQ(searchOn("file:///search?q=a"), "none");
    EXPECT_EQ(searchOn("/search?q=a"), "none");
}

TEST_F(PrefsTest, EverySearchReadsBackFromItsOwnAddressButForPlusSigns) {
    RandomText random{25};
    for (int i = 0; i < 2000; ++i) {
        auto text = random.text(12);
        const auto& facts = Prefs::engines[random.below(Prefs::engines.size())];
        defaults.setString("searchEngine", facts.rawValue);

        const auto page = Prefs::searchQuery(Prefs::searchURL(settings.searchEngine.get(), text));

        std::ranges::replace(text, '+', ' ');
        if (text.empty()) {
            EXPECT_EQ(page, std::nullopt);
        } else {
            EXPECT_EQ(page, (Prefs::SearchPage{facts.engine, text}));
        }
    }
}

TEST_F(PrefsTest, TheHistoryIsForgottenUnderThisName) {
    EXPECT_EQ(Prefs::clearHistory, "OrvuClearHistory");
}

}  // namespace
}  // namespace orvu

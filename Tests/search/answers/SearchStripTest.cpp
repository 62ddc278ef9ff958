#include "search/answers/SearchStrip.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvu {
namespace {

using testing::ElementsAre;
using Engine = Prefs::Engine;
using Strings = std::vector<std::string>;

std::optional<Url> page(std::string_view query) {
    return Url::parse(std::string{"https://www.google.com/search?q=a"} + std::string{query});
}

Strings names(const std::vector<SearchStrip::Link>& links) {
    Strings result;
    for (const auto& link : links) result.push_back(link.name);
    return result;
}

Strings addresses(const std::vector<SearchStrip::Link>& links) {
    Strings result;
    for (const auto& link : links) result.push_back(link.url.absoluteString());
    return result;
}

// --- The kind that shows -----------------------------------------------------------------------

TEST(SearchStripTest, TheItemsOfAnAddressTellTheKind) {
    EXPECT_EQ(SearchStrip::current(page("")), "All");
    EXPECT_EQ(SearchStrip::current(page("&udm=2")), "Images");
    EXPECT_EQ(SearchStrip::current(page("&tbm=vid")), "Videos");
    EXPECT_EQ(SearchStrip::current(page("&tbm=nws")), "News");
    EXPECT_EQ(SearchStrip::current(page("&udm=28")), "Shopping");
}

TEST(SearchStripTest, OtherValuesTellNone) {
    for (const auto* query : {"&udm=22", "&udm", "&udm=", "&UDM=2", "&tbm=isch", "#udm=2"}) {
        EXPECT_EQ(SearchStrip::current(page(query)), "All") << query;
    }
    EXPECT_EQ(SearchStrip::current(std::nullopt), "All");
}

TEST(SearchStripTest, OfTwoKindsTheLaterShows) {
    EXPECT_EQ(SearchStrip::current(page("&udm=2&tbm=nws")), "News");
    EXPECT_EQ(SearchStrip::current(page("&tbm=nws&udm=28")), "Shopping");
    EXPECT_EQ(SearchStrip::current(page("&udm=2&tbm=vid")), "Videos");
    EXPECT_EQ(SearchStrip::current(page("&udm=2&udm=28")), "Shopping");
}

TEST(SearchStripTest, ItemsAreComparedDecoded) {
    EXPECT_EQ(SearchStrip::current(page("&%75dm=%32")), "Images");
}

// --- Links -------------------------------------------------------------------------------------

TEST(SearchStripTest, GoogleHasKindsAndMarksTheOneThatShows) {
    const auto kinds = SearchStrip{Engine::google, "a b&c"}.kinds(page("&tbm=nws"));

    EXPECT_EQ(names(kinds), (Strings{"All", "Images", "Videos", "News", "Shopping"}));
    EXPECT_EQ(addresses(kinds), (Strings{"https://www.google.com/search?q=a%20b%26c",
                                         "https://www.google.com/search?q=a%20b%26c&udm=2",
                                         "https://www.google.com/search?q=a%20b%26c&tbm=vid",
                                         "https://www.google.com/search?q=a%20b%26c&tbm=nws",
                                         "https://www.google.com/search?q=a%20b%26c&udm=28"}));
    for (const auto& kind : kinds) EXPECT_EQ(kind.isCurrent, kind.name == "News") << kind.name;
}

TEST(SearchStripTest, OtherEnginesHaveNoKinds) {
    for (const Engine engine : {Engine::duckduckgo, Engine::bing, Engine::ecosia}) {
        EXPECT_TRUE((SearchStrip{engine, "a"}.kinds(page("")).empty()));
    }
}

TEST(SearchStripTest, EveryEngineHasMaps) {
    for (const Prefs::EngineFacts& each : Prefs::engines) {
        const auto maps = SearchStrip{each.engine, "a b"}.maps();
        ASSERT_TRUE(maps.has_value());
        EXPECT_EQ(maps->name, "Maps");
        EXPECT_EQ(maps->url.absoluteString(), "https://maps.apple.com/?q=a%20b");
        EXPECT_EQ(maps->iconHost, "maps.apple.com");
    }
}

TEST(SearchStripTest, OnBingTheOtherThreeEnginesAreOffered) {
    const auto engines = SearchStrip{Engine::bing, "a b"}.engines();

    EXPECT_EQ(names(engines), (Strings{"Google", "DuckDuckGo", "Ecosia"}));
    EXPECT_EQ(addresses(engines),
              (Strings{"https://www.google.com/search?q=a%20b", "https://duckduckgo.com/?q=a%20b",
                       "https://www.ecosia.org/search?q=a%20b"}));
    EXPECT_EQ(engines[1].help, "Search DuckDuckGo");
    EXPECT_EQ(engines[1].iconHost, "duckduckgo.com");
}

TEST(SearchStripTest, EachEngineOffersAllOthersInTheirOrder) {
    for (const Prefs::EngineFacts& each : Prefs::engines) {
        Strings expected;
        for (const Prefs::EngineFacts& other : Prefs::engines) {
            if (other.engine != each.engine) expected.emplace_back(other.shownName);
        }
        EXPECT_EQ(names(SearchStrip{each.engine, "a"}.engines()), expected);
    }
}

TEST(SearchStripTest, EncyclopediaAndVideosAreOfferedByTheirIcons) {
    const auto sites = SearchStrip{Engine::google, "a&b"}.sites();

    EXPECT_EQ(names(sites), (Strings{"Wikipedia", "YouTube"}));
    EXPECT_EQ(sites[0].help, "Search Wikipedia");
    EXPECT_EQ(sites[1].help, "Search YouTube");
    EXPECT_EQ(addresses(sites), (Strings{"https://en.wikipedia.org/w/index.php?search=a%26b",
                                         "https://www.youtube.com/results?search_query=a%26b"}));
}

/// Wherever a link to another engine leads, that page is one of results for the same search.
TEST(SearchStripTest, LinksToEnginesKeepTheSearch) {
    for (const std::string query :
         {"knives", "two words", "50% & more", "日本", "e\u0301", "a=b#c"}) {
        for (const auto& link : SearchStrip{Engine::google, query}.engines()) {
            const auto found = Prefs::searchQuery(link.url);
            ASSERT_TRUE(found.has_value()) << link.url.absoluteString();
            EXPECT_EQ(found->query, query);
        }
    }
}

}  // namespace
}  // namespace orvu

#include "library/FoldedVisits.h"

#include "foundation/RandomText.h"
#include "foundation/text/Text.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using Places = std::vector<std::size_t>;

Visit visitOf(std::string title, std::string_view address = "https://a.example/") {
    return {Uuid::random(), Url::parse(address).value(), std::move(title), Date{}};
}

/// The same by the words of the rule.
Places plainMatches(const std::vector<Visit>& visits, std::string_view query) {
    const std::string searched = lowercased(query);
    Places places;
    for (std::size_t place = 0; place < visits.size(); ++place) {
        const Visit& visit = visits[place];
        const bool matches =
            containsCharacters(lowercased(visit.title), searched) ||
            lowercased(visit.url.absoluteString()).find(searched) != std::string::npos;
        if (matches) places.push_back(place);
    }
    return places;
}

TEST(FoldedVisitsTest, TheEmptyTextMatchesAll) {
    FoldedVisits folded;
    folded.take({visitOf("A"), visitOf("")});

    EXPECT_EQ(folded.matching(""), (Places{0, 1}));
    EXPECT_EQ(FoldedVisits{}.matching(""), Places{});
    EXPECT_EQ(FoldedVisits{}.matching("a"), Places{});
}

TEST(FoldedVisitsTest, TheAddressIsComparedInAnyCaseOfLetters) {
    FoldedVisits folded;
    folded.take({visitOf("Tulips", "https://a.example/GARDEN"), visitOf("Roses")});

    EXPECT_EQ(folded.matching("Garden"), Places{0});
}

TEST(FoldedVisitsTest, WhatIsTakenAnewTakesThePlaceOfWhatWas) {
    std::vector<Visit> visits{visitOf("Tulips"), visitOf("Roses"), visitOf("Daisies")};
    FoldedVisits folded;
    folded.take(visits);

    visits.erase(visits.begin());
    visits.insert(visits.begin() + 1, visitOf("More roses"));
    folded.take(visits);

    EXPECT_EQ(folded.matching("roses"), (Places{0, 1}));
    EXPECT_EQ(folded.matching("tulips"), Places{});
    EXPECT_EQ(folded.matching("daisies"), Places{2});
}

TEST(FoldedVisitsTest, VisitsThatShareAnIdentityKeepTheirOwnTexts) {
    std::vector<Visit> visits{visitOf("Tulips"), visitOf("Roses")};
    visits[1].id = visits[0].id;
    FoldedVisits folded;

    for (int i = 0; i < 3; ++i) {
        folded.take(visits);
        EXPECT_EQ(folded.matching("tulips"), Places{0});
        EXPECT_EQ(folded.matching("roses"), Places{1});
    }
}

TEST(FoldedVisitsTest, FindsWhatThePlainRuleFindsWhateverTheHistoryBecomes) {
    RandomText random{94};
    FoldedVisits folded;
    std::vector<Visit> visits;
    for (int round = 0; round < 300; ++round) {
        const auto place = [&] {
            return visits.begin() + static_cast<std::ptrdiff_t>(random.below(visits.size() + 1));
        };
        for (auto left = random.below(6); left > 0; --left) {
            const std::string path = repeated(random.below(2) == 0 ? "ab" : "Q", random.below(3));
            visits.insert(place(), visitOf(random.text(6), "https://a.example/" + path));
        }
        for (auto left = random.below(5); left > 0 && !visits.empty(); --left) {
            visits.erase(visits.begin() + static_cast<std::ptrdiff_t>(random.below(visits.size())));
        }
        folded.take(visits);

        for (int i = 0; i < 8; ++i) {
            const std::string query = i == 0 ? std::string{"Aq"} : random.text(2);
            ASSERT_EQ(folded.matching(query), plainMatches(visits, query)) << query;
        }
    }
}

}  // namespace
}  // namespace orvu

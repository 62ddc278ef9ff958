#include "core/history/VisitHistory.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace orvu {
namespace {

Visit visitOf(int site, double second) {
    return {Uuid::random(), *Url::parse("https://" + std::to_string(site) + ".example/"),
            "Site \"" + std::to_string(site) + "\"", Date{second}};
}

std::vector<std::string> sites(const std::vector<Visit>& visits) {
    std::vector<std::string> result;
    for (const auto& visit : visits) result.push_back(*visit.url.host());
    return result;
}

using Sites = std::vector<std::string>;

TEST(VisitHistoryTest, OneMoreVisitOfTheLastAddressIsNone) {
    VisitHistory history;

    EXPECT_TRUE(history.add(visitOf(1, 10)));
    EXPECT_FALSE(history.add(visitOf(1, 20)));
    EXPECT_TRUE(history.add(visitOf(2, 30)));
    EXPECT_TRUE(history.add(visitOf(1, 40)));

    EXPECT_EQ(sites(history.visits()), (Sites{"1.example", "2.example", "1.example"}));
}

TEST(VisitHistoryTest, OnlyTheLastFiveThousandAreKept) {
    VisitHistory history;

    for (int number = 0; number <= 5000; ++number) history.add(visitOf(number, number));

    EXPECT_EQ(history.visits().size(), 5000U);
    EXPECT_EQ(sites(history.visits()).front(), "1.example");
    EXPECT_EQ(history.encoded(), encodeRecords(history.visits()).value());
}

TEST(VisitHistoryTest, WhatWasSinceAMomentIsFoundAndTheLatestOfItNewestFirst) {
    VisitHistory history;
    for (int number = 0; number < 5; ++number) history.add(visitOf(number, number));

    EXPECT_EQ(sites(history.since(Date{3})), (Sites{"3.example", "4.example"}));
    EXPECT_EQ(sites(history.latestSince(Date{1}, 2)), (Sites{"4.example", "3.example"}));
    EXPECT_EQ(sites(history.latestSince(Date{4}, 2)), Sites{"4.example"});
}

TEST(VisitHistoryTest, RemovingSaysWhetherThereWasSomething) {
    VisitHistory history;
    for (int number = 0; number < 3; ++number) history.add(visitOf(number, number));
    const Uuid middle = history.visits()[1].id;

    EXPECT_TRUE(history.remove(middle));
    EXPECT_FALSE(history.remove(middle));
    EXPECT_TRUE(history.removeSince(Date{2}));
    EXPECT_FALSE(history.removeSince(Date{2}));
    EXPECT_TRUE(history.removeSince(std::nullopt));
    EXPECT_FALSE(history.removeSince(std::nullopt));

    EXPECT_EQ(history.encoded(), "[]");
}

TEST(VisitHistoryTest, MergingTwoHistoriesCountsOneAddressInOneSecondOnce) {
    int newOnes = -1;

    const auto merged = VisitHistory::merged({visitOf(1, 10), visitOf(2, 20)},
                                             {visitOf(2, 20.4), visitOf(3, 15)}, newOnes);

    EXPECT_EQ(newOnes, 1);
    EXPECT_EQ(sites(*merged), (Sites{"1.example", "3.example", "2.example"}));
    EXPECT_EQ(VisitHistory::merged(*merged, {visitOf(1, 10.9)}, newOnes), std::nullopt);
    EXPECT_EQ(newOnes, 0);
}

TEST(VisitHistoryTest, TheStoredFormIsAlwaysThatOfTheVisits) {
    std::mt19937 random{20261121};
    VisitHistory history;
    for (int step = 0; step < 2000; ++step) {
        const auto count = history.visits().size();
        switch (random() % 8) {
            case 0:
                if (count > 0) history.remove(history.visits()[random() % count].id);
                break;
            case 1:
                if (random() % 10 == 0) history.removeSince(Date{double(step) - 20});
                break;
            case 2:
                if (random() % 20 == 0) history.assign({visitOf(1, 1), visitOf(2, 2)});
                break;
            default:
                history.add(visitOf(static_cast<int>(random() % 5), step));
        }
        ASSERT_EQ(history.encoded(), encodeRecords(history.visits()).value()) << step;
    }
}

}  // namespace
}  // namespace orvu

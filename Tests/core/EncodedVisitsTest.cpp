#include "core/history/EncodedVisits.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace orvu {
namespace {

Visit visit(const std::string& title, double date = 1.5) {
    return {Uuid::random(), *Url::parse("https://a.example/" + std::to_string(title.size())), title,
            Date{date}};
}

/// What a store reads back from the text.
std::vector<Visit> decoded(const EncodedVisits& encoded) {
    return decodeRecords<Visit>(encoded.text()).value_or(std::vector{visit("does not parse")});
}

TEST(EncodedVisitsTest, NothingIsAnEmptyArray) {
    const EncodedVisits encoded;

    EXPECT_EQ(encoded.text(), "[]");
}

TEST(EncodedVisitsTest, TheTextIsThatOfTheWholeListEncodedAtOnce) {
    const std::vector visits{visit("one"), visit("two \"quoted\""), visit("drei Gärten")};
    EncodedVisits assigned;
    EncodedVisits appended;

    assigned.assign(visits);
    for (const auto& each : visits) appended.append(each);

    EXPECT_EQ(assigned.text(), encodeRecords(visits));
    EXPECT_EQ(appended.text(), encodeRecords(visits));
}

TEST(EncodedVisitsTest, AssignForgetsWhatWasThere) {
    EncodedVisits encoded;
    encoded.append(visit("gone"));
    const std::vector visits{visit("stays")};

    encoded.assign(visits);

    EXPECT_EQ(decoded(encoded), visits);
}

TEST(EncodedVisitsTest, TheOldestAreDroppedBeyondTheLimit) {
    const std::vector visits{visit("one"), visit("two"), visit("three"), visit("four")};
    EncodedVisits encoded;
    encoded.assign(visits);

    encoded.keepLast(5);
    EXPECT_EQ(decoded(encoded), visits);

    encoded.keepLast(2);
    EXPECT_EQ(decoded(encoded), (std::vector{visits[2], visits[3]}));
}

TEST(EncodedVisitsTest, AllMayBeDroppedAndOthersAppended) {
    EncodedVisits encoded;
    encoded.assign({visit("one"), visit("two")});
    const Visit fresh = visit("fresh");

    encoded.keepLast(0);
    EXPECT_EQ(encoded.text(), "[]");

    encoded.append(fresh);
    EXPECT_EQ(decoded(encoded), std::vector{fresh});
}

TEST(EncodedVisitsTest, AVisitThatCannotBeWrittenIsLeftOutButCounts) {
    const Visit endless = visit("endless", std::numeric_limits<double>::infinity());
    const std::vector visits{visit("one"), endless, visit("three"), endless};
    EncodedVisits encoded;

    encoded.assign(visits);
    EXPECT_EQ(decoded(encoded), (std::vector{visits[0], visits[2]}));

    encoded.keepLast(2);
    EXPECT_EQ(decoded(encoded), std::vector{visits[2]});

    encoded.keepLast(1);
    EXPECT_EQ(encoded.text(), "[]");
}

}  // namespace
}  // namespace orvu

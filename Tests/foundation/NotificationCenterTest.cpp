#include "foundation/NotificationCenter.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(NotificationCenterTest, ObserversOfANameRunInTheOrderInWhichTheyWereAdded) {
    NotificationCenter center;
    std::string seen;
    center.addObserver("A", [&] { seen += '1'; });
    center.addObserver("B", [&] { seen += 'x'; });
    center.addObserver("A", [&] { seen += '2'; });

    center.post("A");

    EXPECT_EQ(seen, "12");
}

TEST(NotificationCenterTest, PostingANameThatNobodyObservesDoesNothing) {
    NotificationCenter center;
    int calls = 0;
    center.addObserver("A", [&] { ++calls; });

    center.post("a");
    center.post("");

    EXPECT_EQ(calls, 0);
}

TEST(NotificationCenterTest, AnObserverThatLeftIsNotCalled) {
    NotificationCenter center;
    int calls = 0;
    {
        const ScopedConnection connection{center.addObserver("A", [&] { ++calls; })};
        center.post("A");
    }

    center.post("A");

    EXPECT_EQ(calls, 1);
}

TEST(NotificationCenterTest, AnObserverMayLeaveAndPostWithinItsCall) {
    NotificationCenter center;
    std::string seen;
    sigc::connection first;
    first = center.addObserver("A", [&] {
        seen += '1';
        first.disconnect();
        center.post("B");
    });
    center.addObserver("A", [&] { seen += '2'; });
    center.addObserver("B", [&] { seen += 'b'; });

    center.post("A");
    center.post("A");

    EXPECT_EQ(seen, "1b22");
}

TEST(NotificationCenterTest, AnObserverAddedWithinAPostOfAnotherNameIsCalledAtThatName) {
    NotificationCenter center;
    int calls = 0;
    center.addObserver("A", [&] { center.addObserver("Z", [&] { ++calls; }); });

    center.post("A");
    center.post("Z");

    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace orvu

#include "shell/rewind/BrowserRewind.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

class BrowserRewindTest : public StoreTest {
protected:
    static constexpr double hour = 3600;

    /// A store whose history is these pages, one visit in each of the last hours of the day, which
    /// has just begun its 13th hour.
    std::unique_ptr<BrowserStore> storeWithVisits(const Strings& pages) {
        world.loop.setNow(noon());
        std::vector<Visit> visits;
        double age = static_cast<double>(pages.size());
        for (const auto& text : pages) visits.push_back(visitAt(text, -(age--) * hour));
        world.storeRecords<Visit>("browserVisits", visits);
        return openStore();
    }
    [[nodiscard]] static Date noon() { return Date{700'000'000 - 700'000'000 % 86'400 + 43'200}; }
    [[nodiscard]] static Visit visitAt(const std::string& address, double seconds) {
        return {Uuid::random(), url(address), "Page " + address,
                noon().after(std::chrono::duration<double>{seconds})};
    }
    [[nodiscard]] BrowserRewind rewindOf(BrowserStore& store) {
        return BrowserRewind{store, [this] { ++dismissed; }, Locale{{.all = "de_DE.UTF-8"}},
                             Calendar{"UTC"}};
    }

    int dismissed = 0;
};

TEST_F(BrowserRewindTest, OneVisitTodayGivesOneDotAndOneRow) {
    const auto store = storeWithVisits({a});
    const auto rewind = rewindOf(*store);

    EXPECT_EQ(addresses(rewind.visits()), Strings{a});
    EXPECT_EQ(addresses(rewind.rows()), Strings{a});
}

TEST_F(BrowserRewindTest, FewerThanFiveVisitsGiveAsManyRowsTheNewestFirst) {
    const auto store = storeWithVisits({a, b, c});
    const auto rewind = rewindOf(*store);

    EXPECT_EQ(addresses(rewind.visits()), (Strings{a, b, c}));
    EXPECT_EQ(addresses(rewind.rows()), (Strings{c, b, a}));
}

TEST_F(BrowserRewindTest, SixVisitsGiveSixDotsAndFiveRowsAndTheOldestIsADotAlone) {
    const auto store =
        storeWithVisits({a, numbered(1), numbered(2), numbered(3), numbered(4), numbered(5)});
    const auto rewind = rewindOf(*store);

    EXPECT_EQ(rewind.visits().size(), 6U);
    EXPECT_EQ(addresses(rewind.rows()),
              (Strings{numbered(5), numbered(4), numbered(3), numbered(2), numbered(1)}));
}

TEST_F(BrowserRewindTest, VisitsOfYesterdayAreNotShown) {
    world.loop.setNow(noon());
    world.storeRecords<Visit>("browserVisits",
                              {visitAt(a, -12.001 * hour), visitAt(b, -12 * hour)});
    const auto store = openStore();

    EXPECT_EQ(addresses(rewindOf(*store).visits()), Strings{b});
}

TEST_F(BrowserRewindTest, APrivateWindowHasNoVisits) {
    const auto ordinary = storeWithVisits({a});
    const auto store = openPrivateStore();

    EXPECT_TRUE(rewindOf(*store).visits().empty());
    EXPECT_EQ(rewindOf(*store).shownTime(), "");
}

TEST_F(BrowserRewindTest, ShowsTheTimeOfTheLastVisitUntilOneIsHovered) {
    const auto store = storeWithVisits({a, b, c});
    auto rewind = rewindOf(*store);
    EXPECT_EQ(rewind.shownTime(), "11:00");

    rewind.enter(rewind.visits().front());
    EXPECT_EQ(rewind.shownTime(), "09:00");

    rewind.leave(rewind.visits().front());
    EXPECT_EQ(rewind.shownTime(), "11:00");
}

TEST_F(BrowserRewindTest, LeavingADotThatIsNotHoveredAnyMoreChangesNothing) {
    const auto store = storeWithVisits({a, b});
    auto rewind = rewindOf(*store);
    const Visit first = rewind.visits()[0];
    const Visit second = rewind.visits()[1];
    rewind.enter(first);
    rewind.enter(second);

    rewind.leave(first);

    EXPECT_EQ(rewind.hovered(), second);
}

TEST_F(BrowserRewindTest, AHoveredDotIsTheSameVisitAsItsRow) {
    const auto store = storeWithVisits({a, b});
    auto rewind = rewindOf(*store);

    rewind.enter(rewind.visits()[1]);

    EXPECT_EQ(rewind.hovered(), rewind.rows()[0]);
    EXPECT_NE(rewind.hovered(), rewind.rows()[1]);
}

TEST_F(BrowserRewindTest, TwoVisitsOfOnePageAreTwo) {
    const auto store = storeWithVisits({a, a});
    auto rewind = rewindOf(*store);

    rewind.enter(rewind.visits()[0]);

    EXPECT_NE(rewind.hovered(), rewind.visits()[1]);
}

TEST_F(BrowserRewindTest, TellsOfEachHoveringOnce) {
    const auto store = storeWithVisits({a, b});
    auto rewind = rewindOf(*store);
    int told = 0;
    rewind.connectHovered([&] { ++told; });

    rewind.enter(rewind.visits()[0]);
    rewind.enter(rewind.visits()[0]);
    rewind.leave(rewind.visits()[1]);
    rewind.leave(rewind.visits()[0]);

    EXPECT_EQ(told, 2);
}

TEST_F(BrowserRewindTest, AChoiceLoadsTheVisitInTheActiveTabAndDismisses) {
    const auto store = storeWithVisits({a, b});
    store->newTab(url(c), Select::yes);
    auto rewind = rewindOf(*store);

    rewind.choose(rewind.visits()[0]);

    EXPECT_EQ(front(*store), a);
    EXPECT_EQ(store->tabs().size(), 2U);
    EXPECT_EQ(dismissed, 1);
}

TEST_F(BrowserRewindTest, VisitsThatWereForgottenLeaveTheLineAndAreNotHovered) {
    const auto store = storeWithVisits({a, b});
    auto rewind = rewindOf(*store);
    rewind.enter(rewind.visits()[0]);

    store->removeVisit(rewind.visits()[0]);
    rewind.refresh();

    EXPECT_EQ(addresses(rewind.visits()), Strings{b});
    EXPECT_FALSE(rewind.hovered());
}

TEST_F(BrowserRewindTest, ADotIsHitInItsFrameAndNotBetweenTheFrames) {
    EXPECT_EQ(BrowserRewind::dotAt(0, 3), 0U);
    EXPECT_EQ(BrowserRewind::dotAt(9.9, 3), 0U);
    EXPECT_FALSE(BrowserRewind::dotAt(10, 3));
    EXPECT_FALSE(BrowserRewind::dotAt(13.9, 3));
    EXPECT_EQ(BrowserRewind::dotAt(14, 3), 1U);
    EXPECT_EQ(BrowserRewind::dotAt(37.9, 3), 2U);
    EXPECT_FALSE(BrowserRewind::dotAt(38, 3));
    EXPECT_FALSE(BrowserRewind::dotAt(42, 3));
    EXPECT_FALSE(BrowserRewind::dotAt(-0.1, 3));
    EXPECT_FALSE(BrowserRewind::dotAt(0, 0));
}

TEST_F(BrowserRewindTest, TheRowOfDotsIsAsWideAsItsFramesAndTheSpaceBetweenThem) {
    EXPECT_EQ(BrowserRewind::dotsWidth(0), 0);
    EXPECT_EQ(BrowserRewind::dotsWidth(1), 10);
    EXPECT_EQ(BrowserRewind::dotsWidth(3), 38);
}

}  // namespace
}  // namespace orvu

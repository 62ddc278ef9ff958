#include "profiles/Preferences.h"
#include "support/StoreWorld.h"

#include <cctype>
#include <chrono>

namespace orvu {
namespace {

using namespace std::chrono_literals;

class BrowserStoreHistoryTest : public StoreTest {
protected:
    [[nodiscard]] Visit visitAt(std::string_view address, Date date) const {
        return {Uuid::random(), url(address), "Title", date};
    }
    [[nodiscard]] Visit visitBefore(std::string_view address, std::chrono::seconds ago) const {
        return visitAt(address, world.loop.now().after(-ago));
    }
    [[nodiscard]] Strings storedVisits() const {
        const auto stored = world.storedRecords<Visit>("browserVisits");
        return stored ? addresses(*stored) : Strings{"unreadable"};
    }
    int import(const std::vector<Visit>& visits) {
        return BrowserStore::importVisits(visits, Profile::personal(), world.defaults,
                                          world.notifications);
    }
};

// --- Saving -----------------------------------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, WhatOneOperationWritesIsStoredAsAWhole) {
    const auto store = openStoreWith({a, a, a});
    world.defaults.batches = 0;

    page(*store->active()).finish("Title");
    store->newGroup(*store->tabs()[1]);
    store->park(*store->tabs()[2]);
    store->unpark(store->shelf().front());
    store->closeGroup(store->groups().front());
    store->clearHistory(std::nullopt);

    EXPECT_EQ(world.defaults.batches, 6);
    EXPECT_EQ(world.defaults.writtenAlone, Strings{});
}

TEST_F(BrowserStoreHistoryTest, WhatIsWrittenIsStoredBeforeTheSignalGoesOut) {
    const auto store = openStoreWith({a});
    int batchesAtSignal = -1;
    world.defaults.batches = 0;
    store->connectChanged([&] { batchesAtSignal = world.defaults.batches; });

    store->park(*store->active());

    EXPECT_EQ(batchesAtSignal, 1);
}

// --- Recording --------------------------------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, AFinishedPageIsRecordedAndSavedWithTheSession) {
    world.loop.setNow(Date{780000000.25});
    const auto store = openStoreWith({a});
    const ChangeCounter changes{*store};

    page(*store->active()).finish("Title \"A\"");

    ASSERT_EQ(store->visits().size(), 1U);
    const Uuid id = store->visits()[0].id;
    EXPECT_EQ(store->visits(), (std::vector<Visit>{{id, url(a), "Title \"A\"", world.loop.now()}}));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written,
              (Strings{"browserVisits", "browserSession", "browserGroups"}));
    EXPECT_EQ(world.stored("browserVisits"),
              R"([{"id":")" + id.string() +
                  R"(","url":"https://a.example/","title":"Title \"A\"","date":780000000.25}])");
    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://a.example/","pinned":false}])");
}

TEST_F(BrowserStoreHistoryTest, ANavigationReachesTheSavedSessionWhenItFinishes) {
    const auto store = openStoreWith({a});
    page(*store->active()).finish("A");

    page(*store->active()).load(url(b));
    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://a.example/","pinned":false}])");
    page(*store->active()).finish("B");

    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://b.example/","pinned":false}])");
}

TEST_F(BrowserStoreHistoryTest, AReloadGivesNoVisitAndNoSave) {
    const auto store = openStoreWith({a});
    page(*store->active()).finish("A");
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    world.loop.advance(24h);
    page(*store->active()).finish("A, later");

    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_EQ(store->visits()[0].title, "A");
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreHistoryTest, AnotherTabWithTheLastAddressGivesNoVisit) {
    const auto store = openStoreWith({a});
    page(*store->active()).finish("A");
    BrowserTab& second = store->newTab(url(a), Select::yes);
    world.defaults.written.clear();

    page(second).finish("A");

    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreHistoryTest, GoingThereAndBackGivesThreeVisits) {
    const auto store = openStore();

    for (const auto& address : {a, b, a}) visit(*store->active(), address);

    EXPECT_EQ(addresses(store->visits()), (Strings{a, b, a}));
    EXPECT_EQ(storedVisits(), (Strings{a, b, a}));
}

TEST_F(BrowserStoreHistoryTest, APageWithoutAnAddressOrThatFailedGivesNoVisit) {
    const auto store = openStore();

    page(*store->active()).finish("Nowhere");
    page(*store->active()).load(url(b));
    page(*store->active()).fail();

    EXPECT_TRUE(store->visits().empty());
    EXPECT_EQ(addresses(store->tabs()), Strings{""});
}

TEST_F(BrowserStoreHistoryTest, AVisitKeepsTheTitleKnownAtTheFinishElseTheSitesName) {
    const auto store = openStoreWith({"https://www.a.example/page"});

    page(*store->active()).finish("");
    page(*store->active()).setTitle("Late");
    visit(*store->active(), "about:blank", "Blank");

    ASSERT_EQ(store->visits().size(), 2U);
    EXPECT_EQ(store->visits()[0].title, "a.example");
    EXPECT_EQ(store->visits()[1].title, "Blank");
}

TEST_F(BrowserStoreHistoryTest, VisitsOfAnySchemeAreRecorded) {
    const auto store = openStore();

    for (const auto& address : {"file:///home/x.html", "about:blank", "http://x.example/"}) {
        visit(*store->active(), address);
    }

    EXPECT_EQ(addresses(store->visits()),
              (Strings{"file:///home/x.html", "about:blank", "http://x.example/"}));
}

TEST_F(BrowserStoreHistoryTest, OneVisitBeyondTheLimitDropsTheOldest) {
    std::vector<Visit> full;
    Strings expected;
    for (int number = 0; number < 5000; ++number) {
        full.push_back(visitBefore(numbered(number), 1h));
        if (number > 0) expected.push_back(numbered(number));
    }
    expected.emplace_back(a);
    world.storeRecords("browserVisits", full);
    const auto store = openStore();
    EXPECT_EQ(store->visits().size(), 5000U);

    visit(*store->active(), a);

    EXPECT_EQ(addresses(store->visits()), expected);
    EXPECT_EQ(storedVisits(), expected);
}

TEST_F(BrowserStoreHistoryTest, ATabThatHasLeftRecordsNoVisit) {
    const auto store = openStoreWith({a, b});
    const auto closed = tabAt(*store, a);
    store->close(*closed);
    world.defaults.written.clear();

    page(*closed).finish("A");

    EXPECT_TRUE(store->visits().empty());
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreHistoryTest, AnObserverMayCloseTheTabWhoseVisitItSees) {
    const auto store = openStoreWith({a});
    store->connectChanged([&] {
        if (!store->active()->isNewTab()) store->close(*store->active());
    });

    page(*store->active()).finish("A");

    EXPECT_EQ(addresses(store->tabs()), Strings{""});
    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_EQ(addresses(store->closedTabs()), Strings{a});
}

// --- Retention --------------------------------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, ThirtyDaysAreKeptAtTheStartTheVeryCutoffIncluded) {
    world.storeRecords<Visit>("browserVisits",
                              {visitBefore(a, 30 * 24h + 1h), visitBefore(b, 30 * 24h + 1s),
                               visitBefore(c, 30 * 24h), visitBefore(d, 30 * 24h - 1s)});

    const auto store = openStore();

    EXPECT_EQ(addresses(store->visits()), (Strings{c, d}));
}

TEST_F(BrowserStoreHistoryTest, OldVisitsStayStoredUntilTheNextWrite) {
    world.storeRecords<Visit>("browserVisits", {visitBefore(a, 31 * 24h), visitBefore(b, 1h)});

    const auto store = openStore();
    EXPECT_EQ(storedVisits(), (Strings{a, b}));
    visit(*store->active(), c);

    EXPECT_EQ(storedVisits(), (Strings{b, c}));
}

TEST_F(BrowserStoreHistoryTest, ThirtyDaysFollowTheCalendarOverAChangeOfTheClocks) {
    world.calendar = Calendar{"Europe/Berlin"};
    world.loop.setNow(Date::fromUnixSeconds(1762686000));       // 2025-11-09 12:00, winter time
    const Date summerNoon = Date::fromUnixSeconds(1760090400);  // 2025-10-10 12:00, summer time
    world.storeRecords<Visit>("browserVisits",
                              {visitAt(a, summerNoon.after(-1s)), visitAt(b, summerNoon)});

    BrowserStore store{world.services, false, Profile::personal()};

    EXPECT_EQ(addresses(store.visits()), Strings{b});
}

TEST_F(BrowserStoreHistoryTest, TodaysVisitsBeginAtMidnight) {
    const auto midnight = Calendar{"UTC"}.startOfDay(world.loop.now());
    world.storeRecords<Visit>("browserVisits",
                              {visitAt(a, midnight.after(-1s)), visitAt(b, midnight),
                               visitAt(c, midnight.after(1h)), visitAt(d, midnight.after(48h))});

    const auto store = openStore();

    EXPECT_EQ(addresses(store->todayVisits()), (Strings{b, c, d}));
}

TEST_F(BrowserStoreHistoryTest, TheLatestOfTodayComeNewestFirst) {
    const auto midnight = Calendar{"UTC"}.startOfDay(world.loop.now());
    world.storeRecords<Visit>("browserVisits",
                              {visitAt(a, midnight.after(-1s)), visitAt(b, midnight),
                               visitAt(c, midnight.after(1h)), visitAt(d, midnight.after(2h))});

    const auto store = openStore();

    EXPECT_EQ(addresses(store->latestOfToday(2)), (Strings{d, c}));
    EXPECT_EQ(addresses(store->latestOfToday(4)), (Strings{d, c, b}));
    EXPECT_EQ(addresses(store->latestOfToday(0)), Strings{});
}

// --- Clearing ---------------------------------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, ClearingSinceADateKeepsOlderVisitsAndForgetsAllClosedTabs) {
    const auto store = openStoreWith({d});
    const Date start = world.loop.now();
    visit(*store->active(), a);
    store->close(store->newTab(url(d), Select::no));
    world.loop.advance(1h);
    visit(*store->active(), b);
    world.loop.advance(1h);
    visit(*store->active(), c);
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->clearHistory(start.after(1h));

    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_TRUE(store->closedTabs().empty());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, Strings{"browserVisits"});
    EXPECT_EQ(storedVisits(), Strings{a});
}

TEST_F(BrowserStoreHistoryTest, ClearingAllLeavesTabsShelfAndBookmarks) {
    const auto store = openStoreWith({a, b, c});
    page(*tabAt(*store, a)).finish("A");
    store->park(*tabAt(*store, b));
    store->bookmarks().toggle(url(c), "C");

    store->clearHistory(std::nullopt);

    EXPECT_TRUE(store->visits().empty());
    EXPECT_TRUE(store->closedTabs().empty());
    EXPECT_EQ(world.stored("browserVisits"), "[]");
    EXPECT_EQ(addresses(store->tabs()), (Strings{a, c}));
    EXPECT_EQ(addresses(store->shelf()), Strings{b});
    EXPECT_EQ(addresses(store->bookmarks().items()), Strings{c});
}

TEST_F(BrowserStoreHistoryTest, ClearingWhatIsEmptySignalsNothingButStillWrites) {
    world.storeRecords<Visit>("browserVisits", {visitBefore(a, 31 * 24h)});
    const auto store = openStore();
    const ChangeCounter changes{*store};

    store->clearHistory(std::nullopt);

    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(world.stored("browserVisits"), "[]");
}

TEST_F(BrowserStoreHistoryTest, RemovingAVisitLeavesOthersOfItsAddress) {
    const auto store = openStore();
    for (const auto& address : {a, b, a}) visit(*store->active(), address);
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    store->removeVisit(store->visits()[0]);

    EXPECT_EQ(addresses(store->visits()), (Strings{b, a}));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, Strings{"browserVisits"});
    EXPECT_EQ(storedVisits(), (Strings{b, a}));
}

TEST_F(BrowserStoreHistoryTest, RemovingAVisitThatIsGoneSignalsNothing) {
    const auto store = openStore();
    visit(*store->active(), a);
    const ChangeCounter changes{*store};

    store->removeVisit(visitBefore(a, 0s));

    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_EQ(changes.count(), 0);
}

// --- Broadcasts -------------------------------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, TheClearingBroadcastEmptiesEveryOrdinaryWindow) {
    const auto store = openStoreWith({a});
    page(*store->active()).finish("A");
    BrowserStore other{world.services, false, world.work};
    visit(*other.active(), b);
    const ChangeCounter changes{*store};
    const ChangeCounter otherChanges{other};

    world.notifications.post("OrvuClearHistory");

    EXPECT_TRUE(store->visits().empty());
    EXPECT_TRUE(other.visits().empty());
    EXPECT_EQ(storedVisits(), Strings{});
    EXPECT_EQ(world.stored(scopedKey("browserVisits", world.work)), "[]");
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(otherChanges.count(), 1);
}

TEST_F(BrowserStoreHistoryTest, TheImportBroadcastReadsTheVisitsAnewWithoutAnAgeLimit) {
    const auto store = openStore();
    visit(*store->active(), a);
    const std::vector imported{visitBefore(b, 400 * 24h), visitBefore(c, 1h)};
    world.storeRecords("browserVisits", imported);
    world.defaults.written.clear();
    const ChangeCounter changes{*store};

    world.notifications.post("OrvuHistoryImported");

    EXPECT_EQ(store->visits(), imported);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreHistoryTest, TheImportBroadcastKeepsTheVisitsIfNothingReadableIsStored) {
    const auto store = openStore();
    visit(*store->active(), a);
    const ChangeCounter changes{*store};

    world.store("browserVisits", "[{");
    world.notifications.post(BrowserStore::historyImported);
    world.defaults.remove("browserVisits");
    world.notifications.post(BrowserStore::historyImported);

    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreHistoryTest, TheImportBroadcastSignalsNothingIfTheVisitsAreTheSame) {
    const auto store = openStore();
    visit(*store->active(), a);
    const ChangeCounter changes{*store};

    world.notifications.post(BrowserStore::historyImported);

    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreHistoryTest, AStoreThatEndedHearsNoBroadcast) {
    auto store = openStore();
    visit(*store->active(), a);
    store.reset();
    world.defaults.written.clear();

    world.notifications.post(Prefs::clearHistory);
    world.notifications.post(BrowserStore::historyImported);

    EXPECT_TRUE(world.defaults.written.empty());
    EXPECT_EQ(storedVisits(), Strings{a});
}

// --- Two windows ------------------------------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, TheWindowThatWritesLastDecidesWhatIsStored) {
    const auto first = openStoreWith({a});
    const auto second = openStore();
    page(*first->active()).finish("A");
    EXPECT_TRUE(second->visits().empty());

    visit(*second->active(), b);
    EXPECT_EQ(storedVisits(), Strings{b});
    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://b.example/","pinned":false}])");
    first->newTab(url(c), Select::yes);

    EXPECT_EQ(storedVisits(), Strings{b});
    EXPECT_EQ(world.stored("browserSession"), R"([{"url":"https://a.example/","pinned":false},)"
                                              R"({"url":"https://c.example/","pinned":false}])");
    EXPECT_EQ(addresses(openStore()->tabs()), (Strings{a, c}));
}

// --- Import -----------------------------------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, AnImportJoinsSortsStoresAndTellsTheWindows) {
    const Visit early = visitBefore(a, 3h);
    const Visit middle = visitBefore(b, 2h);
    const Visit late = visitBefore(c, 1h);
    world.storeRecords<Visit>("browserVisits", {middle});
    const auto store = openStore();
    world.defaults.written.clear();

    const int taken = import({late, early});

    EXPECT_EQ(taken, 2);
    EXPECT_EQ(store->visits(), (std::vector{early, middle, late}));
    EXPECT_EQ(world.storedRecords<Visit>("browserVisits"), store->visits());
    EXPECT_EQ(world.defaults.written, Strings{"browserVisits"});
}

TEST_F(BrowserStoreHistoryTest, ASecondImportOfTheSameListTakesNothingAndTellsNobody) {
    const std::vector list{visitBefore(a, 1h), visitBefore(b, 2h)};
    EXPECT_EQ(import(list), 2);
    world.defaults.written.clear();
    int posts = 0;
    world.notifications.addObserver(BrowserStore::historyImported, [&] { ++posts; });

    EXPECT_EQ(import(list), 0);

    EXPECT_EQ(posts, 0);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreHistoryTest, VisitsOfOneAddressInOneSecondAreOneInAnImport) {
    const Date second{780000000.0};
    world.storeRecords<Visit>("browserVisits", {visitAt(a, second.after(100ms))});

    const int taken =
        import({visitAt(a, second), visitAt(a, second.after(999ms)), visitAt(a, second.after(1s)),
                visitAt(b, second), visitAt(b, second.after(500ms))});

    EXPECT_EQ(taken, 2);
    EXPECT_EQ(storedVisits(), (Strings{b, a, a}));
}

TEST_F(BrowserStoreHistoryTest, SecondsBefore1970AreTruncatedTowardsZero) {
    const auto at = [](double seconds) { return Date::fromUnixSeconds(seconds); };

    EXPECT_EQ(import({visitAt(a, at(-0.5)), visitAt(a, at(0.5)), visitAt(a, at(-1.5))}), 2);
}

TEST_F(BrowserStoreHistoryTest, AnImportKeepsTheOrderOfEqualDates) {
    const Date moment = world.loop.now();
    world.storeRecords<Visit>("browserVisits", {visitAt(d, moment)});

    import({visitAt(c, moment), visitAt(a, moment), visitAt(b, moment)});

    EXPECT_EQ(storedVisits(), (Strings{d, c, a, b}));
}

TEST_F(BrowserStoreHistoryTest, AnImportKeepsTheNewestFiveThousandAndCountsWhatItTook) {
    std::vector<Visit> many;
    Strings expected;
    for (int number = 0; number < 5003; ++number) {
        many.push_back(visitAt(numbered(number), Date{static_cast<double>(number)}));
        if (number >= 3) expected.push_back(numbered(number));
    }

    EXPECT_EQ(import(many), 5003);

    EXPECT_EQ(storedVisits(), expected);
}

TEST_F(BrowserStoreHistoryTest, OldVisitsAreImportedAndFallOutAtTheNextStart) {
    const auto store = openStore();

    import({visitBefore(a, 100 * 24h)});

    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_TRUE(openStore()->visits().empty());
}

TEST_F(BrowserStoreHistoryTest, AnImportNeedsNoWindowAndReplacesAnUnreadableValue) {
    const std::string key = scopedKey("browserVisits", world.work);
    world.store(key, "not JSON");

    const int taken = BrowserStore::importVisits({visitBefore(a, 1h)}, world.work, world.defaults,
                                                 world.notifications);

    EXPECT_EQ(taken, 1);
    EXPECT_EQ(world.storedRecords<Visit>(key)->size(), 1U);
    EXPECT_EQ(world.defaults.written, Strings{key});
}

// --- Stored values that others spoiled ----------------------------------------------------------

TEST_F(BrowserStoreHistoryTest, ABadEntryFailsTheWholeDocument) {
    const std::string id = Uuid::random().string();
    const std::string good = R"({"id":")" + id +
                             R"(","url":"https://a.example/","title":"A",)"
                             R"("date":780000000,"pinned":false,"name":"G","color":0,)"
                             R"("collapsed":false})";
    const Strings bad{R"({})",
                      R"({"url":"https://a.example/"})",
                      R"(null)",
                      R"(7)",
                      R"("text")",
                      R"([])",
                      R"({"id":"no","url":"","title":1,"date":"x","pinned":1,"name":[],)"
                      R"("color":1.5,"collapsed":"true"})"};

    for (const auto& entry : bad) {
        for (const auto key : {"browserVisits", "browserShelf", "browserSession"}) {
            world.store(key, std::string{"["}.append(good).append(",").append(entry).append("]"));
        }
        world.store("browserGroups", std::string{"["}.append(entry).append("]"));
        const auto store = openStore();
        EXPECT_EQ(addresses(store->tabs()), Strings{""}) << entry;
        EXPECT_TRUE(store->visits().empty()) << entry;
        EXPECT_TRUE(store->shelf().empty()) << entry;
        EXPECT_TRUE(store->groups().empty()) << entry;
    }
}

TEST_F(BrowserStoreHistoryTest, ExtraFieldsCapitalsAndNullGroupsAreRead) {
    const Uuid id = Uuid::random();
    std::string lower = id.string();
    for (char& letter : lower) letter = static_cast<char>(std::tolower(letter));
    world.store("browserGroups", std::string{R"([{"id":")"}.append(lower).append(
                                     R"(","name":"G","color":2.0,"collapsed":true,"more":{}}])"));
    world.store(
        "browserSession",
        std::string{R"([{"url":"https://a.example/","pinned":true,"group":")"}.append(lower).append(
            R"("},{"pinned":false,"url":"https://b.example/","group":null}])"));

    const auto store = openStore();

    EXPECT_EQ(store->groups(), (std::vector<TabGroup>{{id, "G", 2, true}}));
    EXPECT_EQ(store->tabs()[0]->groupID(), id);
    EXPECT_EQ(addresses(store->ungrouped()), Strings{b});
}

TEST_F(BrowserStoreHistoryTest, ASpoiledValueCountsAsAbsentAndTheNextSaveReplacesIt) {
    std::string deep(100'000, '[');
    const Strings spoiled{"",
                          "{",
                          "[{\"id\":",
                          "{}",
                          "true",
                          "[1e999]",
                          deep,
                          deep + std::string(100'000, ']'),
                          "\xFF\xFE[]",
                          "[\"\xC3\x28\"]",
                          std::string("[]\0[]", 5),
                          "[][]"};

    for (const auto& text : spoiled) {
        for (const auto key :
             {"browserVisits", "browserShelf", "browserSession", "browserGroups"}) {
            world.store(key, text);
        }
        const auto store = openStore();
        EXPECT_EQ(addresses(store->tabs()), Strings{""}) << text.substr(0, 40);
        EXPECT_TRUE(store->shelf().empty());
        EXPECT_TRUE(store->groups().empty());
        visit(*store->active(), a);
        store->park(*store->active());
        EXPECT_EQ(storedVisits(), Strings{a});
        EXPECT_EQ(addresses(*world.storedRecords<Parked>("browserShelf")), Strings{a});
        EXPECT_EQ(world.stored("browserSession"), "[]");
        EXPECT_EQ(world.stored("browserGroups"), "[]");
    }
}

TEST_F(BrowserStoreHistoryTest, AValueOfAnotherTypeCountsAsAbsent) {
    for (const auto key : {"browserVisits", "browserShelf", "browserSession", "browserGroups"}) {
        world.defaults.setString(key, "[]");
        const auto texts = openStore();
        EXPECT_EQ(addresses(texts->tabs()), Strings{""});
        world.defaults.setInteger(key, 7);
        const auto numbers = openStore();
        EXPECT_EQ(addresses(numbers->tabs()), Strings{""});
    }
}

TEST_F(BrowserStoreHistoryTest, AHundredMegabytesOfRubbishAreRefused) {
    std::string huge = "[\"";
    huge.append(100U << 20U, 'x');
    for (const auto key : {"browserVisits", "browserShelf", "browserSession", "browserGroups"}) {
        world.store(key, huge);
        const auto store = openStore();
        EXPECT_EQ(addresses(store->tabs()), Strings{""});
        world.defaults.remove(key);
    }
}

TEST_F(BrowserStoreHistoryTest, AFullDiskLosesNothingThatWasStored) {
    const auto store = openStoreWith({a, b});
    page(*tabAt(*store, a)).finish("A");
    store->park(*tabAt(*store, b));
    const auto before = world.defaults.values;
    world.defaults.diskFull = true;

    visit(*store->active(), c);
    store->newGroup(*store->active());
    store->unpark(store->shelf().front());
    store->clearHistory(std::nullopt);

    EXPECT_EQ(world.defaults.values, before);
    EXPECT_EQ(addresses(store->tabs()), (Strings{c, b}));
    world.defaults.diskFull = false;
    store->togglePin(*store->active());
    EXPECT_EQ(addresses(*world.storedRecords<SavedTab>("browserSession")), (Strings{b, c}));
}

TEST_F(BrowserStoreHistoryTest, ATitleThatIsNoUnicodeIsStoredReadably) {
    const auto store = openStoreWith({a});

    page(*store->active()).finish("\xFF\"\\\n\x01");

    EXPECT_EQ(world.storedRecords<Visit>("browserVisits")->front().title, "\uFFFD\"\\\n\x01");
}

}  // namespace
}  // namespace orvu

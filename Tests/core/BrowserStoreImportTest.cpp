#include "core/BrowserStore.h"

#include "profiles/Preferences.h"
#include "support/HistoryWorld.h"

#include <cctype>

namespace orvu {
namespace {

using namespace std::chrono_literals;

using BrowserStoreImportTest = HistoryTest;

// --- Broadcasts --------------------------------------------------------------------------------

TEST_F(BrowserStoreImportTest, TheClearingBroadcastEmptiesEveryOrdinaryWindow) {
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

TEST_F(BrowserStoreImportTest, TheImportBroadcastReadsTheVisitsAnewWithoutAnAgeLimit) {
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

TEST_F(BrowserStoreImportTest, TheImportBroadcastKeepsTheVisitsIfNothingReadableIsStored) {
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

TEST_F(BrowserStoreImportTest, TheImportBroadcastSignalsNothingIfTheVisitsAreTheSame) {
    const auto store = openStore();
    visit(*store->active(), a);
    const ChangeCounter changes{*store};

    world.notifications.post(BrowserStore::historyImported);

    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserStoreImportTest, AStoreThatEndedHearsNoBroadcast) {
    auto store = openStore();
    visit(*store->active(), a);
    store.reset();
    world.defaults.written.clear();

    world.notifications.post(Prefs::clearHistory);
    world.notifications.post(BrowserStore::historyImported);

    EXPECT_TRUE(world.defaults.written.empty());
    EXPECT_EQ(storedVisits(), Strings{a});
}

// --- Two windows -------------------------------------------------------------------------------

TEST_F(BrowserStoreImportTest, TheWindowThatWritesLastDecidesWhatIsStored) {
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

// --- Import ------------------------------------------------------------------------------------

TEST_F(BrowserStoreImportTest, AnImportJoinsSortsStoresAndTellsTheWindows) {
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

TEST_F(BrowserStoreImportTest, ASecondImportOfTheSameListTakesNothingAndTellsNobody) {
    const std::vector list{visitBefore(a, 1h), visitBefore(b, 2h)};
    EXPECT_EQ(import(list), 2);
    world.defaults.written.clear();
    int posts = 0;
    world.notifications.addObserver(BrowserStore::historyImported, [&] { ++posts; });

    EXPECT_EQ(import(list), 0);

    EXPECT_EQ(posts, 0);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreImportTest, VisitsOfOneAddressInOneSecondAreOneInAnImport) {
    const Date second{780000000.0};
    world.storeRecords<Visit>("browserVisits", {visitAt(a, second.after(100ms))});

    const int taken =
        import({visitAt(a, second), visitAt(a, second.after(999ms)), visitAt(a, second.after(1s)),
                visitAt(b, second), visitAt(b, second.after(500ms))});

    EXPECT_EQ(taken, 2);
    EXPECT_EQ(storedVisits(), (Strings{b, a, a}));
}

TEST_F(BrowserStoreImportTest, SecondsBefore1970AreTruncatedTowardsZero) {
    const auto at = [](double seconds) { return Date::fromUnixSeconds(seconds); };

    EXPECT_EQ(import({visitAt(a, at(-0.5)), visitAt(a, at(0.5)), visitAt(a, at(-1.5))}), 2);
}

TEST_F(BrowserStoreImportTest, AnImportKeepsTheOrderOfEqualDates) {
    const Date moment = world.loop.now();
    world.storeRecords<Visit>("browserVisits", {visitAt(d, moment)});

    import({visitAt(c, moment), visitAt(a, moment), visitAt(b, moment)});

    EXPECT_EQ(storedVisits(), (Strings{d, c, a, b}));
}

TEST_F(BrowserStoreImportTest, AnImportKeepsTheNewestFiveThousandAndCountsWhatItTook) {
    std::vector<Visit> many;
    Strings expected;
    for (int number = 0; number < 5003; ++number) {
        many.push_back(visitAt(numbered(number), Date{static_cast<double>(number)}));
        if (number >= 3) expected.push_back(numbered(number));
    }

    EXPECT_EQ(import(many), 5003);

    EXPECT_EQ(storedVisits(), expected);
}

TEST_F(BrowserStoreImportTest, OldVisitsAreImportedAndFallOutAtTheNextStart) {
    const auto store = openStore();

    import({visitBefore(a, 100 * 24h)});

    EXPECT_EQ(addresses(store->visits()), Strings{a});
    EXPECT_TRUE(openStore()->visits().empty());
}

TEST_F(BrowserStoreImportTest, AnImportNeedsNoWindowAndReplacesAnUnreadableValue) {
    const std::string key = scopedKey("browserVisits", world.work);
    world.store(key, "not JSON");

    const int taken = BrowserStore::importVisits({visitBefore(a, 1h)}, world.work, world.defaults,
                                                 world.notifications);

    EXPECT_EQ(taken, 1);
    EXPECT_EQ(world.storedRecords<Visit>(key)->size(), 1U);
    EXPECT_EQ(world.defaults.written, Strings{key});
}

// --- Stored values that others spoiled ---------------------------------------------------------

TEST_F(BrowserStoreImportTest, ABadEntryFailsTheWholeDocument) {
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

TEST_F(BrowserStoreImportTest, ExtraFieldsCapitalsAndNullGroupsAreRead) {
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

TEST_F(BrowserStoreImportTest, ASpoiledValueCountsAsAbsentAndTheNextSaveReplacesIt) {
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

TEST_F(BrowserStoreImportTest, AValueOfAnotherTypeCountsAsAbsent) {
    for (const auto key : {"browserVisits", "browserShelf", "browserSession", "browserGroups"}) {
        world.defaults.setString(key, "[]");
        const auto texts = openStore();
        EXPECT_EQ(addresses(texts->tabs()), Strings{""});
        world.defaults.setInteger(key, 7);
        const auto numbers = openStore();
        EXPECT_EQ(addresses(numbers->tabs()), Strings{""});
    }
}

TEST_F(BrowserStoreImportTest, AHundredMegabytesOfRubbishAreRefused) {
    std::string huge = "[\"";
    huge.append(100U << 20U, 'x');
    for (const auto key : {"browserVisits", "browserShelf", "browserSession", "browserGroups"}) {
        world.store(key, huge);
        const auto store = openStore();
        EXPECT_EQ(addresses(store->tabs()), Strings{""});
        world.defaults.remove(key);
    }
}

TEST_F(BrowserStoreImportTest, AFullDiskLosesNothingThatWasStored) {
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

TEST_F(BrowserStoreImportTest, ATitleThatIsNoUnicodeIsStoredReadably) {
    const auto store = openStoreWith({a});

    page(*store->active()).finish("\xFF\"\\\n\x01");

    EXPECT_EQ(world.storedRecords<Visit>("browserVisits")->front().title, "\uFFFD\"\\\n\x01");
}

}  // namespace
}  // namespace orvu

#include "core/Bookmarks.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

class BookmarkStoreTest : public StoreTest {
protected:
    using Bookmark = BookmarkStore::Bookmark;
    using Entries = std::vector<BookmarkStore::Entry>;

    [[nodiscard]] BookmarkStore& bookmarks() { return world.bookmarks.store(Profile::personal()); }
    [[nodiscard]] static Strings titles(const std::vector<Bookmark>& items) {
        Strings result;
        for (const auto& item : items) result.push_back(item.title);
        return result;
    }
    [[nodiscard]] std::optional<std::vector<Bookmark>> stored() const {
        return world.storedRecords<Bookmark>("orvuBookmarks");
    }
};

TEST_F(BookmarkStoreTest, ToggleBookmarksAtTheFrontAndSavesBeforeItSignals) {
    bookmarks().toggle(url(a), "A");
    world.loop.setNow(Date{780000000.5});
    world.defaults.written.clear();
    std::string storedAtSignal;
    int signals = 0;
    bookmarks().connectChanged([&] {
        ++signals;
        storedAtSignal = world.stored("orvuBookmarks");
    });

    bookmarks().toggle(url(b), "  B  ");

    ASSERT_EQ(bookmarks().items().size(), 2U);
    const Bookmark first = bookmarks().items()[0];
    EXPECT_EQ(first, (Bookmark{first.id, url(b), "  B  ", Date{780000000.5}}));
    EXPECT_EQ(addresses(bookmarks().items()), (Strings{b, a}));
    EXPECT_EQ(signals, 1);
    EXPECT_EQ(storedAtSignal, world.stored("orvuBookmarks"));
    EXPECT_TRUE(storedAtSignal.starts_with(
        R"([{"id":")" + first.id.string() +
        R"(","url":"https://b.example/","title":"  B  ","date":780000000.5},)"))
        << storedAtSignal;
    EXPECT_EQ(world.defaults.written, Strings{"orvuBookmarks"});
}

TEST_F(BookmarkStoreTest, TogglingTwiceLeavesNothingEvenUnderAnotherTitle) {
    bookmarks().toggle(url(a), "A");

    bookmarks().toggle(url(a), "Another");

    EXPECT_TRUE(bookmarks().items().empty());
    EXPECT_EQ(world.stored("orvuBookmarks"), "[]");
}

TEST_F(BookmarkStoreTest, ToggleRemovesOnlyTheFirstOfTwoOfOneAddress) {
    const std::vector<Bookmark> twice{{Uuid::random(), url(a), "first", Date{1}},
                                      {Uuid::random(), url(a), "second", Date{2}}};
    world.storeRecords("orvuBookmarks", twice);

    bookmarks().toggle(url(a), "");

    EXPECT_EQ(bookmarks().items(), std::vector{twice[1]});
}

TEST_F(BookmarkStoreTest, OnlyWebAddressesCanBeToggledInAnyCaseOfTheScheme) {
    int signals = 0;
    bookmarks().connectChanged([&] { ++signals; });

    bookmarks().toggle(std::nullopt, "New tab");
    for (const auto address : {"file:///x", "about:blank", "ftp://a.example/", "httpsx://a/"}) {
        bookmarks().toggle(url(address), "x");
    }
    EXPECT_EQ(signals, 0);
    EXPECT_TRUE(world.defaults.written.empty());
    bookmarks().toggle(url("HTTP://a.example/"), "x");

    EXPECT_EQ(addresses(bookmarks().items()), Strings{"HTTP://a.example/"});
}

TEST_F(BookmarkStoreTest, AddressesAreComparedByTheirWholeText) {
    const Strings different{"https://a.example/x",  "http://a.example/x",  "https://a.example/x/",
                            "https://a.example/x#", "https://a.example/X", "https://A.example/x"};

    for (const auto& address : different) bookmarks().toggle(url(address), "");

    EXPECT_EQ(bookmarks().items().size(), different.size());
    for (const auto& address : different) EXPECT_TRUE(bookmarks().contains(url(address)));
    EXPECT_FALSE(bookmarks().contains(url("https://a.example/x?")));
    EXPECT_FALSE(bookmarks().contains(std::nullopt));
}

TEST_F(BookmarkStoreTest, AProfileHasOneStoreForTheLifeOfTheProgram) {
    BookmarkStore& personal = bookmarks();
    BookmarkStore& work = world.bookmarks.store(world.work);

    work.toggle(url(a), "A");

    EXPECT_EQ(&bookmarks(), &personal);
    EXPECT_EQ(&world.bookmarks.store(world.work), &work);
    EXPECT_NE(&personal, &work);
    EXPECT_TRUE(personal.items().empty());
    EXPECT_EQ(world.defaults.written, Strings{scopedKey("orvuBookmarks", world.work)});
}

TEST_F(BookmarkStoreTest, AQueryFindsTitlesAndAddressesInAnyCaseInListOrder) {
    bookmarks().add({{url("https://one.example/"), "Straße nach Süden"},
                     {url("https://two.example/Recipes"), "Two"},
                     {url(c), "My RECIPES"}});

    EXPECT_EQ(titles(bookmarks().matching("reCIPes")), (Strings{"Two", "My RECIPES"}));
    EXPECT_EQ(titles(bookmarks().matching("SÜD")), Strings{"Straße nach Süden"});
    EXPECT_EQ(titles(bookmarks().matching("TWO.EX")), Strings{"Two"});
    EXPECT_EQ(titles(bookmarks().matching("nowhere")), Strings{});
    EXPECT_EQ(titles(bookmarks().matching("\xFF")), Strings{});
}

TEST_F(BookmarkStoreTest, AnEmptyQueryFindsAllAndABlankOneWhatHoldsABlank) {
    bookmarks().add({{url(a), "One Two"}, {url(b), "Three"}});

    EXPECT_EQ(titles(bookmarks().matching("")), (Strings{"One Two", "Three"}));
    EXPECT_EQ(titles(bookmarks().matching(" ")), Strings{"One Two"});
}

TEST_F(BookmarkStoreTest, AddAppendsBehindWhatExistsAndTheFirstOfDuplicatesWins) {
    bookmarks().toggle(url(a), "A");
    world.defaults.written.clear();
    const ChangeCounter changes{bookmarks()};

    const int added =
        bookmarks().add({{url(b), "B"}, {url(a), "again"}, {url(c), "C"}, {url(b), "later"}});

    EXPECT_EQ(added, 2);
    EXPECT_EQ(titles(bookmarks().items()), (Strings{"A", "B", "C"}));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.defaults.written, Strings{"orvuBookmarks"});
    EXPECT_EQ(stored(), bookmarks().items());
}

TEST_F(BookmarkStoreTest, AddTakesAnyScheme) {
    EXPECT_EQ(bookmarks().add({{url("file:///x"), "X"}, {url("about:blank"), "Y"}}), 2);
}

TEST_F(BookmarkStoreTest, AddingNothingNewWritesAndSignalsNothing) {
    bookmarks().toggle(url(a), "A");
    world.defaults.written.clear();
    const ChangeCounter changes{bookmarks()};

    EXPECT_EQ(bookmarks().add({}), 0);
    EXPECT_EQ(bookmarks().add({{url(a), "A"}}), 0);

    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BookmarkStoreTest, OneAddTakesTheFirstFiveThousandNewEntries) {
    bookmarks().toggle(url(numbered(0)), "known");
    Entries entries;
    for (int number = 0; number <= 6000; ++number) entries.emplace_back(url(numbered(number)), "");

    EXPECT_EQ(bookmarks().add(entries), 5000);

    EXPECT_EQ(bookmarks().items().size(), 5001U);
    EXPECT_EQ(bookmarks().items().back().url, url(numbered(5000)));
    EXPECT_EQ(bookmarks().add(entries), 1000);
}

TEST_F(BookmarkStoreTest, RemoveDeletesByIdentityAndSaves) {
    bookmarks().toggle(url(a), "A");
    bookmarks().toggle(url(b), "B");
    const ChangeCounter changes{bookmarks()};

    bookmarks().remove(bookmarks().items()[0]);
    EXPECT_EQ(addresses(bookmarks().items()), Strings{a});
    EXPECT_EQ(stored(), bookmarks().items());
    bookmarks().remove({Uuid::random(), url(a), "A", Date{}});

    EXPECT_EQ(addresses(bookmarks().items()), Strings{a});
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BookmarkStoreTest, TheListComesBackInTheNextRun) {
    bookmarks().toggle(url(a), "A");
    bookmarks().toggle(url(b), "B \"quoted\" \\ \n\u0001 é");

    const BookmarkStore next{world.defaults, world.loop, "orvuBookmarks"};

    EXPECT_EQ(next.items(), bookmarks().items());
}

TEST_F(BookmarkStoreTest, AnUnreadableListReadsAsEmptyAndStaysUntilTheNextSave) {
    const std::string id = Uuid::random().string();
    const std::string good = R"({"id":")" + id +
                             R"(","url":"https://a.example/",)"
                             R"("title":"A","date":1})";
    for (const std::string& text :
         {std::string{}, std::string{"{"}, std::string{"{}"}, std::string(100'000, '['),
          std::string{"\xFF"}, std::string{"["}.append(good).append(",{}]"),
          std::string{"["}.append(good), std::string{"[null]"}}) {
        world.store("orvuBookmarks", text);
        BookmarkStore store{world.defaults, world.loop, "orvuBookmarks"};
        EXPECT_TRUE(store.items().empty()) << text.substr(0, 60);
        EXPECT_EQ(world.stored("orvuBookmarks"), text);
        store.toggle(url(b), "B");
        EXPECT_EQ(stored(), store.items());
    }
}

TEST_F(BookmarkStoreTest, AFullDiskKeepsTheStoredListAndTheListInMemory) {
    bookmarks().toggle(url(a), "A");
    const std::string before = world.stored("orvuBookmarks");
    world.defaults.diskFull = true;

    bookmarks().toggle(url(b), "B");

    EXPECT_EQ(world.stored("orvuBookmarks"), before);
    EXPECT_EQ(addresses(bookmarks().items()), (Strings{b, a}));
}

TEST_F(BookmarkStoreTest, AnObserverMayToggleAgainAtOnce) {
    int signals = 0;
    bookmarks().connectChanged([&] {
        if (++signals == 1) bookmarks().toggle(url(a), "A");
    });

    bookmarks().toggle(url(a), "A");

    EXPECT_TRUE(bookmarks().items().empty());
    EXPECT_EQ(signals, 2);
    EXPECT_EQ(world.stored("orvuBookmarks"), "[]");
}

}  // namespace
}  // namespace orvu

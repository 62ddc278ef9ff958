#include "foundation/RandomText.h"
#include "import/BrowserDatabase.h"
#include "import/GvdbBuilder.h"
#include "import/ImportWorld.h"

#include <map>

namespace orvu {
namespace {

class ImporterReaders : public ImportWorld {
protected:
    [[nodiscard]] Date ago(double hours) const {
        return Date{now.secondsSinceReference() - hours * 3600};
    }

    const Path profile = home / "profile";
    const Path places = profile / "places.sqlite";
};

class ImporterFirefox : public ImporterReaders {
protected:
    [[nodiscard]] ImportResult read() const {
        return ImportWorld::read(BrowserKind::firefox, profile);
    }
};
class ImporterGnomeWeb : public ImporterReaders {
protected:
    [[nodiscard]] ImportResult read() const {
        return ImportWorld::read(BrowserKind::gnomeWeb, profile);
    }
};
class ImporterSafari : public ImporterReaders {
protected:
    [[nodiscard]] ImportResult read() const {
        return ImportWorld::read(BrowserKind::safari, profile);
    }
};

TEST_F(ImporterFirefox, BookmarksAndHistoryOfBothFormsAreRead) {
    for (const auto form : {FirefoxPlaces::Form::old, FirefoxPlaces::Form::present}) {
        std::filesystem::remove(places);
        FirefoxPlaces database{places, form};
        database.addPlace(1, "https://a.example/", "Page A", firefoxTime(ago(2)));
        database.addPlace(2, "https://b.example/", "Page B", firefoxTime(ago(1)));
        database.addPlace(3, "https://never.example/", "Never", nullptr);
        database.addBookmark(std::int64_t{1}, "Mark A");
        database.addBookmark(nullptr, "Folder", 2);
        database.addBookmark(std::int64_t{3}, "Mark N");

        const auto result = read();

        EXPECT_EQ(lines(result.bookmarks),
                  (Strings{"https://a.example/ Mark A", "https://never.example/ Mark N"}));
        EXPECT_EQ(lines(result.visits),
                  (Strings{"https://b.example/ Page B", "https://a.example/ Page A"}));
        EXPECT_EQ(result.visits[0].date, ago(1));
    }
}

TEST_F(ImporterFirefox, OnlyTheLastThirtyDaysOfTheHistoryAreReadAndAllBookmarks) {
    FirefoxPlaces database{places};
    database.addPlace(1, "https://old.example/", "Old", firefoxTime(ago(31 * 24)));
    database.addPlace(2, "https://new.example/", "New", firefoxTime(ago(29 * 24)));
    database.addBookmark(std::int64_t{1}, "Old");

    const auto result = read();

    EXPECT_EQ(lines(result.bookmarks), Strings{"https://old.example/ Old"});
    EXPECT_EQ(lines(result.visits), Strings{"https://new.example/ New"});
}

TEST_F(ImporterFirefox, RowsMarkedHiddenComeOver) {
    FirefoxPlaces{places}.addPlace(1, "https://a.example/", "A", firefoxTime(ago(1)), 1);

    EXPECT_EQ(lines(read().visits), Strings{"https://a.example/ A"});
}

TEST_F(ImporterFirefox, ATaggedBookmarkKeepsItsTitleWhereverTheRowsOfItsTagsStand) {
    FirefoxPlaces database{places};
    database.addPlace(1, "https://a.example/", "A", nullptr);
    database.addPlace(2, "https://b.example/", "B", nullptr);
    database.addBookmark(std::int64_t{1}, nullptr);
    database.addBookmark(std::int64_t{1}, "Real");
    database.addBookmark(std::int64_t{1}, "");
    database.addBookmark(std::int64_t{2}, nullptr);

    EXPECT_EQ(lines(read().bookmarks),
              (Strings{"https://a.example/ Real", "https://b.example/ b.example"}));
}

TEST_F(ImporterFirefox, BookmarksOfOtherSchemesAndTooLongAddressesAreDropped) {
    const std::string longest = "https://a.example/" + std::string(65'536 - 18, 'x');
    FirefoxPlaces database{places};
    database.addPlace(1, "place:sort=8&maxResults=10", "Recent", nullptr);
    database.addPlace(2, longest, "Long", nullptr);
    database.addPlace(3, longest + "x", "Longer", nullptr);
    for (std::int64_t id = 1; id <= 3; ++id) database.addBookmark(id, "M");

    EXPECT_EQ(lines(read().bookmarks), Strings{longest + " M"});
}

/// What is kept about a page, at random.
TEST_F(ImporterFirefox, RandomPlacesGiveWhatIsExpectedOfThem) {
    RandomText random{5};
    for (int round = 0; round < 30; ++round) {
        std::filesystem::remove(places);
        FirefoxPlaces database{places};
        database.run("PRAGMA synchronous = OFF");
        database.run("BEGIN");
        std::multimap<std::int64_t, std::string, std::greater<>> expected;
        for (std::int64_t id = 1; id < 60; ++id) {
            const bool isWeb = random.below(4) > 0;
            const std::string host = "h" + std::to_string(id) + ".example";
            const std::string address = (isWeb ? "https://" : "about://") + host + "/";
            const std::string title = random.below(3) == 0 ? "" : "T" + std::to_string(id);
            const auto age = static_cast<std::int64_t>(random.below(60 * 86'400));
            const std::int64_t time = firefoxTime(now) - age * microseconds - id;
            database.addPlace(id, address, title, time);
            const bool isRecent =
                time > firefoxTime(now) - std::int64_t{30} * 86'400 * microseconds;
            if (isWeb && isRecent) {
                expected.emplace(time, address + " " + (title.empty() ? host : title));
            }
        }
        database.run("COMMIT");

        Strings wanted;
        for (const auto& [time, line] : expected) wanted.push_back(line);
        ASSERT_EQ(lines(read().visits), wanted);
    }
}

TEST_F(ImporterGnomeWeb, BookmarksAndHistoryAreRead) {
    GvdbBuilder builder;
    builder.addTable("bookmarks", {{"https://m.example/", GvdbBuilder::bookmark("Mark")}});
    write(profile / "bookmarks.gvdb", std::move(builder).finish());
    BrowserDatabase database{profile / "ephy-history.db"};
    database.run(
        "CREATE TABLE urls(id INTEGER PRIMARY KEY, host INTEGER NOT NULL, url LONGVARCAR, "
        "title LONGVARCAR, sync_id LONGVARCAR, visit_count INTEGER DEFAULT 0 NOT NULL, "
        "typed_count INTEGER DEFAULT 0 NOT NULL, last_visit_time INTEGER)");
    for (const int days : {1, 40, 2}) {
        database.run(
            "INSERT INTO urls(host, url, title, last_visit_time) VALUES(1, ?, ?, ?)",
            {"https://a.example/" + std::to_string(days), "A", firefoxTime(ago(days * 24))});
    }

    const auto result = read();

    EXPECT_EQ(lines(result.bookmarks), Strings{"https://m.example/ Mark"});
    EXPECT_EQ(lines(result.visits), (Strings{"https://a.example/1 A", "https://a.example/2 A"}));
    EXPECT_EQ(result.visits[0].date, ago(24));
}

TEST_F(ImporterGnomeWeb, AHistoryThatCountsSecondsIsReadToo) {
    BrowserDatabase database{profile / "ephy-history.db"};
    database.run("CREATE TABLE urls(url TEXT, title TEXT, last_visit_time INTEGER)");
    for (const int days : {2, 1, 40}) {
        database.run(
            "INSERT INTO urls VALUES(?, 'A', ?)",
            {"https://a.example/" + std::to_string(days), ago(days * 24).wholeUnixSeconds()});
    }

    const auto result = read();

    EXPECT_EQ(lines(result.visits), (Strings{"https://a.example/1 A", "https://a.example/2 A"}));
    EXPECT_EQ(result.visits[1].date, ago(48));
}

TEST_F(ImporterSafari, TheLastVisitOfEachPageIsRead) {
    BrowserDatabase database{profile / "History.db"};
    database.run("CREATE TABLE history_items(id INTEGER PRIMARY KEY, url TEXT NOT NULL)");
    database.run(
        "CREATE TABLE history_visits(id INTEGER PRIMARY KEY, history_item INTEGER NOT NULL, "
        "visit_time REAL NOT NULL, title TEXT)");
    database.run(
        "INSERT INTO history_items VALUES(1, 'https://a.example/'), "
        "(2, 'https://b.example/'), (3, 'https://old.example/')");
    const auto visit = [&](std::int64_t item, double hours, const std::string& title) {
        const auto time = static_cast<std::int64_t>(ago(hours).secondsSinceReference());
        database.run(
            "INSERT INTO history_visits(history_item, visit_time, title) "
            "VALUES(?, ? + 0.5, ?)",
            {item, time, title});
    };
    visit(1, 5, "First");
    visit(1, 1, "Last");
    visit(2, 3, "B");
    visit(3, 31 * 24, "Old");

    const auto result = read();

    EXPECT_EQ(lines(result.visits), (Strings{"https://a.example/ Last", "https://b.example/ B"}));
    EXPECT_EQ(result.visits[0].date, ago(1));
    EXPECT_TRUE(result.bookmarks.empty());
}

TEST_F(ImporterSafari, BookmarksAreReadAlsoWhereTheHistoryIsMissingAndTheOtherWayRound) {
    write(profile / "Bookmarks.plist",
          "<plist version=\"1.0\"><dict><key>WebBookmarkType</key>"
          "<string>WebBookmarkTypeLeaf</string><key>URLString</key>"
          "<string>https://a.example/</string></dict></plist>");

    const auto result = read();

    EXPECT_FALSE(result.blocked);
    EXPECT_EQ(lines(result.bookmarks), Strings{"https://a.example/ https://a.example/"});
    EXPECT_TRUE(result.visits.empty());
}

TEST_F(ImporterReaders, AnExportedFileIsRead) {
    write(home / "bookmarks.html", R"(<a href="https://a.example/">Q &amp; A</a>)");

    EXPECT_EQ(lines(importer.readHTML(home / "bookmarks.html")),
              Strings{"https://a.example/ Q & A"});
}

TEST_F(ImporterReaders, WhatIsNoFileGivesNoExportedBookmarks) {
    const Path pipe = home / "pipe.html";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);

    EXPECT_EQ(importer.readHTML(home / "missing.html"), Entries{});
    EXPECT_EQ(importer.readHTML(home), Entries{});
    EXPECT_EQ(importer.readHTML(pipe), Entries{});
}

}  // namespace
}  // namespace orvu

#include "import/BrowserDatabase.h"
#include "import/ImportWorld.h"

#include <set>

namespace orvu {
namespace {

constexpr std::string_view oneBookmark =
    R"({"roots":{"other":{"children":[{"type":"url","name":"B","url":"https://b.example/"}]}}})";

class ImporterChromium : public ImportWorld {
protected:
    [[nodiscard]] ImportResult read() const {
        return ImportWorld::read(BrowserKind::chromium, folder);
    }
    [[nodiscard]] Date ago(double hours) const {
        return Date{now.secondsSinceReference() - hours * 3600};
    }

    const Path folder = folders.configuration / "google-chrome/Default";
    const Path history = folder / "History";
};

TEST_F(ImporterChromium, BookmarksAndHistoryAreReadTheNewestVisitFirst) {
    write(folder / "Bookmarks", oneBookmark);
    ChromiumHistory database{history};
    database.add("https://old.example/", "Old", ago(48));
    database.add("https://new.example/", "New", ago(1));

    const auto result = read();

    EXPECT_FALSE(result.blocked);
    EXPECT_EQ(lines(result.bookmarks), Strings{"https://b.example/ B"});
    EXPECT_EQ(lines(result.visits),
              (Strings{"https://new.example/ New", "https://old.example/ Old"}));
    EXPECT_EQ(result.visits[0].date, ago(1));
}

TEST_F(ImporterChromium, TheFormWithAnIconColumnIsReadToo) {
    ChromiumHistory database{history, ChromiumHistory::Form::old};
    database.add("https://a.example/", "A", ago(1));

    EXPECT_EQ(lines(read().visits), Strings{"https://a.example/ A"});
}

TEST_F(ImporterChromium, EachVisitHasAnIdentityOfItsOwn) {
    ChromiumHistory database{history};
    for (int i = 0; i < 20; ++i)
        database.add("https://a.example/" + std::to_string(i), "A", ago(1));

    std::set<Uuid> ids;
    for (const Visit& visit : read().visits) ids.insert(visit.id);
    for (const Visit& visit : read().visits) ids.insert(visit.id);

    EXPECT_EQ(ids.size(), 40U);
    EXPECT_FALSE(ids.contains(Uuid{}));
}

TEST_F(ImporterChromium, WhatIsNotAskedForIsNotRead) {
    write(folder / "Bookmarks", oneBookmark);
    ChromiumHistory{history}.add("https://a.example/", "A", ago(1));
    request.bookmarks = false;
    const auto withoutBookmarks = read();
    request.bookmarks = true;
    request.history = false;
    const auto withoutHistory = read();

    EXPECT_TRUE(withoutBookmarks.bookmarks.empty());
    EXPECT_EQ(withoutBookmarks.visits.size(), 1U);
    EXPECT_EQ(withoutHistory.bookmarks.size(), 1U);
    EXPECT_TRUE(withoutHistory.visits.empty());
}

TEST_F(ImporterChromium, WithBookmarksAndNoHistoryItIsListedNotBlockedAndGivesBookmarks) {
    write(folder / "Bookmarks", oneBookmark);

    const auto sources = importer.sources();
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_FALSE(sources[0].needsAccess);
    const auto result = importer.read(sources[0], request);

    EXPECT_FALSE(result.blocked);
    EXPECT_EQ(lines(result.bookmarks), Strings{"https://b.example/ B"});
    EXPECT_TRUE(result.visits.empty());
}

TEST_F(ImporterChromium, WithoutAnyFileThereIsNothingAndItIsNotBlocked) {
    const auto result = read();

    EXPECT_FALSE(result.blocked);
    EXPECT_TRUE(result.bookmarks.empty());
    EXPECT_TRUE(result.visits.empty());
}

TEST_F(ImporterChromium, AnEmptyHistoryFileIsBlocked) {
    write(folder / "Bookmarks", oneBookmark);
    write(history, "");

    const auto result = read();

    EXPECT_TRUE(result.blocked);
    EXPECT_TRUE(result.bookmarks.empty());
}

TEST_F(ImporterChromium, OtherSchemesAreDroppedAndAnEmptyTitleIsTheHost) {
    ChromiumHistory database{history};
    database.add("chrome://settings/", "Settings", ago(1));
    database.add("file:///home/p/x.html", "File", ago(2));
    database.add("https://no title.example/", "Blank", ago(3));
    database.add(nullptr, "Null", ago(4));
    database.add("HTTPS://a.example/x", "", ago(5));
    database.add("http://b.example/", nullptr, ago(6));
    database.add("https:/path", "", ago(7));

    EXPECT_EQ(lines(read().visits),
              (Strings{"HTTPS://a.example/x a.example", "http://b.example/ b.example",
                       "https:/path https:/path"}));
}

TEST_F(ImporterChromium, HiddenRowsStayBehind) {
    ChromiumHistory database{history};
    database.add("https://frame.example/", "Frame", chromiumTime(ago(1)), 1);
    database.add("https://a.example/", "A", ago(2));

    EXPECT_EQ(lines(read().visits), Strings{"https://a.example/ A"});
}

TEST_F(ImporterChromium, OnlyTheLastThirtyDaysAreRead) {
    ChromiumHistory database{history};
    const std::int64_t cut = chromiumTime(ago(30 * 24));
    database.add("https://exactly.example/", "a", cut);
    database.add("https://inside.example/", "b", cut + 1);
    database.add("https://outside.example/", "c", cut - 1);

    EXPECT_EQ(lines(read().visits), Strings{"https://inside.example/ b"});
}

TEST_F(ImporterChromium, TheCutIsThirtyCalendarDaysBackAcrossAChangeOfSummerTime) {
    // Noon in Berlin on 10 April 2026, twelve days after the clocks went forward.
    request.now = Date::fromUnixSeconds(1'775'815'200);
    const Date noon = Date::fromUnixSeconds(1'775'815'200 - 30 * 86'400 + 3600);
    ChromiumHistory database{history};
    database.add("https://before.example/", "a", chromiumTime(noon) - microseconds);
    database.add("https://after.example/", "b", chromiumTime(noon) + microseconds);

    request.calendar = Calendar{"Europe/Berlin"};
    const auto inBerlin = read();
    request.calendar = Calendar{"UTC"};
    const auto inUtc = read();

    EXPECT_EQ(lines(inBerlin.visits), Strings{"https://after.example/ b"});
    EXPECT_EQ(inUtc.visits.size(), 2U);
}

TEST_F(ImporterChromium, FiveThousandRowsAreReadOfTwoHundredThousand) {
    ChromiumHistory database{history};
    database.run(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200000) "
        "INSERT INTO urls(url, title, last_visit_time) SELECT 'https://a.example/' || i, "
        "'Page ' || i, " +
        std::to_string(chromiumTime(ago(24))) + " + i * 1000 FROM n");

    const auto result = read();

    ASSERT_EQ(result.visits.size(), 5000U);
    EXPECT_EQ(result.visits.front().url.absoluteString(), "https://a.example/200000");
    EXPECT_EQ(result.visits.back().url.absoluteString(), "https://a.example/195001");
}

TEST_F(ImporterChromium, TitlesAreCutAndVisitsOfLongerAddressesThanAreKeptAreDropped) {
    const std::string longest = "https://a.example/" + std::string(8192 - 18, 'x');
    ChromiumHistory database{history};
    database.add(longest, std::string(1 << 20, 't'), ago(1));
    database.add(longest + "x", "b", ago(2));

    const auto result = read();

    ASSERT_EQ(result.visits.size(), 1U);
    EXPECT_EQ(result.visits[0].url.absoluteString(), longest);
    EXPECT_EQ(result.visits[0].title, std::string(1000, 't'));
}

TEST_F(ImporterChromium, TitlesThatAreNoUtf8AreMended) {
    ChromiumHistory{history}.add("https://a.example/", "caf\xE9!", ago(1));

    EXPECT_EQ(lines(read().visits), Strings{"https://a.example/ caf\uFFFD!"});
}

TEST_F(ImporterChromium, ADatabaseInUtf16IsReadToo) {
    BrowserDatabase database{history};
    database.run("PRAGMA encoding = 'UTF-16'");
    database.run(
        "CREATE TABLE urls(url TEXT, title TEXT, last_visit_time INTEGER, hidden INTEGER)");
    database.run("INSERT INTO urls VALUES(?, ?, ?, 0)",
                 {"https://a.example/", "Ä", chromiumTime(ago(1))});

    EXPECT_EQ(lines(read().visits), Strings{"https://a.example/ Ä"});
}

TEST_F(ImporterChromium, TimesOfEveryAgeComeThroughOrStayBehind) {
    ChromiumHistory database{history};
    database.add("https://far.example/", "far", std::int64_t{9'223'372'036'854'775'807});
    database.add("https://text.example/", "text", "yesterday");
    database.add("https://zero.example/", "zero", std::int64_t{0});
    database.add("https://before.example/", "before", std::int64_t{-5'000'000'000});
    database.add("https://a.example/", "a", ago(1));

    const auto result = read();

    EXPECT_EQ(lines(result.visits), (Strings{"https://far.example/ far", "https://a.example/ a"}));
    EXPECT_GT(result.visits[0].date, now);
}

}  // namespace
}  // namespace orvu

#include "platform/linux/defaults/SqliteUserDefaults.h"

#include "platform/linux/defaults/Sqlite.h"
#include "platform/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace orvu {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::Optional;
using Access = SqliteConnection::Access;

std::string contents(const fs::path& file) {
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

void overwrite(const fs::path& file, std::string_view bytes) {
    std::ofstream stream{file, std::ios::binary | std::ios::trunc};
    stream << bytes;
}

/// Puts rubbish in the place of some bytes, without touching the rest of the file.
void damage(const fs::path& file, std::size_t at, std::size_t count) {
    std::fstream stream{file, std::ios::binary | std::ios::in | std::ios::out};
    stream.seekp(static_cast<std::streamoff>(at));
    stream << std::string(count, '\xA5');
}

mode_t permissions(const fs::path& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & ALLPERMS : 0;
}

class SqliteUserDefaultsTest : public testing::Test {
protected:
    [[nodiscard]] fs::path beside(const char* suffix) const {
        return file.parent_path() / (file.filename().string() + suffix);
    }
    /// A store with some settings, closed again.
    void makeStore() const {
        SqliteUserDefaults defaults{file};
        defaults.setString("searchEngine", "marginalia");
        defaults.setInteger("launchCount", 7);
        defaults.setData("browserVisits", std::string(300'000, 'v'));
        defaults.setData("orvuBookmarks", std::string(200'000, 'b'));
        defaults.setNumber("readerSize", 18.5);
    }

    /// A page of a long value begins with the number of the next one. Makes the first such
    /// number of the history impossible.
    void breakHistory() const {
        constexpr std::size_t pageSize = 32768;
        const auto page = contents(file).find(std::string(pageSize - 100, 'v')) / pageSize;
        damage(file, page * pageSize, 4);
    }
    /// Makes an open store read the file again, as any writer beside it does.
    void forgetCache() const {
        SqliteConnection{file, Access::readWrite}.execute(
            "INSERT INTO defaults VALUES ('another process', 1)");
    }

    const TemporaryFolder temporary;
    const fs::path folder = temporary.path() / "Orvu";
    const fs::path file = folder / "UserDefaults.sqlite";
};

TEST_F(SqliteUserDefaultsTest, ValuesOfEachTypeAreReadBack) {
    SqliteUserDefaults defaults{file};

    defaults.setData("data", "\x00\xFF\x01"s);
    defaults.setString("string", "Grüße, 世界");
    defaults.setInteger("integer", std::numeric_limits<std::int64_t>::min());
    defaults.setNumber("number", -0.1);
    defaults.setBoolean("boolean", true);

    EXPECT_THAT(defaults.data("data"), Optional("\x00\xFF\x01"s));
    EXPECT_THAT(defaults.string("string"), Optional("Grüße, 世界"s));
    EXPECT_THAT(defaults.integer("integer"), Optional(std::numeric_limits<std::int64_t>::min()));
    EXPECT_THAT(defaults.number("number"), Optional(-0.1));
    EXPECT_THAT(defaults.boolean("boolean"), Optional(true));
}

TEST_F(SqliteUserDefaultsTest, ValuesAreThereAfterReopening) {
    makeStore();

    const SqliteUserDefaults defaults{file};

    EXPECT_THAT(defaults.string("searchEngine"), Optional("marginalia"s));
    EXPECT_THAT(defaults.integer("launchCount"), Optional(7));
    EXPECT_THAT(defaults.data("browserVisits"), Optional(std::string(300'000, 'v')));
    EXPECT_THAT(defaults.number("readerSize"), Optional(18.5));
}

TEST_F(SqliteUserDefaultsTest, AKeyWithoutAValueGivesNothing) {
    const SqliteUserDefaults defaults{file};

    EXPECT_FALSE(defaults.hasObject("absent"));
    EXPECT_EQ(defaults.data("absent"), std::nullopt);
    EXPECT_EQ(defaults.string("absent"), std::nullopt);
    EXPECT_EQ(defaults.integer("absent"), std::nullopt);
    EXPECT_EQ(defaults.number("absent"), std::nullopt);
    EXPECT_EQ(defaults.boolean("absent"), std::nullopt);
}

TEST_F(SqliteUserDefaultsTest, AValueOfAnotherTypeGivesNothing) {
    SqliteUserDefaults defaults{file};

    defaults.setData("data", "1");
    defaults.setString("string", "1");
    defaults.setInteger("integer", 1);

    EXPECT_EQ(defaults.string("data"), std::nullopt);
    EXPECT_EQ(defaults.integer("data"), std::nullopt);
    EXPECT_EQ(defaults.number("data"), std::nullopt);
    EXPECT_EQ(defaults.boolean("data"), std::nullopt);
    EXPECT_EQ(defaults.data("string"), std::nullopt);
    EXPECT_EQ(defaults.integer("string"), std::nullopt);
    EXPECT_EQ(defaults.number("string"), std::nullopt);
    EXPECT_EQ(defaults.data("integer"), std::nullopt);
    EXPECT_EQ(defaults.string("integer"), std::nullopt);
    EXPECT_TRUE(defaults.hasObject("data"));
    EXPECT_TRUE(defaults.hasObject("string"));
    EXPECT_TRUE(defaults.hasObject("integer"));
}

TEST_F(SqliteUserDefaultsTest, ATextIsTrueIfItSaysSo) {
    SqliteUserDefaults defaults{file};
    const auto booleanOf = [&](std::string_view text) {
        defaults.setString("key", text);
        return defaults.boolean("key");
    };

    EXPECT_THAT(booleanOf("YES"), Optional(true));
    EXPECT_THAT(booleanOf("true"), Optional(true));
    EXPECT_THAT(booleanOf("1"), Optional(true));
    EXPECT_THAT(booleanOf("NO"), Optional(false));
    EXPECT_THAT(booleanOf("yes"), Optional(false));
    EXPECT_THAT(booleanOf("1\0"s), Optional(false));
    EXPECT_THAT(booleanOf(""), Optional(false));
}

TEST_F(SqliteUserDefaultsTest, ANumberIsTrueUnlessItIsZero) {
    SqliteUserDefaults defaults{file};
    const auto booleanOf = [&](double number) {
        defaults.setNumber("key", number);
        return defaults.boolean("key");
    };

    EXPECT_THAT(booleanOf(0.5), Optional(true));
    EXPECT_THAT(booleanOf(-3), Optional(true));
    EXPECT_THAT(booleanOf(0.0), Optional(false));
    EXPECT_THAT(booleanOf(-0.0), Optional(false));
}

TEST_F(SqliteUserDefaultsTest, ABooleanIsAnInteger) {
    SqliteUserDefaults defaults{file};

    defaults.setBoolean("yes", true);
    defaults.setBoolean("no", false);

    EXPECT_THAT(defaults.integer("yes"), Optional(1));
    EXPECT_THAT(defaults.number("no"), Optional(0.0));
}

TEST_F(SqliteUserDefaultsTest, TheIntegerOfANumberIsCutTowardsZero) {
    SqliteUserDefaults defaults{file};
    const auto integerOf = [&](double number) {
        defaults.setNumber("key", number);
        return defaults.integer("key");
    };

    EXPECT_THAT(integerOf(2.9), Optional(2));
    EXPECT_THAT(integerOf(-2.9), Optional(-2));
    EXPECT_THAT(integerOf(-0x1p63), Optional(std::numeric_limits<std::int64_t>::min()));
}

TEST_F(SqliteUserDefaultsTest, ANumberBeyond64BitsHasNoInteger) {
    SqliteUserDefaults defaults{file};
    const auto integerOf = [&](double number) {
        defaults.setNumber("key", number);
        return defaults.integer("key");
    };

    EXPECT_EQ(integerOf(0x1p63), std::nullopt);
    EXPECT_EQ(integerOf(-1e300), std::nullopt);
    EXPECT_EQ(integerOf(std::numeric_limits<double>::infinity()), std::nullopt);
}

TEST_F(SqliteUserDefaultsTest, InfinityIsANumberAndNaNIsRefused) {
    SqliteUserDefaults defaults{file};
    defaults.setNumber("infinite", -std::numeric_limits<double>::infinity());
    defaults.setNumber("previous", 1.5);

    defaults.setNumber("previous", std::nan(""));
    defaults.setNumber("fresh", std::nan(""));

    EXPECT_THAT(defaults.number("infinite"), Optional(-std::numeric_limits<double>::infinity()));
    EXPECT_THAT(defaults.number("previous"), Optional(1.5));
    EXPECT_FALSE(defaults.hasObject("fresh"));
}

TEST_F(SqliteUserDefaultsTest, AWriteReplacesAValueOfAnyType) {
    SqliteUserDefaults defaults{file};
    defaults.setString("key", "text");

    defaults.setInteger("key", 4);

    EXPECT_THAT(defaults.integer("key"), Optional(4));
    EXPECT_EQ(defaults.string("key"), std::nullopt);
}

TEST_F(SqliteUserDefaultsTest, TheWritesOfABatchTakePlaceTogether) {
    SqliteUserDefaults defaults{file};
    SqliteUserDefaults other{file};
    defaults.setString("session", "old");
    {
        const UserDefaults::Batch outer{defaults};
        defaults.setString("session", "new");
        {
            const UserDefaults::Batch inner{defaults};
            defaults.setString("groups", "new");
        }

        EXPECT_EQ(defaults.string("session"), "new");
        EXPECT_EQ(other.string("session"), "old");
        EXPECT_EQ(other.string("groups"), std::nullopt);
    }

    EXPECT_EQ(other.string("session"), "new");
    EXPECT_EQ(other.string("groups"), "new");
}

TEST_F(SqliteUserDefaultsTest, ABatchInWhichOneWriteIsRefusedLeavesAllPreviousValues) {
    SqliteUserDefaults defaults{file};
    defaults.setString("session", "old");
    {
        const UserDefaults::Batch batch{defaults};
        {
            SqliteConnection other{file, Access::readWrite};
            other.execute("BEGIN IMMEDIATE");  // holds off every other writer
            defaults.setString("session", "new");
        }
        defaults.setString("groups", "new");
    }

    EXPECT_EQ(defaults.string("session"), "old");
    EXPECT_EQ(defaults.string("groups"), std::nullopt);
    defaults.setString("session", "newer");
    EXPECT_EQ(SqliteUserDefaults{file}.string("session"), "newer");
}

TEST_F(SqliteUserDefaultsTest, DamageThatShowsWithinABatchEndsInANewDatabaseWithItsWrites) {
    makeStore();
    breakHistory();
    SqliteUserDefaults defaults{file};
    forgetCache();
    {
        const UserDefaults::Batch batch{defaults};
        static_cast<void>(defaults.data("browserVisits"));
        defaults.setString("session", "new");
    }

    EXPECT_EQ(defaults.string("session"), "new");
    EXPECT_EQ(SqliteUserDefaults{file}.string("session"), "new");
}

TEST_F(SqliteUserDefaultsTest, RemoveTakesTheValueAway) {
    SqliteUserDefaults defaults{file};
    defaults.setString("gone", "text");
    defaults.setString("stays", "text");

    defaults.remove("gone");
    defaults.remove("absent");

    EXPECT_FALSE(defaults.hasObject("gone"));
    EXPECT_TRUE(defaults.hasObject("stays"));
}

TEST_F(SqliteUserDefaultsTest, EmptyKeysAndValuesAreValues) {
    SqliteUserDefaults defaults{file};

    defaults.setString("", "");
    defaults.setData("data", {});

    EXPECT_THAT(defaults.string(std::string_view{}), Optional(""s));
    EXPECT_THAT(defaults.data("data"), Optional(""s));
    EXPECT_TRUE(defaults.hasObject("data"));
}

TEST_F(SqliteUserDefaultsTest, KeysAndTextsMayHoldZerosAndBytesThatAreNoText) {
    const auto key = "a\0\xFF key"s;
    const auto text = "\xC3(\0\xF0\x9F end"s;
    {
        SqliteUserDefaults defaults{file};
        defaults.setString(key, text);
        defaults.setString("a", "another");
    }

    const SqliteUserDefaults defaults{file};

    EXPECT_THAT(defaults.string(key), Optional(text));
    EXPECT_THAT(defaults.string("a"), Optional("another"s));
}

TEST_F(SqliteUserDefaultsTest, ALargeValueIsReadBackWhole) {
    std::string large(100'000'000, '\0');
    for (std::size_t at = 0; at < large.size(); at += 4096) {
        large[at] = static_cast<char>(at >> 12);
    }
    {
        SqliteUserDefaults defaults{file};
        defaults.setData("large", large);
        EXPECT_TRUE(defaults.data("large") == large);
    }

    const SqliteUserDefaults defaults{file};

    EXPECT_TRUE(defaults.data("large") == large);
}

TEST_F(SqliteUserDefaultsTest, ManyKeysKeepTheirValues) {
    constexpr int count = 10'000;
    {
        SqliteUserDefaults defaults{file};
        for (int key = 0; key < count; ++key) defaults.setInteger(std::to_string(key), key);
    }

    const SqliteUserDefaults defaults{file};

    int right = 0;
    for (int key = 0; key < count; ++key) right += defaults.integer(std::to_string(key)) == key;
    EXPECT_EQ(right, count);
}

TEST_F(SqliteUserDefaultsTest, TheDatabaseHasTheStatedForm) {
    makeStore();

    SqliteConnection connection{file, Access::readOnly};

    EXPECT_THAT(connection.queryInteger("PRAGMA user_version"), Optional(1));
    EXPECT_THAT(connection.queryInteger("SELECT count(*) FROM defaults WHERE key='searchEngine' "
                                        "AND typeof(value)='text'"),
                Optional(1));
    EXPECT_THAT(connection.queryInteger("SELECT count(*) FROM defaults WHERE key='browserVisits' "
                                        "AND typeof(value)='blob'"),
                Optional(1));
    EXPECT_THAT(connection.queryInteger("SELECT count(*) FROM defaults WHERE key='launchCount' "
                                        "AND typeof(value)='integer'"),
                Optional(1));
    EXPECT_THAT(connection.queryInteger("SELECT count(*) FROM defaults WHERE key='readerSize' "
                                        "AND typeof(value)='real'"),
                Optional(1));
}

TEST_F(SqliteUserDefaultsTest, OnlyTheOwnerMayLook) {
    const SqliteUserDefaults defaults{file};

    EXPECT_EQ(permissions(folder), 0700U);
    EXPECT_EQ(permissions(file), 0600U);
    EXPECT_EQ(permissions(beside("-wal")), 0600U);
}

TEST_F(SqliteUserDefaultsTest, AFileOpenToOthersIsClosedToThem) {
    makeStore();
    fs::permissions(file, fs::perms{0644});

    const SqliteUserDefaults defaults{file};

    EXPECT_EQ(permissions(file), 0600U);
    EXPECT_THAT(defaults.integer("launchCount"), Optional(7));
}

TEST_F(SqliteUserDefaultsTest, AFolderThatIsThereKeepsItsPermissions) {
    fs::create_directory(folder);
    fs::permissions(folder, fs::perms{0755});

    const SqliteUserDefaults defaults{file};

    EXPECT_EQ(permissions(folder), 0755U);
}

TEST_F(SqliteUserDefaultsTest, OnlyTheFileIsLeftAfterClosing) {
    makeStore();

    EXPECT_TRUE(fs::exists(file));
    EXPECT_FALSE(fs::exists(beside("-wal")));
    EXPECT_FALSE(fs::exists(beside("-shm")));
}

TEST_F(SqliteUserDefaultsTest, ALongLogIsMovedIntoTheFileWhileTheStoreIsOpen) {
    SqliteUserDefaults defaults{file};
    constexpr std::size_t size = 1 << 20;

    // The move is made in the background; each write gives it an occasion, and the log would
    // grow by this value for ever if it never came.
    int writes = 0;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds{60};
    while (fs::file_size(file) < size && std::chrono::steady_clock::now() < deadline) {
        defaults.setData("visits", std::string(size, static_cast<char>(++writes)));
    }

    EXPECT_GE(fs::file_size(file), size);
    EXPECT_GT(writes, 4);  // not with every write
    EXPECT_TRUE(defaults.data("visits") == std::string(size, static_cast<char>(writes)));
}

TEST_F(SqliteUserDefaultsTest, ClearedValuesAreNotLeftInTheFile) {
    {
        SqliteUserDefaults defaults{file};
        for (int round = 0; round < 3; ++round) {
            defaults.setData(
                "browserVisits",
                "https://private.example/ " + std::string(200'000, static_cast<char>('a' + round)));
        }
        defaults.setData("browserVisits", "[]");
    }

    const std::string stored = contents(file);

    EXPECT_FALSE(stored.contains("private.example"));
    EXPECT_FALSE(stored.contains("aaaaaaaa"));
    EXPECT_FALSE(stored.contains("cccccccc"));
}

// --- Damage ------------------------------------------------------------------------------------

TEST_F(SqliteUserDefaultsTest, AFileThatIsNoDatabaseIsSetAside) {
    fs::create_directory(folder);
    overwrite(file, std::string(5000, '?'));

    SqliteUserDefaults defaults{file};

    defaults.setInteger("launchCount", 1);
    EXPECT_THAT(defaults.integer("launchCount"), Optional(1));
    EXPECT_EQ(contents(beside(".damaged-1")), std::string(5000, '?'));
}

TEST_F(SqliteUserDefaultsTest, AFormerFileSetAsideIsNotOverwritten) {
    for (const auto* const rubbish : {"first rubbish", "second rubbish", "third rubbish"}) {
        fs::create_directory(folder);
        overwrite(file, rubbish);
        SqliteUserDefaults{file}.setString("rubbish", rubbish);
    }

    EXPECT_EQ(contents(beside(".damaged-1")), "first rubbish");
    EXPECT_EQ(contents(beside(".damaged-2")), "second rubbish");
    EXPECT_EQ(contents(beside(".damaged-3")), "third rubbish");
    EXPECT_THAT(SqliteUserDefaults{file}.string("rubbish"), Optional("third rubbish"s));
}

TEST_F(SqliteUserDefaultsTest, ATruncatedFileIsSetAsideWhole) {
    makeStore();
    const std::string whole = contents(file);
    int number = 0;
    for (const std::size_t length :
         {1UL, 15UL, 50UL, 511UL, 4096UL, 32767UL, 32768UL, 100'000UL, whole.size() - 32768}) {
        const std::string part = whole.substr(0, length);
        overwrite(file, part);

        SqliteUserDefaults defaults{file};

        defaults.setString("after", "written");
        EXPECT_THAT(defaults.string("after"), Optional("written"s)) << length;
        const auto aside = beside((".damaged-" + std::to_string(++number)).c_str());
        EXPECT_TRUE(contents(aside) == part) << length;
    }
}

TEST_F(SqliteUserDefaultsTest, AnEmptyFileIsANewDatabase) {
    fs::create_directory(folder);
    overwrite(file, "");

    SqliteUserDefaults{file}.setInteger("launchCount", 1);

    EXPECT_THAT(SqliteUserDefaults{file}.integer("launchCount"), Optional(1));
    EXPECT_FALSE(fs::exists(beside(".damaged-1")));
}

TEST_F(SqliteUserDefaultsTest, AnyDamagedPageIsSurvivedAndNothingIsDeleted) {
    makeStore();
    const std::string whole = contents(file);
    constexpr std::size_t pageSize = 32768;
    for (std::size_t page = 0; page < whole.size() / pageSize; ++page) {
        fs::remove_all(folder);
        fs::create_directory(folder);
        overwrite(file, whole);
        damage(file, page * pageSize, pageSize);
        const std::string damaged = contents(file);

        {
            SqliteUserDefaults defaults{file};
            for (const auto* const key :
                 {"searchEngine", "launchCount", "browserVisits", "orvuBookmarks", "readerSize"}) {
                (void)defaults.data(key);
                (void)defaults.string(key);
            }
            defaults.setString("after", "written");
            EXPECT_THAT(defaults.string("after"), Optional("written"s)) << page;
        }

        EXPECT_THAT(SqliteUserDefaults{file}.string("after"), Optional("written"s)) << page;
        // Rubbish amid a long value is no damage that the database could know of.
        const bool aside = fs::exists(beside(".damaged-1"));
        EXPECT_TRUE(aside ? contents(beside(".damaged-1")) == damaged
                          : SqliteUserDefaults{file}.hasObject("browserVisits"))
            << page;
    }
}

TEST_F(SqliteUserDefaultsTest, WhatCanStillBeReadOfADamagedFileIsKept) {
    makeStore();
    breakHistory();

    const SqliteUserDefaults defaults{file};

    EXPECT_FALSE(defaults.hasObject("browserVisits"));
    EXPECT_THAT(defaults.data("orvuBookmarks"), Optional(std::string(200'000, 'b')));
    EXPECT_THAT(defaults.string("searchEngine"), Optional("marginalia"s));
    EXPECT_THAT(defaults.integer("launchCount"), Optional(7));
    EXPECT_TRUE(fs::exists(beside(".damaged-1")));
}

TEST_F(SqliteUserDefaultsTest, DamageThatShowsWhileOpenEndsInANewDatabase) {
    makeStore();
    SqliteUserDefaults defaults{file};
    breakHistory();
    forgetCache();

    EXPECT_FALSE(defaults.data("browserVisits").has_value());

    EXPECT_TRUE(fs::exists(beside(".damaged-1")));
    EXPECT_THAT(defaults.string("searchEngine"), Optional("marginalia"s));
    EXPECT_THAT(defaults.data("orvuBookmarks"), Optional(std::string(200'000, 'b')));
    defaults.setData("browserVisits", "[]");
    EXPECT_THAT(defaults.data("browserVisits"), Optional("[]"s));
}

TEST_F(SqliteUserDefaultsTest, DamageThatShowsInAWriteDoesNotLoseTheWrite) {
    makeStore();
    SqliteUserDefaults defaults{file};
    breakHistory();
    forgetCache();

    defaults.setData("browserVisits", "[]");

    EXPECT_TRUE(fs::exists(beside(".damaged-1")));
    EXPECT_THAT(defaults.data("browserVisits"), Optional("[]"s));
    EXPECT_THAT(defaults.string("searchEngine"), Optional("marginalia"s));
}

TEST_F(SqliteUserDefaultsTest, AStrangersDatabaseIsSetAside) {
    fs::create_directory(folder);
    {
        SqliteConnection stranger{file, Access::create};
        stranger.execute("CREATE TABLE notes (text); INSERT INTO notes VALUES ('mine')");
    }

    SqliteUserDefaults defaults{file};

    defaults.setInteger("launchCount", 1);
    EXPECT_THAT(defaults.integer("launchCount"), Optional(1));
    EXPECT_THAT((SqliteConnection{beside(".damaged-1"), Access::readOnly}.queryInteger(
                    "SELECT count(*) FROM notes")),
                Optional(1));
}

TEST_F(SqliteUserDefaultsTest, ATableOfAnotherFormIsSetAside) {
    fs::create_directory(folder);
    SqliteConnection{file, Access::create}.execute(
        "CREATE TABLE defaults (name TEXT, value); PRAGMA user_version=1");

    SqliteUserDefaults defaults{file};

    defaults.setInteger("launchCount", 1);
    EXPECT_THAT(defaults.integer("launchCount"), Optional(1));
    EXPECT_TRUE(fs::exists(beside(".damaged-1")));
}

TEST_F(SqliteUserDefaultsTest, ALaterVersionsDatabaseIsSetAsideUnread) {
    makeStore();
    SqliteConnection{file, Access::readWrite}.execute("PRAGMA user_version=2");

    const SqliteUserDefaults defaults{file};

    EXPECT_FALSE(defaults.hasObject("launchCount"));
    EXPECT_THAT((SqliteConnection{beside(".damaged-1"), Access::readOnly}.queryInteger(
                    "SELECT value FROM defaults WHERE key='launchCount'")),
                Optional(7));
}

TEST_F(SqliteUserDefaultsTest, AFolderInTheFilesPlaceIsSetAside) {
    fs::create_directories(file / "within");

    SqliteUserDefaults defaults{file};

    defaults.setInteger("launchCount", 1);
    EXPECT_THAT(defaults.integer("launchCount"), Optional(1));
    EXPECT_TRUE(fs::is_regular_file(file));
    EXPECT_TRUE(fs::is_directory(beside(".damaged-1") / "within"));
}

TEST_F(SqliteUserDefaultsTest, ALogWithoutItsFileIsSetAside) {
    fs::create_directory(folder);
    overwrite(beside("-wal"), "what is left of a history");

    SqliteUserDefaults{file}.setInteger("launchCount", 1);

    EXPECT_THAT(SqliteUserDefaults{file}.integer("launchCount"), Optional(1));
    EXPECT_EQ(contents(beside(".damaged-1-wal")), "what is left of a history");
}

TEST_F(SqliteUserDefaultsTest, TheLogIsSetAsideWithItsFile) {
    fs::create_directory(folder);
    overwrite(file, std::string(40'000, '?'));
    overwrite(beside("-wal"), "what is left of a history");

    const SqliteUserDefaults defaults{file};

    EXPECT_EQ(contents(beside(".damaged-1-wal")), "what is left of a history");
    EXPECT_EQ(contents(beside(".damaged-1")), std::string(40'000, '?'));
}

TEST_F(SqliteUserDefaultsTest, ALinkLeadsToTheRealFile) {
    makeStore();
    const auto link = temporary.path() / "link.sqlite";
    fs::create_symlink(file, link);

    SqliteUserDefaults{link}.setInteger("launchCount", 8);

    EXPECT_THAT(SqliteUserDefaults{file}.integer("launchCount"), Optional(8));
    EXPECT_TRUE(fs::is_symlink(link));
}

TEST_F(SqliteUserDefaultsTest, WithoutAFolderValuesLiveInMemory) {
    overwrite(folder, "a file where the folder would be");

    SqliteUserDefaults defaults{file};

    defaults.setString("searchEngine", "marginalia");
    EXPECT_THAT(defaults.string("searchEngine"), Optional("marginalia"s));
    EXPECT_EQ(contents(folder), "a file where the folder would be");
}

}  // namespace
}  // namespace orvu

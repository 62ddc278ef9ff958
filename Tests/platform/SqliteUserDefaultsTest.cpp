#include "platform/linux/defaults/SqliteUserDefaults.h"

#include "platform/DefaultsWorld.h"

#include <chrono>
#include <cmath>
#include <limits>
#include <thread>

namespace orvu {
namespace {

using SqliteUserDefaultsTest = DefaultsTest;

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

TEST_F(SqliteUserDefaultsTest, ABatchThatIsRefusedCountsAndIsWrittenWholeWithTheNextWrite) {
    SqliteUserDefaults defaults{file};
    defaults.setString("session", "old");
    SqliteUserDefaults beside{file};
    {
        SqliteConnection other{file, Access::readWrite};
        other.execute("BEGIN IMMEDIATE");  // holds off every other writer
        const UserDefaults::Batch batch{defaults};
        defaults.setString("session", "new");
        defaults.setString("groups", "new");
        defaults.remove("absent");
    }
    EXPECT_EQ(defaults.string("session"), "new");
    EXPECT_EQ(defaults.string("groups"), "new");

    defaults.setInteger("launchCount", 2);

    EXPECT_EQ(beside.string("session"), "new");
    EXPECT_EQ(beside.string("groups"), "new");
    EXPECT_EQ(beside.integer("launchCount"), 2);
}

TEST_F(SqliteUserDefaultsTest, WhatIsRefusedIsNotWrittenInPart) {
    SqliteUserDefaults defaults{file};
    defaults.setString("session", "old");
    SqliteUserDefaults beside{file};
    SqliteConnection other{file, Access::readWrite};
    other.execute("BEGIN IMMEDIATE");

    defaults.setString("shelf", "new");
    defaults.setString("session", "new");

    EXPECT_EQ(beside.string("session"), "old");
    EXPECT_EQ(beside.string("shelf"), std::nullopt);
    EXPECT_EQ(defaults.string("shelf"), "new");
}

TEST_F(SqliteUserDefaultsTest, WhatWasRefusedIsWrittenAtTheEnd) {
    {
        SqliteUserDefaults defaults{file};
        SqliteConnection other{file, Access::readWrite};
        other.execute("BEGIN IMMEDIATE");
        defaults.setString("session", "new");
        other.execute("ROLLBACK");
    }

    EXPECT_EQ(SqliteUserDefaults{file}.string("session"), "new");
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
    StorageOptions options;
    options.passing = {"visits"};  // otherwise each write deletes the last, which empties the log
    SqliteUserDefaults defaults{file, options};
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

}  // namespace
}  // namespace orvu

#include "platform/linux/defaults/SqliteUserDefaults.h"

#include "platform/DefaultsWorld.h"

#include <array>
#include <map>
#include <random>

namespace orvu {
namespace {

constexpr std::size_t pageSize = 32768;

/// Values that are damaged: what was written last, and what the older copy has.
class StorageTest : public DefaultsTest {
protected:
    using Values = std::map<std::string, std::string>;

    static Values values(char mark) {
        return {{"browserSession", std::string(500, mark)},
                {"browserShelf", std::string(40, mark)},
                {"browserGroups", std::string(3000, mark)},
                {"orvuBookmarks", std::string(70'000, mark)},
                {"browserVisits", std::string(120'000, mark)}};
    }
    void write(const Values& stored) const {
        SqliteUserDefaults defaults{file};
        for (const auto& [key, value] : stored) defaults.setData(key, value);
    }
    /// The older copy has `older`, the database `last`.
    void makeBoth() {
        write(older);
        backUp();
        const std::string copy = contents(beside(".backup"));
        write(last);
        overwrite(beside(".backup"), copy);  // as if each had only grown
        whole = contents(file);
        backup = copy;
    }
    void restore(std::string_view database) const {
        fs::remove_all(folder);
        fs::create_directory(folder);
        overwrite(file, database);
        if (!backup.empty()) overwrite(beside(".backup"), backup);
    }
    /// How many keys have their last value. Each must have that or the older copy's.
    int checkEachIsWhole(const std::string& what) const {
        SqliteUserDefaults defaults{file};
        int latest = 0;
        for (const auto& [key, value] : last) {
            const auto stored = defaults.data(key);
            EXPECT_TRUE(stored == value || stored == older.at(key)) << key << ", " << what;
            if (stored == value) ++latest;
        }
        defaults.setString("after", "written");
        EXPECT_EQ(defaults.string("after"), "written") << what;
        return latest;
    }

    const Values older = values('o');
    const Values last = values('l');
    std::string whole;
    std::string backup;
};

TEST_F(StorageTest, OfADatabaseThatIsCutAnywhereEachValueIsTheLastOrThatOfTheOlderCopy) {
    makeBoth();
    std::minstd_rand random{20260301};
    std::vector<std::size_t> lengths{0, 1, 99, 100, pageSize, pageSize * 2, pageSize * 3};
    for (int number = 0; number < 20; ++number) lengths.push_back(random() % whole.size());
    int latest = 0;
    for (const auto length : lengths) {
        restore(std::string_view{whole}.substr(0, length));
        latest += checkEachIsWhole(std::to_string(length));
        checkEachIsWhole("reopened after " + std::to_string(length));
    }
    // What stands before the cut is not taken from the older copy.
    EXPECT_GT(latest, 30);
}

TEST_F(StorageTest, OfACutDatabaseWithoutChecksumsTheOlderCopysValuesAreTaken) {
    makeBoth();
    SqliteConnection{file, Access::readWrite}.execute("UPDATE defaults SET checksum = NULL");
    whole = contents(file);
    for (std::size_t length = 40'000; length < whole.size(); length += 20'000) {
        restore(std::string_view{whole}.substr(0, length));
        EXPECT_EQ(checkEachIsWhole(std::to_string(length)), 0);
    }
}

TEST_F(StorageTest, AfterAFlippedBitInAnyPageEachValueIsTheLastOrThatOfTheOlderCopy) {
    makeBoth();
    std::minstd_rand random{20260302};
    int latest = 0;
    int rounds = 0;
    for (std::size_t page = 0; page < whole.size() / pageSize; ++page) {
        for (int round = 0; round < 10; ++round, ++rounds) {
            std::string damaged = whole;
            // Half of them where a page tells what is in it.
            const std::size_t range = round % 2 == 0 ? 128 : pageSize;
            const std::size_t at = page * pageSize + random() % range;
            damaged[at] =
                static_cast<char>(static_cast<unsigned char>(damaged[at]) ^ (1U << random() % 8));
            restore(damaged);
            latest += checkEachIsWhole("byte " + std::to_string(at));
        }
    }
    EXPECT_GT(latest, rounds * 3);
}

TEST_F(StorageTest, AfterAFlippedBitInTheHeaderAllLastValuesAreThere) {
    makeBoth();
    constexpr std::size_t versionAt = 60;  // of the tables: that of a later program is not read
    for (std::size_t at = 0; at < 100; ++at) {
        if (at >= versionAt && at < versionAt + 4) continue;
        std::string damaged = whole;
        damaged[at] = static_cast<char>(static_cast<unsigned char>(damaged[at]) ^ (1U << at % 8));
        restore(damaged);
        EXPECT_EQ(checkEachIsWhole("byte " + std::to_string(at)), 5) << at;
    }
}

TEST_F(StorageTest, WithoutAnOlderCopyADamagedValueIsAbsentAndTheOthersAreThere) {
    makeBoth();
    backup.clear();
    std::string damaged = whole;
    const auto at = damaged.find(std::string(1000, 'l')) + 500;
    damaged[at] = 'L';
    restore(damaged);

    const SqliteUserDefaults defaults{file};

    int present = 0;
    for (const auto& [key, value] : last) {
        const auto stored = defaults.data(key);
        EXPECT_TRUE(!stored || stored == value) << key;
        present += stored ? 1 : 0;
    }
    EXPECT_EQ(present, 4);
}

TEST_F(StorageTest, ADamagedValueIsSetAsideWhenItIsFound) {
    makeBoth();
    const auto at = whole.find(std::string(5000, 'l')) + 2000;
    std::string damaged = whole;
    damaged[at] = 'L';
    restore(damaged);

    checkEachIsWhole("one letter");

    SqliteConnection connection{file, Access::readOnly};
    EXPECT_EQ(connection.queryInteger("SELECT count(*) FROM setAside"), 1);
    EXPECT_EQ(connection.queryInteger("SELECT instr(value, x'6C4C6C') > 0 FROM setAside"), 1);
    EXPECT_FALSE(fs::exists(beside(".damaged-1")));
}

TEST_F(StorageTest, ADatabaseThatIsGoneComesBackFromItsOlderCopy) {
    makeBoth();
    fs::remove(file);

    const SqliteUserDefaults defaults{file};

    for (const auto& [key, value] : older) EXPECT_EQ(defaults.data(key), value) << key;
}

TEST_F(StorageTest, AProcessThatDiedWhileItReplacedADamagedFileHasLostNothing) {
    makeBoth();
    fs::rename(file, beside(".salvaged"));
    fs::remove(beside(".backup"));

    const SqliteUserDefaults defaults{file};

    for (const auto& [key, value] : last) EXPECT_EQ(defaults.data(key), value) << key;
}

TEST_F(StorageTest, ADamagedOlderCopyGivesOnlyWhatIsRight) {
    makeBoth();
    std::minstd_rand random{20260303};
    for (int round = 0; round < 40; ++round) {
        std::string damaged = backup;
        for (int bit = 0; bit < 5; ++bit) {
            auto& byte = damaged[random() % damaged.size()];
            byte = static_cast<char>(static_cast<unsigned char>(byte) ^ (1U << random() % 8));
        }
        restore("");
        overwrite(beside(".backup"), damaged);

        const SqliteUserDefaults defaults{file};

        for (const auto& [key, value] : older) {
            const auto stored = defaults.data(key);
            EXPECT_TRUE(!stored || stored == value) << key << ", round " << round;
        }
    }
}

TEST_F(StorageTest, ADatabaseWithoutChecksumsOpensAndGetsThemWithTheNextWrites) {
    fs::create_directory(folder);
    SqliteConnection{file, Access::create}.execute(
        "PRAGMA page_size=32768; PRAGMA journal_mode=WAL;"
        "CREATE TABLE defaults (key TEXT PRIMARY KEY NOT NULL, value);"
        "INSERT INTO defaults VALUES ('name', 'stored'), ('launchCount', 7);"
        "PRAGMA user_version=1");

    {
        SqliteUserDefaults defaults{file};
        EXPECT_EQ(defaults.string("name"), "stored");
        defaults.setInteger("launchCount", 8);
    }

    SqliteConnection connection{file, Access::readOnly};
    EXPECT_EQ(connection.queryInteger("SELECT count(*) FROM defaults WHERE checksum IS NULL"), 1);
    EXPECT_EQ(connection.queryInteger("SELECT checksum IS NOT NULL FROM defaults "
                                      "WHERE key = 'launchCount' AND value = 8"),
              1);
    EXPECT_FALSE(fs::exists(beside(".damaged-1")));
}

TEST_F(StorageTest, AValueThatAProgramWithoutChecksumsWroteCounts) {
    makeStore();
    SqliteConnection{file, Access::readWrite}.execute(
        "INSERT INTO defaults (key, value) VALUES ('searchEngine', 'other') "
        "ON CONFLICT (key) DO UPDATE SET value = excluded.value");

    EXPECT_EQ(SqliteUserDefaults{file}.string("searchEngine"), "other");
}

TEST_F(StorageTest, TheOlderCopyIsPrivateToItsOwner) {
    makeStore();
    backUp();

    EXPECT_EQ(permissions(beside(".backup")), 0600U);
    EXPECT_FALSE(fs::exists(beside(".backup.half-made")));
}

TEST_F(StorageTest, TheOlderCopyIsNotMadeAnewBeforeItIsOld) {
    makeStore();
    backUp();
    const std::string copy = contents(beside(".backup"));
    auto options = backingUp();
    options.pace.backupAge = std::chrono::hours{24};
    {
        SqliteUserDefaults defaults{file, options};
        defaults.setInteger("launchCount", 99);
        std::this_thread::sleep_for(std::chrono::milliseconds{100});
    }
    EXPECT_TRUE(contents(beside(".backup")) == copy);

    fs::last_write_time(beside(".backup"),
                        fs::file_time_type::clock::now() - std::chrono::hours{25});
    const SqliteUserDefaults defaults{file, options};

    EXPECT_TRUE(waitUntil([&] { return contents(beside(".backup")) != copy; }));
}

TEST_F(StorageTest, ADatabaseThatDoesNotReadWholeLeavesTheOlderCopyAlone) {
    makeBoth();
    std::string damaged = whole;
    damaged[damaged.find(std::string(5000, 'l')) + 2000] = 'L';
    restore(damaged);
    {
        const SqliteUserDefaults defaults{file, backingUp()};
        std::this_thread::sleep_for(std::chrono::milliseconds{200});
    }

    EXPECT_TRUE(contents(beside(".backup")) == backup);
}

TEST_F(StorageTest, WhatNobodyCouldReadIsSetAsideWhenItIsReplaced) {
    {
        SqliteUserDefaults defaults{file};
        defaults.setData("browserShelf", "[{broken");
        defaults.setAside("browserShelf");
        EXPECT_EQ(defaults.data("browserShelf"), "[{broken");
        defaults.setData("browserShelf", "[1]");
        defaults.setData("browserShelf", "[1,2]");
    }

    SqliteConnection connection{file, Access::readOnly};
    EXPECT_EQ(connection.queryInteger("SELECT count(*) FROM setAside"), 1);
    EXPECT_EQ(connection.queryInteger("SELECT count(*) FROM setAside WHERE key = 'browserShelf' "
                                      "AND value = CAST('[{broken' AS BLOB)"),
              1);
}

TEST_F(StorageTest, TheValuesSetAsideAreFewAndSmall) {
    {
        SqliteUserDefaults defaults{file};
        for (int number = 0; number < 20; ++number) {
            defaults.setData("list", "broken " + std::to_string(number));
            defaults.setAside("list");
        }
        defaults.setData("list", "[]" + std::string(10'000'000, 'x'));
        defaults.setAside("list");
        defaults.setData("list", std::string(10'000'000, 'y'));
        defaults.setAside("list");
        defaults.setData("list", "[1]");
    }

    SqliteConnection connection{file, Access::readOnly};
    EXPECT_EQ(connection.queryInteger("SELECT count(*) FROM setAside"), 1);
    EXPECT_LE(connection.queryInteger("SELECT sum(length(value)) FROM setAside"), 16 << 20);
}

TEST_F(StorageTest, WhatAKilledProcessLeftHalfDoneIsRemoved) {
    makeStore();
    for (const auto* const ending : {".backup.half-made", ".salvaged", ".salvaged.half-made"}) {
        overwrite(beside(ending), "of a former life");
    }

    const SqliteUserDefaults defaults{file, atOnce()};

    EXPECT_TRUE(waitUntil([&] { return !folderHas(folder, "of a former life", ""); }));
    EXPECT_EQ(defaults.integer("launchCount"), 7);
}

}  // namespace
}  // namespace orvu

#include "platform/linux/defaults/SqliteUserDefaults.h"

#include "platform/DefaultsWorld.h"

#include <chrono>
#include <cmath>
#include <limits>
#include <thread>

namespace orvu {
namespace {

using DamagedDefaultsTest = DefaultsTest;

TEST_F(DamagedDefaultsTest, AFileThatIsNoDatabaseIsSetAside) {
    fs::create_directory(folder);
    overwrite(file, std::string(5000, '?'));

    SqliteUserDefaults defaults{file};

    defaults.setInteger("launchCount", 1);
    EXPECT_THAT(defaults.integer("launchCount"), Optional(1));
    EXPECT_EQ(contents(beside(".damaged-1")), std::string(5000, '?'));
}

TEST_F(DamagedDefaultsTest, AFormerFileSetAsideIsNotOverwritten) {
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

TEST_F(DamagedDefaultsTest, ATruncatedFileIsSetAsideWhole) {
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

TEST_F(DamagedDefaultsTest, AnEmptyFileIsANewDatabase) {
    fs::create_directory(folder);
    overwrite(file, "");

    SqliteUserDefaults{file}.setInteger("launchCount", 1);

    EXPECT_THAT(SqliteUserDefaults{file}.integer("launchCount"), Optional(1));
    EXPECT_FALSE(fs::exists(beside(".damaged-1")));
}

TEST_F(DamagedDefaultsTest, AnyDamagedPageIsSurvivedAndNothingIsDeleted) {
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
        // Rubbish amid a long value is damage to that value alone.
        const bool aside = fs::exists(beside(".damaged-1"));
        EXPECT_TRUE(aside ? contents(beside(".damaged-1")) == damaged
                          : folderHas(folder, std::string(pageSize - 100, '\xA5'), ".sqlite"))
            << page;
    }
}

TEST_F(DamagedDefaultsTest, WhatCanStillBeReadOfADamagedFileIsKept) {
    makeStore();
    breakHistory();

    const SqliteUserDefaults defaults{file};

    EXPECT_FALSE(defaults.hasObject("browserVisits"));
    EXPECT_THAT(defaults.data("orvuBookmarks"), Optional(std::string(200'000, 'b')));
    EXPECT_THAT(defaults.string("searchEngine"), Optional("marginalia"s));
    EXPECT_THAT(defaults.integer("launchCount"), Optional(7));
    EXPECT_TRUE(fs::exists(beside(".damaged-1")));
}

TEST_F(DamagedDefaultsTest, DamageThatShowsWhileOpenEndsInANewDatabase) {
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

TEST_F(DamagedDefaultsTest, DamageThatShowsInAWriteDoesNotLoseTheWrite) {
    makeStore();
    // The write takes something away, and with it goes what was set aside: not so soon.
    StorageOptions options;
    options.pace.afterDeletion = std::chrono::hours{1};
    SqliteUserDefaults defaults{file, options};
    breakHistory();
    forgetCache();

    defaults.setData("browserVisits", "[]");

    EXPECT_TRUE(fs::exists(beside(".damaged-1")));
    EXPECT_THAT(defaults.data("browserVisits"), Optional("[]"s));
    EXPECT_THAT(defaults.string("searchEngine"), Optional("marginalia"s));
}

TEST_F(DamagedDefaultsTest, AStrangersDatabaseIsSetAside) {
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

TEST_F(DamagedDefaultsTest, ATableOfAnotherFormIsSetAside) {
    fs::create_directory(folder);
    SqliteConnection{file, Access::create}.execute(
        "CREATE TABLE defaults (name TEXT, value); PRAGMA user_version=1");

    SqliteUserDefaults defaults{file};

    defaults.setInteger("launchCount", 1);
    EXPECT_THAT(defaults.integer("launchCount"), Optional(1));
    EXPECT_TRUE(fs::exists(beside(".damaged-1")));
}

TEST_F(DamagedDefaultsTest, ALaterVersionsDatabaseIsSetAsideUnread) {
    makeStore();
    SqliteConnection{file, Access::readWrite}.execute("PRAGMA user_version=2");

    const SqliteUserDefaults defaults{file};

    EXPECT_FALSE(defaults.hasObject("launchCount"));
    EXPECT_THAT((SqliteConnection{beside(".damaged-1"), Access::readOnly}.queryInteger(
                    "SELECT value FROM defaults WHERE key='launchCount'")),
                Optional(7));
}

TEST_F(DamagedDefaultsTest, AFolderInTheFilesPlaceIsSetAside) {
    fs::create_directories(file / "within");

    SqliteUserDefaults defaults{file};

    defaults.setInteger("launchCount", 1);
    EXPECT_THAT(defaults.integer("launchCount"), Optional(1));
    EXPECT_TRUE(fs::is_regular_file(file));
    EXPECT_TRUE(fs::is_directory(beside(".damaged-1") / "within"));
}

TEST_F(DamagedDefaultsTest, ALogWithoutItsFileIsSetAside) {
    fs::create_directory(folder);
    overwrite(beside("-wal"), "what is left of a history");

    SqliteUserDefaults{file}.setInteger("launchCount", 1);

    EXPECT_THAT(SqliteUserDefaults{file}.integer("launchCount"), Optional(1));
    EXPECT_EQ(contents(beside(".damaged-1-wal")), "what is left of a history");
}

TEST_F(DamagedDefaultsTest, TheLogIsSetAsideWithItsFile) {
    fs::create_directory(folder);
    overwrite(file, std::string(40'000, '?'));
    overwrite(beside("-wal"), "what is left of a history");

    const SqliteUserDefaults defaults{file};

    EXPECT_EQ(contents(beside(".damaged-1-wal")), "what is left of a history");
    EXPECT_EQ(contents(beside(".damaged-1")), std::string(40'000, '?'));
}

TEST_F(DamagedDefaultsTest, ALinkLeadsToTheRealFile) {
    makeStore();
    const auto link = temporary.path() / "link.sqlite";
    fs::create_symlink(file, link);

    SqliteUserDefaults{link}.setInteger("launchCount", 8);

    EXPECT_THAT(SqliteUserDefaults{file}.integer("launchCount"), Optional(8));
    EXPECT_TRUE(fs::is_symlink(link));
}

TEST_F(DamagedDefaultsTest, WithoutAFolderValuesLiveInMemory) {
    overwrite(folder, "a file where the folder would be");

    SqliteUserDefaults defaults{file};

    defaults.setString("searchEngine", "marginalia");
    EXPECT_THAT(defaults.string("searchEngine"), Optional("marginalia"s));
    EXPECT_EQ(contents(folder), "a file where the folder would be");
}

}  // namespace
}  // namespace orvu

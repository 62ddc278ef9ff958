#include "platform/linux/defaults/SqliteUserDefaults.h"

#include "platform/DefaultsWorld.h"

namespace orvu {
namespace {

/// What a person deletes.
class DeletionTest : public DefaultsTest {
protected:
    const std::string secret = "https://secret-page.example/";
    const std::string kept = "https://kept-page.example/";

    /// The secret in the database, the older copy, a value set aside, a file set aside, the log.
    void spread(std::string_view key) {
        SqliteUserDefaults defaults{file, backingUp()};
        defaults.setData(key, "[" + secret);
        defaults.setAside(key);
        defaults.setData(key, listOf({secret, kept}));
        defaults.setData("browserSession", listOf({secret, kept}));
        ASSERT_TRUE(waitUntil([&] { return folderHas(folder, secret, ".backup"); }));
        overwrite(beside(".damaged-1"), "damaged " + secret);
        overwrite(beside(".damaged-3-wal"), "damaged " + secret);
    }
    void expectGone() const {
        EXPECT_TRUE(waitUntil([&] { return !folderHas(folder, secret, ""); }));
        for (const auto& entry : fs::directory_iterator{folder}) {
            EXPECT_FALSE(contents(entry.path()).contains(secret)) << entry.path();
        }
    }
};

TEST_F(DeletionTest, WhatIsGoneFromADocumentIsGoneEverywhereWhileTheProgramRuns) {
    for (const auto* const key : {"browserVisits", "orvuBookmarks", "browserShelf.PROFILE"}) {
        spread(key);
        SqliteUserDefaults defaults{file, atOnce()};

        defaults.setData("browserSession", listOf({kept}));
        defaults.setData(key, listOf({kept}));

        expectGone();
        EXPECT_TRUE(folderHas(folder, kept, ".backup")) << key;
    }
}

TEST_F(DeletionTest, ARemovedKeyIsGoneEverywhere) {
    spread("browserVisits");
    SqliteUserDefaults defaults{file, atOnce()};

    defaults.remove("browserSession");
    defaults.remove("browserVisits");

    expectGone();
}

TEST_F(DeletionTest, AnEmptiedDocumentIsGoneEverywhereAlsoIfNothingStoodThere) {
    spread("browserVisits");
    SqliteConnection{file, Access::readWrite}.execute("DELETE FROM defaults");
    SqliteUserDefaults defaults{file, atOnce()};

    defaults.setData("browserSession", "[]");
    defaults.setData("browserVisits", "[]");

    EXPECT_TRUE(waitUntil([&] { return !folderHas(folder, secret, ".damaged-1"); }));
    EXPECT_TRUE(waitUntil([&] { return !folderHas(folder, secret, "-wal"); }));
    SqliteConnection connection{file, Access::readOnly};
    EXPECT_EQ(connection.queryInteger("SELECT count(*) FROM setAside"), 0);
}

TEST_F(DeletionTest, ADeletionIsCarriedOutBeforeTheEnd) {
    spread("browserVisits");
    {
        auto options = atOnce();
        options.pace.afterStart = options.pace.afterDeletion = options.pace.afterChange =
            std::chrono::hours{1};
        SqliteUserDefaults defaults{file, options};
        defaults.setData("browserSession", listOf({kept}));
        defaults.setData("browserVisits", listOf({kept}));
    }

    EXPECT_FALSE(folderHas(folder, secret, ""));
    EXPECT_TRUE(folderHas(folder, kept, ".backup"));
    SqliteConnection connection{file, Access::readOnly};
    EXPECT_EQ(connection.queryInteger("SELECT count(*) FROM erasures"), 0);
}

TEST_F(DeletionTest, WhatWasDeletedWhileTheDiskRefusedWritesIsGoneAfterTheNextOne) {
    spread("browserVisits");
    SqliteUserDefaults defaults{file, atOnce()};
    defaults.setData("browserSession", listOf({kept}));
    {
        SqliteConnection other{file, Access::readWrite};
        other.execute("BEGIN IMMEDIATE");
        defaults.setData("browserVisits", listOf({kept}));
    }

    // Beside what is stored this looks like a full list that moved on.
    defaults.setData("browserVisits", listOf({kept, "https://next-page.example/"}));

    expectGone();
}

TEST_F(DeletionTest, WhatNobodyCouldReadIsNotSetAsideWhenItsDocumentIsEmptied) {
    SqliteUserDefaults defaults{file, atOnce()};
    defaults.setData("browserVisits", "[" + secret);
    defaults.setAside("browserVisits");

    defaults.setData("browserVisits", "[]");

    expectGone();
}

TEST_F(DeletionTest, AClosedTabIsGoneFromTheOlderCopyAndLeavesFilesSetAsideAlone) {
    spread("browserVisits");
    SqliteUserDefaults defaults{file, atOnce()};
    defaults.setData("browserSession", listOf({kept}));

    const auto copied = [&] {
        SqliteConnection copy{beside(".backup"), Access::readOnly};
        return copy.queryInteger(
                   "SELECT instr(value, CAST('secret' AS BLOB)) FROM defaults "
                   "WHERE key = 'browserSession'") == 0;
    };

    EXPECT_TRUE(waitUntil(copied));
    EXPECT_TRUE(fs::exists(beside(".damaged-1")));
}

TEST_F(DeletionTest, VisitsThatAreAddedNoteNothing) {
    auto options = atOnce();
    options.pace.afterStart = std::chrono::hours{1};
    SqliteUserDefaults defaults{file, options};
    std::vector<std::string> addresses;
    for (int number = 100; number < 150; ++number) {
        addresses.push_back("https://site" + std::to_string(number) + ".example/");
        if (addresses.size() > 20) addresses.erase(addresses.begin());
        std::string list = listOf(addresses);
        // As records have: an identifier of their own comes first.
        defaults.setData("browserVisits", list);
    }

    SqliteConnection connection{file, Access::readOnly};
    EXPECT_EQ(connection.queryInteger("SELECT count(*) FROM erasures"), 0);
}

TEST_F(DeletionTest, StrangersFilesAndThoseOfLaterVersionsStay) {
    makeStore();
    SqliteConnection{file, Access::readWrite}.execute("PRAGMA user_version=2");
    {
        const SqliteUserDefaults defaults{file};
    }
    fs::remove(file);
    SqliteConnection{file, Access::create}.execute("CREATE TABLE notes (text)");
    {
        const SqliteUserDefaults defaults{file};
    }
    fs::remove(file);
    fs::create_directories(file / "within");
    SqliteUserDefaults defaults{file, atOnce()};
    overwrite(beside(".damaged-4"), std::string(5000, '?'));

    defaults.remove("browserVisits");

    EXPECT_TRUE(waitUntil([&] { return !fs::exists(beside(".damaged-4")); }));
    EXPECT_TRUE(fs::exists(beside(".damaged-1")));
    EXPECT_TRUE(fs::exists(beside(".damaged-2")));
    EXPECT_TRUE(fs::exists(beside(".damaged-3") / "within"));
}

}  // namespace
}  // namespace orvu

#include "foundation/RandomText.h"
#include "import/BrowserDatabase.h"
#include "import/ImportWorld.h"

#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace orvu {
namespace {

/// Runs `isRight` as a person whom permissions bind.
bool holdsForAnOrdinaryUser(const std::function<bool()>& isRight) {
    const pid_t process = fork();
    if (process == 0) {
        constexpr uid_t nobody = 65'534;
        const bool isBound = geteuid() != 0 || setresuid(nobody, nobody, nobody) == 0;
        _exit(isBound && isRight() ? 0 : 1);
    }
    int status = 0;
    return waitpid(process, &status, 0) == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

class ImporterHostile : public ImportWorld {
protected:
    ImporterHostile() {
        // An ordinary user must come as far as the profile.
        std::filesystem::permissions(temporary.path(), std::filesystem::perms{0755});
    }
    [[nodiscard]] ImportResult read() const {
        return ImportWorld::read(BrowserKind::chromium, folder);
    }
    [[nodiscard]] bool isBlockedForAnOrdinaryUser() const {
        return holdsForAnOrdinaryUser([this] {
            const auto result = read();
            return result.blocked && result.bookmarks.empty() && result.visits.empty();
        });
    }
    static void forbid(const Path& path) {
        std::filesystem::permissions(path, std::filesystem::perms::none);
    }

    const Path folder = home / "profile";
    const Path history = folder / "History";
};

TEST_F(ImporterHostile, AHistoryThatTheSystemRefusesIsBlocked) {
    write(folder / "Bookmarks", R"({"roots":{}})");
    ChromiumHistory{history}.add("https://a.example/", "A", now);
    EXPECT_FALSE(isBlockedForAnOrdinaryUser());
    forbid(history);

    EXPECT_TRUE(isBlockedForAnOrdinaryUser());
}

TEST_F(ImporterHostile, BookmarksThatTheSystemRefusesAreBlocked) {
    write(folder / "Bookmarks", R"({"roots":{}})");
    forbid(folder / "Bookmarks");

    EXPECT_TRUE(isBlockedForAnOrdinaryUser());
    request.bookmarks = false;
    EXPECT_FALSE(isBlockedForAnOrdinaryUser());
}

TEST_F(ImporterHostile, AFolderThatTheSystemRefusesIsBlockedAndNotListed) {
    const Path profile = folders.configuration / "google-chrome/Default";
    ChromiumHistory{profile / "History"}.add("https://a.example/", "A", now);
    forbid(profile);

    EXPECT_TRUE(holdsForAnOrdinaryUser([&] {
        return found().empty() && ImportWorld::read(BrowserKind::chromium, profile).blocked;
    }));
    std::filesystem::permissions(profile, std::filesystem::perms{0700});
}

TEST_F(ImporterHostile, PipesAndFoldersInThePlaceOfFilesHoldNothingUp) {
    std::filesystem::create_directories(folder / "Bookmarks");
    ASSERT_EQ(mkfifo(history.c_str(), 0600), 0);

    const auto result = read();

    EXPECT_FALSE(result.blocked);
    EXPECT_TRUE(result.bookmarks.empty());
    EXPECT_TRUE(result.visits.empty());
}

TEST_F(ImporterHostile, APipeBesideADatabaseHoldsNothingUp) {
    ChromiumHistory{history}.add("https://a.example/", "A", now);
    for (const char* const name : {"History-wal", "History-shm", "History-journal"}) {
        ASSERT_EQ(mkfifo((folder / name).c_str(), 0600), 0);
    }

    EXPECT_EQ(lines(read().visits), Strings{"https://a.example/ A"});
}

TEST_F(ImporterHostile, ADeviceInThePlaceOfAFileIsNone) {
    std::filesystem::create_directories(folder);
    std::filesystem::create_symlink("/dev/zero", folder / "Bookmarks");
    std::filesystem::create_symlink("/dev/zero", history);

    const auto result = read();

    EXPECT_FALSE(result.blocked);
    EXPECT_TRUE(result.bookmarks.empty());
}

TEST_F(ImporterHostile, ABrokenPageGivesNoHistoryInsteadOfAHalf) {
    const Path profile = home / "firefox";
    const Path places = profile / "places.sqlite";
    {
        FirefoxPlaces database{places};
        database.run("BEGIN");
        for (std::int64_t id = 1; id < 3000; ++id) {
            database.addPlace(id, "https://a.example/" + std::to_string(id), "A",
                              firefoxTime(now) - id);
        }
        database.run("COMMIT");
    }
    EXPECT_EQ(ImportWorld::read(BrowserKind::firefox, profile).visits.size(), 2999U);
    std::string bytes = contentOf(places);
    const std::size_t half = bytes.size() / 2 / 4096 * 4096;
    bytes.replace(half, 8192, std::string(8192, '\xA5'));
    write(places, bytes);

    const auto result = ImportWorld::read(BrowserKind::firefox, profile);

    EXPECT_FALSE(result.blocked);
    EXPECT_EQ(result.visits.size(), 0U);
}

TEST_F(ImporterHostile, RandomDamageGivesAllRowsOrNone) {
    {
        ChromiumHistory database{history};
        database.run("BEGIN");
        for (int i = 0; i < 300; ++i) {
            database.add("https://a.example/" + std::to_string(i), std::string(50, 't'), now);
        }
        database.run("COMMIT");
    }
    const std::string whole = contentOf(history);
    RandomText random{9};
    int empty = 0;
    for (int round = 0; round < 300; ++round) {
        std::string bytes = whole;
        for (std::size_t left = 1 + random.below(40); left > 0; --left) {
            bytes[random.below(bytes.size())] = static_cast<char>(random.below(256));
        }
        if (random.below(4) == 0) bytes.resize(random.below(bytes.size()) + 1);
        write(history, bytes);

        const auto result = read();

        ASSERT_FALSE(result.blocked);
        ASSERT_LE(result.visits.size(), 5000U);
        empty += result.visits.empty() ? 1 : 0;
        for (const Visit& visit : result.visits) ASSERT_TRUE(isWebUrl(visit.url));
    }
    EXPECT_GT(empty, 0);
    EXPECT_LT(empty, 300);
    EXPECT_EQ(leftovers(), Strings{});
}

TEST_F(ImporterHostile, FilesOfRandomBytesGiveNothing) {
    RandomText random{21};
    for (int round = 0; round < 50; ++round) {
        const std::string bytes = "x" + random.bytes(10'000);
        for (const char* const name : {"Bookmarks", "History", "places.sqlite", "ephy-history.db",
                                       "bookmarks.gvdb", "History.db"}) {
            write(folder / name, bytes);
        }

        for (const auto kind : {BrowserKind::chromium, BrowserKind::firefox, BrowserKind::gnomeWeb,
                                BrowserKind::safari}) {
            const auto result = ImportWorld::read(kind, folder);
            ASSERT_TRUE(result.bookmarks.empty());
            ASSERT_TRUE(result.visits.empty());
        }
    }
}

TEST_F(ImporterHostile, ATableThatNeverEndsIsGivenUp) {
    BrowserDatabase{history}.run(
        "CREATE VIEW urls AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
        "SELECT 'https://a.example/' || i AS url, 'A' AS title, "
        "i AS last_visit_time, 0 AS hidden FROM n");
    request.patience = std::chrono::milliseconds{200};
    const auto start = std::chrono::steady_clock::now();

    const auto result = read();

    EXPECT_TRUE(result.visits.empty());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds{20});
    EXPECT_EQ(leftovers(), Strings{});
}

TEST_F(ImporterHostile, WithoutPatienceNothingIsRead) {
    write(folder / "Bookmarks", R"({"roots":{"other":{"type":"url","url":"https://a.example/"}}})");
    ChromiumHistory{history}.add("https://a.example/", "A", now);
    request.patience = std::chrono::milliseconds{0};

    const auto result = read();

    EXPECT_FALSE(result.blocked);
    EXPECT_TRUE(result.bookmarks.empty());
    EXPECT_TRUE(result.visits.empty());
}

TEST_F(ImporterHostile, OtherTablesThanExpectedGiveNothing) {
    BrowserDatabase{history}.run("CREATE TABLE urls(url TEXT)");

    EXPECT_TRUE(read().visits.empty());
}

TEST_F(ImporterHostile, FiftyMegabytesOfBookmarksAreRead) {
    const std::string one =
        R"({"type":"url","name":"A page with a name","url":"https://a.example/of/some/length"},)";
    const std::size_t count = 50'000'000 / one.size();
    write(folder / "Bookmarks",
          R"({"roots":{"other":{"children":[)" + repeated(one, count) + R"({}]}}})");

    EXPECT_EQ(read().bookmarks.size(), count);
}

}  // namespace
}  // namespace orvu

#include "import/BrowserDatabase.h"
#include "import/ImportWorld.h"

#include <sys/wait.h>

#include <atomic>
#include <csignal>
#include <map>
#include <thread>

namespace orvu {
namespace {

constexpr const char* query = "SELECT url, title, last_visit_time FROM urls ORDER BY id";

/// All that is to be seen of the files in a folder without reading them.
std::map<std::string, std::string> stateOf(const std::filesystem::path& folder) {
    std::map<std::string, std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator{folder}) {
        struct stat facts{};
        EXPECT_EQ(stat(entry.path().c_str(), &facts), 0);
        result[entry.path().filename()] =
            std::to_string(facts.st_mtim.tv_sec) + "." + std::to_string(facts.st_mtim.tv_nsec) +
            " " + std::to_string(facts.st_ino) + " " + std::to_string(facts.st_mode) + " " +
            contentOf(entry.path());
    }
    return result;
}

class RunningBrowser : public ImportWorld {
protected:
    [[nodiscard]] std::unique_ptr<DatabaseSnapshot> copied() const {
        return files.database(history, std::chrono::steady_clock::now() + std::chrono::minutes{1});
    }
    [[nodiscard]] static Strings titles(const DatabaseSnapshot* database) {
        Strings result;
        const auto take = [&](const DatabaseSnapshot::Row& row) {
            result.emplace_back(row.second);
            return true;
        };
        return database && database->query(query, take) ? result : Strings{};
    }
    [[nodiscard]] Strings titles() const { return titles(copied().get()); }

    void fillLog(ChromiumHistory& database) {
        database.run("PRAGMA wal_autocheckpoint = 0");
        database.run("PRAGMA journal_mode = WAL");
        for (int i = 0; i < 3; ++i)
            database.add("https://a.example/", "W" + std::to_string(i), now);
    }

    const Path folder = folders.configuration / "google-chrome/Default";
    const Path history = folder / "History";
};

TEST_F(RunningBrowser, RowsThatStandInTheLogAloneAreRead) {
    ChromiumHistory database{history};
    fillLog(database);
    ASSERT_GT(std::filesystem::file_size(folder / "History-wal"), 0U);

    EXPECT_EQ(titles(), (Strings{"W0", "W1", "W2"}));
}

TEST_F(RunningBrowser, ALogWithoutAnIndexIsRead) {
    ChromiumHistory database{history};
    database.run("PRAGMA locking_mode = EXCLUSIVE");
    fillLog(database);
    ASSERT_FALSE(std::filesystem::exists(folder / "History-shm"));

    EXPECT_EQ(titles(), (Strings{"W0", "W1", "W2"}));
}

TEST_F(RunningBrowser, ABrowserInTheMiddleOfWritingGivesWhatItHadWritten) {
    ChromiumHistory database{history};
    fillLog(database);
    database.run("BEGIN EXCLUSIVE");
    database.add("https://a.example/", "half", now);

    EXPECT_EQ(titles(), (Strings{"W0", "W1", "W2"}));
}

TEST_F(RunningBrowser, NoHalfTransactionIsReadWhereAJournalTellsOfIt) {
    ChromiumHistory database{history};
    database.run("PRAGMA cache_size = 2");
    database.run("BEGIN");
    for (int i = 0; i < 2000; ++i) {
        database.add("https://a.example/" + std::to_string(i), "whole" + std::string(100, ' '),
                     now);
    }
    database.run("COMMIT");
    database.run("BEGIN");
    database.run("UPDATE urls SET title = 'half', url = url || 'x'");
    ASSERT_GT(std::filesystem::file_size(folder / "History-journal"), 0U);
    ASSERT_NE(contentOf(history).find("half"), std::string::npos);

    const auto rows = titles();

    ASSERT_EQ(rows.size(), 2000U);
    EXPECT_TRUE(std::ranges::all_of(
        rows, [](const std::string& title) { return title.starts_with("whole"); }));
}

TEST_F(RunningBrowser, AJournalThatNamesAnotherFileIsLeftAloneAndSoIsThatFile) {
    ChromiumHistory database{history};
    database.add("https://a.example/", "A", now);
    const Path other = home / "letter";
    const std::string letter = "/nowhere/at-all" + std::string{"\0", 1};
    write(other, letter);
    // A journal with the head of one that is in use, and the name of the file at its end.
    std::string name = other.string();
    std::uint32_t sum = 0;
    for (const char c : name) sum += static_cast<std::uint32_t>(static_cast<signed char>(c));
    const auto number = [](std::uint32_t value) {
        std::string bytes;
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes.push_back(static_cast<char>(value >> shift));
        return bytes;
    };
    const std::string magic = "\xD9\xD5\x05\xF9\x20\xA1\x63\xD7";
    const std::string head = magic + number(0) + number(1) + number(2) + number(512) + number(4096);
    write(folder / "History-journal", head + std::string(512 - head.size(), '\0') + number(0) +
                                          name + number(static_cast<std::uint32_t>(name.size())) +
                                          number(sum) + magic);

    EXPECT_EQ(titles(), Strings{});

    EXPECT_EQ(contentOf(other), letter);
}

TEST_F(RunningBrowser, NothingOfABrowserIsChanged) {
    ChromiumHistory database{history};
    fillLog(database);
    write(folder / "Bookmarks", R"({"roots":{}})");
    const auto before = stateOf(folder);

    const auto result = read(BrowserKind::chromium, folder);

    EXPECT_EQ(result.visits.size(), 3U);
    EXPECT_EQ(stateOf(folder), before);
    EXPECT_EQ(before.size(), 4U);
}

TEST_F(RunningBrowser, AHistoryInAFolderThatCantBeWrittenIsRead) {
    {
        ChromiumHistory database{history};
        database.add("https://a.example/", "A", now);
        database.run("PRAGMA journal_mode = WAL");
    }
    std::filesystem::permissions(history, std::filesystem::perms::owner_read);
    std::filesystem::permissions(folder, std::filesystem::perms{0500});

    EXPECT_EQ(titles(), Strings{"A"});
    std::filesystem::permissions(folder, std::filesystem::perms{0700});
}

TEST_F(RunningBrowser, CopiesLieInAFolderOfTheirOwnThatOnlyItsOwnerMayEnterAndGo) {
    ChromiumHistory database{history};
    fillLog(database);
    {
        const auto copy = copied();
        const auto names = leftovers();
        ASSERT_EQ(names.size(), 1U);
        EXPECT_TRUE(names[0].starts_with("OrvuImport-"));
        struct stat facts{};
        ASSERT_EQ(stat((caches / names[0]).c_str(), &facts), 0);
        EXPECT_EQ(facts.st_mode & 07777, 0700U);
        for (const auto& entry : std::filesystem::directory_iterator{caches / names[0]}) {
            EXPECT_EQ(entry.status().permissions(), std::filesystem::perms{0600}) << entry;
        }
        ASSERT_EQ(stat(caches.c_str(), &facts), 0);
        EXPECT_EQ(facts.st_mode & 07777, 0700U);
    }

    EXPECT_EQ(leftovers(), Strings{});
}

TEST_F(RunningBrowser, WhereNoCopyCanBeMadeThereAreNoRows) {
    ChromiumHistory{history}.add("https://a.example/", "A", now);
    write(caches.parent_path(), "a file in the place of the folder");

    EXPECT_EQ(titles(), Strings{});
    EXPECT_FALSE(read(BrowserKind::chromium, folder).blocked);
}

TEST_F(RunningBrowser, ACopyOfAProcessThatWasKilledIsRemovedLaterAndOneInUseIsNot) {
    ChromiumHistory{history}.add("https://a.example/", "A", now);
    const pid_t process = fork();
    if (process == 0) {
        const auto copy = copied();
        std::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(process, &status, 0), process);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_EQ(leftovers().size(), 1U);
    write(caches / "OrvuImport-notes/kept", "x");
    const Path link = caches / "OrvuImport-0E4C2C6A-3F0E-4D3B-8C52-7A1F2B3C4D5E";
    std::filesystem::create_directory_symlink(folder, link);

    const auto copy = copied();
    files.removeLeftovers();

    EXPECT_EQ(leftovers().size(), 3U);
    EXPECT_EQ(contentOf(caches / "OrvuImport-notes/kept"), "x");
    EXPECT_TRUE(std::filesystem::exists(history));
    EXPECT_EQ(titles(copy.get()), Strings{"A"});
}

TEST_F(RunningBrowser, ReadsAtOneTimeDoNotDisturbEachOther) {
    ChromiumHistory database{history};
    fillLog(database);
    std::atomic<int> whole = 0;
    {
        std::vector<std::jthread> readers;
        for (int i = 0; i < 4; ++i) {
            readers.emplace_back([&] {
                for (int round = 0; round < 10; ++round) {
                    if (read(BrowserKind::chromium, folder).visits.size() == 3) ++whole;
                }
            });
        }
    }

    EXPECT_EQ(whole, 40);
    EXPECT_EQ(leftovers(), Strings{});
}

TEST_F(RunningBrowser, RemovingLeftoversWhereThereIsNoFolderDoesNothing) {
    files.removeLeftovers();

    EXPECT_FALSE(std::filesystem::exists(caches));
}

}  // namespace
}  // namespace orvu

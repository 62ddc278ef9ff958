#include "platform/linux/defaults/SqliteUserDefaults.h"

#include "platform/DefaultsWorld.h"
#include "platform/TemporaryFolder.h"
#include "platform/linux/defaults/Sqlite.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace orvu {
namespace {

/// Runs `body` in a process of its own, which fails if an expectation in it does.
pid_t startProcess(const std::function<void()>& body) {
    const pid_t process = fork();
    if (process != 0) return process;
    body();
    _exit(testing::Test::HasFailure() ? 1 : 0);
}

bool endsWell(pid_t process) {
    int status = 0;
    return waitpid(process, &status, 0) == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// Permissions mean nothing to the superuser.
void becomeOrdinaryUser() {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0) {
        ASSERT_EQ(setresuid(nobody, nobody, nobody), 0);
    }
}

/// No file can grow beyond `bytes`, as if the disk were full.
void limitFiles(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    limit.rlim_cur = bytes;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

/// A value that tells its number and, by its form, whether it is whole.
std::string numberedValue(std::uint64_t number) {
    const std::size_t size = 1 + number * 7919 % 150'000;
    return std::to_string(number) + ":" + std::string(size, static_cast<char>('a' + number % 26));
}

class SqliteUserDefaultsProcessTest : public testing::Test {
protected:
    static constexpr std::array keys{"session", "visits", "bookmarks"};
    /// The numbers go round the keys.
    static std::string_view keyOf(std::uint64_t number) { return keys.at(number % keys.size()); }

    /// The number of the whole value that stands under a key; 0 if there is none.
    static std::uint64_t storedNumber(const SqliteUserDefaults& defaults, std::string_view key) {
        const auto value = defaults.data(key);
        if (!value) return 0;
        const std::uint64_t number = std::strtoull(value->c_str(), nullptr, 10);
        EXPECT_TRUE(*value == numberedValue(number)) << key << " is not whole";
        return number;
    }

    /// Writes values from `first` on, says the number of each to the pipe, and never ends.
    void writeForEver(std::uint64_t first, int pipe, const StorageOptions& options) const {
        SqliteUserDefaults defaults{file, options};
        for (std::uint64_t number = first;; ++number) {
            defaults.setData(keyOf(number), numberedValue(number));
            if (write(pipe, &number, sizeof number) != sizeof number) return;
        }
    }

    /// Kills a process that writes values from `first` on, some time after it has reported
    /// `reports` of them. Gives the number of the last one reported.
    [[nodiscard]] std::uint64_t killWriter(std::uint64_t first, int reports, std::uint32_t spins,
                                           const StorageOptions& options) const {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        const pid_t writer = startProcess([&] {
            close(ends[0]);
            writeForEver(first, ends[1], options);
        });
        close(ends[1]);
        std::uint64_t last = first - 1;
        std::uint64_t number = 0;
        while (reports-- > 0 && read(ends[0], &number, sizeof number) == sizeof number) {
            last = number;
        }
        // A while that is too short for a timer, and is different in each round.
        for (std::uint32_t spin = 0; spin < spins; ++spin)
            std::atomic_signal_fence(std::memory_order_seq_cst);
        kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
        while (read(ends[0], &number, sizeof number) == sizeof number) last = number;
        close(ends[0]);
        return last;
    }

    /// Whether each key has the last value that was reported under it, or the one that was just
    /// being written.
    [[nodiscard]] bool hasAllUpTo(std::uint64_t last) const {
        const SqliteUserDefaults defaults{file};
        bool hasAll = true;
        for (const auto* const key : keys) {
            std::uint64_t written = last;
            while (written > 0 && keyOf(written) != key) --written;
            const std::uint64_t found = storedNumber(defaults, key);
            const bool wasBeingWritten = found == last + 1 && keyOf(found) == key;
            EXPECT_TRUE(found == written || wasBeingWritten)
                << key << ": " << found << " instead of " << written;
            hasAll = hasAll && (found == written || wasBeingWritten);
        }
        return hasAll;
    }
    /// Kills writers at random moments. Gives after how many of the kills nothing was lost.
    [[nodiscard]] int killsSurvived(int rounds, const StorageOptions& options) const {
        std::minstd_rand random{20251121};
        std::uint64_t next = 1;
        int survived = 0;
        for (int round = 0; round < rounds; ++round) {
            const auto reports = static_cast<int>(random() % 12);
            const auto spins = static_cast<std::uint32_t>(random() % 2'000'000);
            const std::uint64_t last = killWriter(next, reports, spins, options);
            survived += hasAllUpTo(last) ? 1 : 0;
            next = last + 2;  // the one behind the last may stand already
            SqliteUserDefaults settled{file};
            for (const std::uint64_t end = next + keys.size(); next < end; ++next) {
                settled.setData(keyOf(next), numberedValue(next));
                EXPECT_EQ(storedNumber(settled, keyOf(next)), next) << "round " << round;
            }
        }
        return survived;
    }

    const TemporaryFolder temporary;
    const fs::path folder = temporary.path() / "Orvu";
    const fs::path file = folder / "UserDefaults.sqlite";
};

TEST_F(SqliteUserDefaultsProcessTest, AKilledProcessLosesNothingThatItHasWritten) {
    EXPECT_EQ(killsSurvived(50, {}), 50);
    EXPECT_FALSE(fs::exists(fs::path{file} += ".damaged-1"));
}

TEST_F(SqliteUserDefaultsProcessTest, AProcessKilledWhileItCopiesAndErasesLosesNothing) {
    EXPECT_EQ(killsSurvived(50, backingUp()), 50);
    EXPECT_FALSE(fs::exists(fs::path{file} += ".damaged-1"));
}

TEST_F(SqliteUserDefaultsProcessTest, WhatAFullDiskRefusesCountsInMemoryUntilThereIsSpaceAgain) {
    const pid_t process = startProcess([&] {
        SqliteUserDefaults defaults{file};
        defaults.setData("visits", "previous");
        defaults.setString("name", "value");
        limitFiles(500'000);

        defaults.setData("visits", std::string(1'000'000, 'n'));
        defaults.setData("fresh", std::string(1'000'000, 'n'));
        defaults.remove("name");

        EXPECT_THAT(defaults.data("visits"), Optional(std::string(1'000'000, 'n')));
        EXPECT_THAT(defaults.data("fresh"), Optional(std::string(1'000'000, 'n')));
        EXPECT_FALSE(defaults.hasObject("name"));
        EXPECT_THAT(SqliteUserDefaults{file}.data("visits"), Optional("previous"s));

        limitFiles(RLIM_INFINITY);
        defaults.setInteger("launchCount", 3);
        _exit(testing::Test::HasFailure() ? 1 : 0);  // nothing is saved at the end
    });

    EXPECT_TRUE(endsWell(process));
    const SqliteUserDefaults defaults{file};
    EXPECT_THAT(defaults.data("visits"), Optional(std::string(1'000'000, 'n')));
    EXPECT_THAT(defaults.data("fresh"), Optional(std::string(1'000'000, 'n')));
    EXPECT_FALSE(defaults.hasObject("name"));
    EXPECT_THAT(defaults.integer("launchCount"), Optional(3));
}

// The shelf and the session are of one operation: half of it would lose the tab.
TEST_F(SqliteUserDefaultsProcessTest, ATabParkedOnAFullDiskIsOnTheShelfAfterTheNextWriteWithSpace) {
    const pid_t process = startProcess([&] {
        SqliteUserDefaults defaults{file};
        defaults.setData("browserSession", "[one, two]");
        limitFiles(300'000);
        // Fills what the limit leaves.
        for (int number = 0; number < 10; ++number) {
            defaults.setData("fill" + std::to_string(number), std::string(100'000, 'f'));
        }
        {
            const UserDefaults::Batch park{defaults};
            defaults.setData("browserShelf", "[two]");
            defaults.setData("browserSession", "[one]");
        }
        const SqliteUserDefaults stored{file};
        EXPECT_THAT(stored.data("browserSession"), Optional("[one, two]"s));
        EXPECT_FALSE(stored.hasObject("browserShelf"));

        limitFiles(RLIM_INFINITY);
        defaults.setData("browserSession", "[one, three]");
        _exit(testing::Test::HasFailure() ? 1 : 0);
    });

    EXPECT_TRUE(endsWell(process));
    const SqliteUserDefaults defaults{file};
    EXPECT_THAT(defaults.data("browserShelf"), Optional("[two]"s));
    EXPECT_THAT(defaults.data("browserSession"), Optional("[one, three]"s));
}

TEST_F(SqliteUserDefaultsProcessTest, WhatWasDeletedBeforeAKillIsGoneRightAfterTheNextStart) {
    const std::string secret = "https://secret-page.example/";
    {
        SqliteUserDefaults defaults{file, backingUp()};
        defaults.setData("browserVisits", listOf({secret, "https://kept.example/"}));
        defaults.setData("browserSession", listOf({secret}));
        waitUntil([&] { return folderHas(folder, secret, ".backup"); });
    }
    const pid_t process = startProcess([&] {
        auto options = atOnce();
        options.pace.afterStart = options.pace.afterDeletion = std::chrono::hours{1};
        SqliteUserDefaults defaults{file, options};
        defaults.setData("browserVisits", listOf({"https://kept.example/"}));
        defaults.setData("browserSession", "[]");
        raise(SIGKILL);
    });
    waitpid(process, nullptr, 0);
    ASSERT_TRUE(folderHas(folder, secret, ""));

    const SqliteUserDefaults defaults{file, atOnce()};

    EXPECT_TRUE(waitUntil([&] { return !folderHas(folder, secret, ""); }));
    EXPECT_TRUE(folderHas(folder, "https://kept.example/", ".backup"));
}

TEST_F(SqliteUserDefaultsProcessTest, WithoutSpaceToOpenValuesLiveInMemory) {
    SqliteUserDefaults{file}.setString("name", "stored");
    const pid_t process = startProcess([&] {
        limitFiles(0);
        SqliteUserDefaults defaults{file};

        EXPECT_THAT(defaults.string("name"), Optional("stored"s));
        defaults.setString("name", "for this run");
        EXPECT_THAT(defaults.string("name"), Optional("for this run"s));
    });

    EXPECT_TRUE(endsWell(process));
    EXPECT_THAT(SqliteUserDefaults{file}.string("name"), Optional("stored"s));
    EXPECT_FALSE(fs::exists(fs::path{file} += ".damaged-1"));
}

TEST_F(SqliteUserDefaultsProcessTest, InAReadOnlyFolderValuesLiveInMemory) {
    SqliteUserDefaults{file}.setString("name", "stored");
    fs::permissions(temporary.path(), fs::perms{0755});
    fs::permissions(file, fs::perms{0644});
    fs::permissions(folder, fs::perms{0555});
    const pid_t process = startProcess([&] {
        becomeOrdinaryUser();
        SqliteUserDefaults defaults{file};

        EXPECT_THAT(defaults.string("name"), Optional("stored"s));
        defaults.setString("name", "for this run");
        EXPECT_THAT(defaults.string("name"), Optional("for this run"s));
    });

    EXPECT_TRUE(endsWell(process));
    fs::permissions(folder, fs::perms{0700});
    EXPECT_THAT(SqliteUserDefaults{file}.string("name"), Optional("stored"s));
}

TEST_F(SqliteUserDefaultsProcessTest, AFileThatItsOwnerMayNotReadIsMadeReadableAgain) {
    fs::permissions(temporary.path(), fs::perms{0777});
    const pid_t process = startProcess([&] {
        becomeOrdinaryUser();
        SqliteUserDefaults{file}.setString("name", "stored");
        fs::permissions(file, fs::perms{0000});

        const SqliteUserDefaults defaults{file};

        EXPECT_THAT(defaults.string("name"), Optional("stored"s));
        EXPECT_FALSE(fs::exists(fs::path{file} += ".damaged-1"));
    });

    EXPECT_TRUE(endsWell(process));
}

TEST_F(SqliteUserDefaultsProcessTest, TwoProcessesOnOneFileDoNotDamageIt) {
    const auto writer = [&](std::uint64_t first) {
        return startProcess([this, first] {
            SqliteUserDefaults defaults{file};
            for (std::uint64_t number = first; number < first + 200; ++number) {
                defaults.setData(keyOf(number), numberedValue(number));
                for (const auto* const key : keys) (void)storedNumber(defaults, key);
            }
        });
    };

    const pid_t one = writer(1);
    const pid_t other = writer(100'000);

    EXPECT_TRUE(endsWell(one));
    EXPECT_TRUE(endsWell(other));
    const SqliteUserDefaults defaults{file};
    for (const auto* const key : keys) EXPECT_GT(storedNumber(defaults, key), 0U);
    EXPECT_FALSE(fs::exists(fs::path{file} += ".damaged-1"));
    SqliteConnection connection{file, SqliteConnection::Access::readWrite};
    EXPECT_THAT(
        connection.queryInteger("SELECT integrity_check = 'ok' FROM pragma_integrity_check"),
        Optional(1));
}

TEST_F(SqliteUserDefaultsProcessTest, ProcessesThatMeetADamagedFileTogetherShareTheNewOne) {
    fs::create_directory(folder);
    std::ofstream{file} << std::string(100'000, '?');
    constexpr std::array names{"first", "second", "third", "fourth"};
    std::vector<pid_t> processes;

    for (const auto* const name : names) {
        processes.push_back(startProcess([&] { SqliteUserDefaults{file}.setInteger(name, 1); }));
    }

    EXPECT_TRUE(std::ranges::all_of(processes, endsWell));
    const SqliteUserDefaults defaults{file};
    for (const auto* const name : names) EXPECT_THAT(defaults.integer(name), Optional(1)) << name;
    EXPECT_TRUE(fs::exists(fs::path{file} += ".damaged-1"));
    EXPECT_FALSE(fs::exists(fs::path{file} += ".damaged-2"));
}

}  // namespace
}  // namespace orvu

#include "platform/linux/update/CopySwap.h"
#include "platform/linux/update/SwapLauncher.h"
#include "UpdateLab.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <random>

namespace orvu {
namespace {

using Path = std::filesystem::path;

/// The starter as a process of its own, with copies whose programs tell their build.
class StarterTest : public testing::Test {
protected:
    static Path starter() {
        return std::filesystem::read_symlink("/proc/self/exe").parent_path() /
               "orvu-starter-for-tests";
    }
    /// Starts it; what it writes goes to the descriptor.
    static pid_t run(std::vector<std::string> arguments, int output) {
        arguments.insert(arguments.begin(), starter().native());
        std::vector<char*> words;
        for (auto& each : arguments) words.push_back(each.data());
        words.push_back(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            dup2(output, STDOUT_FILENO);
            dup2(output, STDERR_FILENO);
            execv(words[0], words.data());
            _exit(127);
        }
        return child;
    }
    /// What it says until its end, and how it ends.
    static std::pair<std::string, int> outcome(const std::vector<std::string>& arguments) {
        std::array<int, 2> pipe{};
        EXPECT_EQ(::pipe(pipe.data()), 0);
        const pid_t child = run(arguments, pipe[1]);
        close(pipe[1]);
        std::string said;
        std::array<char, 256> piece{};
        for (ssize_t count = 1; count > 0;) {
            count = read(pipe[0], piece.data(), piece.size());
            if (count > 0) said.append(piece.data(), static_cast<std::size_t>(count));
        }
        close(pipe[0]);
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return {said, WEXITSTATUS(status)};
    }
    std::pair<std::string, int> start() {
        return outcome({"--start", lab_.folder().native(), "https://a.example/ b"});
    }
    /// A process that lives until it is told to end.
    static pid_t sleeper() {
        const pid_t child = fork();
        if (child == 0) {
            pause();
            _exit(0);
        }
        return child;
    }
    static void end(pid_t process) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    static std::pair<std::string, int> started(int build) {
        return {"build " + std::to_string(build) + " https://a.example/ b\n", 0};
    }

    UpdateLab lab_;
};

TEST_F(StarterTest, KnowsTheKeyOfTheTests) {
    lab_.placeStaged(12);

    EXPECT_EQ(outcome({"--swap", "pid:2147483647", "only", lab_.folder().native()}).second, 0);
}

TEST_F(StarterTest, StartsTheApplicationWithItsArguments) { EXPECT_EQ(start(), started(10)); }

TEST_F(StarterTest, TheNewCopyIsStartedTwiceAndThenTheOldOne) {
    lab_.placeStaged(12);
    outcome({"--swap", "pid:2147483647", "only", lab_.folder().native()});

    EXPECT_EQ(start(), started(12));
    EXPECT_EQ(start(), started(12));
    EXPECT_EQ(start(), started(10));
    EXPECT_EQ(start(), started(10));
}

TEST_F(StarterTest, StartsBesideARunningCopyDontCount) {
    lab_.placeStaged(12);
    const std::string keepsRunning = "#!/bin/sh\necho running\nread line < \"$1\"\n";
    auto update = UpdateLab::update(12);
    update.member("bin/orvu").content = keepsRunning;
    update.listed("bin/orvu").size = keepsRunning.size();
    update.listed("bin/orvu").hash = UpdateLab::hash(keepsRunning);
    UpdateLab::seal(update);
    writeLabFile(lab_.folder() / ".Orvu-update.app/bin/orvu", keepsRunning, 0755);
    writeLabFile(lab_.folder() / ".Orvu-update.signed", update.message, 0600);
    outcome({"--swap", "pid:2147483647", "only", lab_.folder().native()});
    const Path held = lab_.folder() / "held";
    ASSERT_EQ(mkfifo(held.c_str(), 0600), 0);
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const pid_t first = run({"--start", lab_.folder().native(), held.native()}, pipe[1]);
    char byte = 0;
    ASSERT_EQ(read(pipe[0], &byte, 1), 1);  // it runs

    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(outcome({"--start", lab_.folder().native(), "/dev/null"}).first, "running\n");
    }

    end(first);
    close(pipe[0]);
    close(pipe[1]);
}

TEST_F(StarterTest, AfterTheSwapTheNewCopyStartsWhereThatWasAskedFor) {
    lab_.placeStaged(12);

    EXPECT_EQ(outcome({"--swap", "pid:2147483647", "again", lab_.folder().native()}),
              (std::pair<std::string, int>{"build 12\n", 0}));
}

TEST_F(StarterTest, AfterASwapThatFailedTheOldCopyStarts) {
    EXPECT_EQ(outcome({"--swap", "pid:2147483647", "again", lab_.folder().native()}),
              (std::pair<std::string, int>{"build 10\n", 0}));
}

TEST_F(StarterTest, NothingIsSwappedWhileTheOldProcessLives) {
    lab_.placeStaged(12);
    const pid_t old = sleeper();
    const pid_t swap = run({"--swap", "pid:" + std::to_string(old), "only", lab_.folder().native()},
                           STDOUT_FILENO);
    EXPECT_EQ(start(), started(10));
    EXPECT_EQ(waitpid(swap, nullptr, WNOHANG), 0);
    EXPECT_EQ(UpdateLab::snapshot(lab_.application()), UpdateLab::wholeCopy(10));

    end(old);
    int status = 0;
    ASSERT_EQ(waitpid(swap, &status, 0), swap);

    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(UpdateLab::snapshot(lab_.application()), UpdateLab::wholeCopy(12));
}

/// The launcher waits by a handle of its own process, which is another one here.
TEST_F(StarterTest, WhatIsLaunchedSwapsAfterTheEndOfItsProcess) {
    lab_.placeStaged(12);
    std::array<int, 2> alive{};
    ASSERT_EQ(::pipe(alive.data()), 0);
    const pid_t old = fork();
    if (old == 0) {
        const auto failure = SwapLauncher::launch(starter(), lab_.folder(), AfterSwap::nothing);
        _exit(failure ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(old, &status, 0), old);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    // The swap process inherited the pipe: its end is the end of the pipe.
    close(alive[1]);
    char byte = 0;
    EXPECT_EQ(read(alive[0], &byte, 1), 0);
    close(alive[0]);

    EXPECT_EQ(UpdateLab::snapshot(lab_.application()), UpdateLab::wholeCopy(12));
}

TEST_F(StarterTest, AStarterThatIsNotThereIsToldInWords) {
    EXPECT_EQ(SwapLauncher::launch(lab_.folder() / "none", lab_.folder(), AfterSwap::nothing),
              "No such file or directory");
}

TEST_F(StarterTest, OtherArgumentsAreExplained) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"--start"}, {"--swap", "pid:1", "only"}, {"--other", "a"}}) {
        const auto [said, status] = outcome(arguments);

        EXPECT_EQ(status, 2);
        EXPECT_TRUE(said.starts_with("orvu-starter --start FOLDER")) << said;
    }
}

TEST_F(StarterTest, AProcessThatIsNoneSwapsNothing) {
    lab_.placeStaged(12);
    for (const char* const process : {"", "1", "pid:", "pid:-1", "pid:0", "fd:x", "handle:3"}) {
        EXPECT_EQ(outcome({"--swap", process, "only", lab_.folder().native()}).second, 2);
    }
    EXPECT_EQ(UpdateLab::snapshot(lab_.application()), UpdateLab::wholeCopy(10));
}

TEST_F(StarterTest, TheProcessKilledAtRandomMomentsLeavesACopyThatStarts) {
    std::mt19937 random{20'261'124};
    std::uniform_int_distribution<useconds_t> delay{500, 3000};
    int killed = 0;
    for (int tries = 0; killed < 60 && tries < 600; ++tries) {
        const UpdateLab lab;
        lab.placeStaged(12);
        const pid_t child =
            run({"--swap", "pid:2147483647", "only", lab.folder().native()}, STDOUT_FILENO);
        usleep(delay(random));
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        killed += WIFSIGNALED(status) ? 1 : 0;

        const auto said = outcome({"--start", lab.folder().native()}).first;

        const int build = said == "build 12\n" ? 12 : 10;
        EXPECT_EQ(said, "build " + std::to_string(build) + "\n");
        EXPECT_EQ(UpdateLab::snapshot(lab.application()), UpdateLab::wholeCopy(build));
    }
    EXPECT_EQ(killed, 60);
}

/// The lock that a start takes, as the program that it becomes finds it.
class RunLockTest : public testing::Test {
protected:
    ~RunLockTest() override { unsetenv(UpdateNames::runVariable); }

    UpdateLab lab_;
};

TEST_F(RunLockTest, WhatTheProgramStartsDoesntHoldIt) {
    UpdateFolder folder{lab_.folder()};
    ASSERT_TRUE(folder.claimRun());
    const int lock = std::atoi(std::getenv(UpdateNames::runVariable));
    EXPECT_EQ(fcntl(lock, F_GETFD) & FD_CLOEXEC, 0);

    UpdateFolder::keepRunLock();

    EXPECT_EQ(fcntl(lock, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    EXPECT_EQ(std::getenv(UpdateNames::runVariable), nullptr);
    UpdateFolder other{lab_.folder()};
    EXPECT_FALSE(other.claimRun());
}

TEST_F(RunLockTest, RubbishInItsVariableTouchesNothing) {
    for (const char* const text :
         {"", "-1", "0", "1", "2", "x", "99999999999999999999", "2147483648", "2000000000"}) {
        setenv(UpdateNames::runVariable, text, 1);

        UpdateFolder::keepRunLock();

        EXPECT_EQ(std::getenv(UpdateNames::runVariable), nullptr);
        EXPECT_EQ(fcntl(STDERR_FILENO, F_GETFD) & FD_CLOEXEC, 0);
    }
}

}  // namespace
}  // namespace orvu

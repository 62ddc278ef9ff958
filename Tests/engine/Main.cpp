#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstring>

namespace {

/// What runs, for the words of a crash.
std::array<char, 200> running{};

/// Keeps the name of the test that runs.
class RunningTest : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& test) override {
        g_snprintf(running.data(), running.size(), "\nCrashed in %s.%s\n", test.test_suite_name(),
                   test.name());
    }
    void OnTestEnd(const testing::TestInfo& /*test*/) override { running.front() = '\0'; }
};

/// Tells the test that crashed: a run that tells only what failed would end without a word.
void tellCrash(int signal) {
    [[maybe_unused]] const auto written =
        write(STDERR_FILENO, running.data(), strnlen(running.data(), running.size()));
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new RunningTest);
    for (const int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGILL, SIGFPE, SIGTRAP, SIGTERM}) {
        std::signal(signal, tellCrash);
    }
    if (!gtk_init_check()) return 1;
    return RUN_ALL_TESTS();
}

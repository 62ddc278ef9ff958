#include "platform/linux/update/CopySwap.h"
#include "UpdateLab.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <random>

namespace orvu {
namespace {

using Action = std::function<void(CopySwap&)>;

struct Road {
    const char* name;
    bool canExchange;
    bool takesBack;  ///< what is killed is the way back, and not the way in
};

void PrintTo(const Road& road, std::ostream* stream) { *stream << road.name; }

/// Kills what changes the copies, and looks at what the next start makes of it.
class SwapKillTest : public testing::TestWithParam<Road> {
protected:
    /// Prepares the folder for what is killed.
    void arrange(const UpdateLab& lab) const {
        lab.placeStaged(12);
        if (!GetParam().takesBack) return;
        UpdateFolder folder{lab.folder(), {.canExchange = GetParam().canExchange}};
        CopySwap swap{folder, key_};
        swap.swap();
        swap.prepareStart();
        swap.prepareStart();
    }
    void act(const UpdateLab& lab, const std::function<void()>& step) const {
        UpdateFolder folder{lab.folder(), {.canExchange = GetParam().canExchange, .step = step}};
        CopySwap swap{folder, key_};
        if (GetParam().takesBack) {
            swap.prepareStart();
        } else {
            swap.swap();
        }
    }
    /// The next start, which finds a whole copy. Tells of which build.
    int nextStart(const UpdateLab& lab) const {
        UpdateFolder folder{lab.folder(), {.canExchange = GetParam().canExchange}};
        EXPECT_TRUE((CopySwap{folder, key_}.prepareStart()));
        const auto found = UpdateLab::snapshot(lab.application());
        EXPECT_TRUE(found == old_ || found == new_) << found << lab.snapshot();
        return found == new_ ? 12 : 10;
    }
    /// A whole copy starts now, and the same one once more. Tells of which build.
    int expectStarts(const UpdateLab& lab) const {
        const int first = nextStart(lab);
        UpdateFolder folder{lab.folder(), {.canExchange = GetParam().canExchange}};
        const auto record = CopySwap{folder, key_}.record();
        if (GetParam().takesBack) {
            EXPECT_EQ(first, 10);
            EXPECT_EQ(record.takenBack, 12);
            EXPECT_EQ(record.phase, SwapRecord::Phase::none);
        } else {
            EXPECT_EQ(record.phase == SwapRecord::Phase::trial, first == 12) << lab.snapshot();
            expectOtherCopy(lab, first);
        }
        EXPECT_EQ(nextStart(lab), first);
        return first;
    }
    /// The copy that isn't in use is whole too, under its name.
    void expectOtherCopy(const UpdateLab& lab, int build) const {
        const auto other = lab.folder() / (build == 12 ? ".Orvu-previous.app" : ".Orvu-update.app");
        ASSERT_TRUE(exists(other)) << lab.snapshot();
        EXPECT_EQ(UpdateLab::snapshot(other), build == 12 ? old_ : new_);
        EXPECT_FALSE(build == 12 && exists(lab.folder() / ".Orvu-update.app"));
    }
    static void tell(int pipe) {
        const char byte = 'b';
        if (write(pipe, &byte, 1) != 1) _exit(1);
    }
    static void waitForByte(int pipe) {
        char byte = 0;
        EXPECT_EQ(read(pipe, &byte, 1), 1);
    }
    static pid_t inChild(const std::function<void()>& work) {
        const pid_t child = fork();
        if (child == 0) {
            work();
            _exit(0);
        }
        return child;
    }

    const std::optional<UpdateKey> key_ = UpdateKey::parse(UpdateLab::publicKey());
    const std::string old_ = UpdateLab::wholeCopy(10);
    const std::string new_ = UpdateLab::wholeCopy(12);
};

TEST_P(SwapKillTest, KilledBeforeEachStepACopyStarts) {
    int steps = 0;
    for (bool isDone = false; !isDone; ++steps) {
        const UpdateLab lab;
        arrange(lab);
        const pid_t child = inChild([&] {
            act(lab, [left = steps]() mutable {
                if (left-- == 0) raise(SIGKILL);
            });
        });
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        isDone = WIFEXITED(status);

        expectStarts(lab);
    }
    EXPECT_GE(steps, 6);
    RecordProperty("steps", steps);
}

TEST_P(SwapKillTest, KilledTwiceAtAnyTwoStepsACopyStarts) {
    for (int first = 0; first < 8; ++first) {
        for (int second = 0; second < 6; ++second) {
            const UpdateLab lab;
            arrange(lab);
            for (const int steps : {first, second}) {
                const pid_t child = inChild([&] {
                    act(lab, [left = steps]() mutable {
                        if (left-- == 0) raise(SIGKILL);
                    });
                });
                waitpid(child, nullptr, 0);
            }

            expectStarts(lab);
        }
    }
}

/// Killed by another process at random moments: every other time at any moment, else after the first
/// step has begun. Only what was killed before its end counts.
TEST_P(SwapKillTest, KilledAtRandomMomentsACopyStarts) {
    constexpr int kills = 125;  // on each of four roads
    std::mt19937 random{20'261'123};
    int killed = 0;
    int changed = 0;
    for (int tries = 0; killed < kills && tries < 10 * kills; ++tries) {
        const UpdateLab lab;
        arrange(lab);
        const auto before = lab.snapshot();
        std::array<int, 2> begun{};
        ASSERT_EQ(pipe(begun.data()), 0);
        const pid_t child = inChild([&] { act(lab, [&] { tell(begun[1]); }); });
        close(begun[1]);
        if (tries % 2 == 0) waitForByte(begun[0]);
        usleep(std::uniform_int_distribution<useconds_t>{0, tries % 2 == 0 ? 400U : 1500U}(random));
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        close(begun[0]);
        killed += WIFSIGNALED(status) ? 1 : 0;
        changed += WIFSIGNALED(status) && lab.snapshot() != before ? 1 : 0;

        expectStarts(lab);
    }
    EXPECT_EQ(killed, kills);
    EXPECT_GT(changed, kills / 10);
    RecordProperty("changed", changed);
}

INSTANTIATE_TEST_SUITE_P(Roads, SwapKillTest,
                         testing::Values(Road{"ExchangeIn", true, false},
                                         Road{"RenamesIn", false, false},
                                         Road{"ExchangeBack", true, true},
                                         Road{"RenamesBack", false, true}),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace orvu

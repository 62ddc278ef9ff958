#include "platform/linux/model/ModelProcess.h"

#include "engine/EngineWorld.h"

#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <fstream>

namespace orvu {
namespace {

using namespace std::chrono_literals;
using Kind = EngineAnswer::Kind;

const auto faultyModel = ConfinedProcess::installedProgram("orvu-faulty-model");

/// Processes that don't do what they should.
class ModelProcessTest : public EngineTest {
protected:
    ModelProcessTest() { std::ofstream{model} << "a model"; }

    [[nodiscard]] EngineOptions options() const {
        return {.program = faultyModel,
                .folders = {},
                .threads = 1,
                .patience = 10s,
                .start = 3s,
                .answer = 2s,
                .cancelled = 300ms};
    }
    /// The reply, or the number of the failure.
    [[nodiscard]] static std::string asked(ModelProcess& process, const std::string& question) {
        return told(awaited(process.ask("Be brief. ", question)));
    }
    [[nodiscard]] static std::string told(const std::optional<EngineAnswer>& answer) {
        if (!answer) return "nothing";
        if (answer->kind == Kind::reply) return answer->content;
        return "failure " + std::to_string(static_cast<int>(answer->failure()));
    }
    [[nodiscard]] static std::string failure(ModelFailure failure) {
        return told(EngineAnswer::of(failure));
    }

    const std::filesystem::path model = folder / "model.gguf";
};

TEST_F(ModelProcessTest, QuestionsInARowShareOneProcess) {
    ModelProcess process{loop, options(), model};
    EXPECT_FALSE(process.isRunning());

    EXPECT_EQ(asked(process, "otters?"), "fine: otters?");
    const std::string first = asked(process, "who");

    EXPECT_EQ(asked(process, "who"), first);
}

TEST_F(ModelProcessTest, AFaultCostsOneQuestionAndTheNextHasAFreshProcess) {
    ModelProcess process{loop, options(), model};
    for (const auto* fault : {"crash", "leave", "garbage", "other number", "half"}) {
        EXPECT_EQ(asked(process, fault), failure(ModelFailure::brokeOff)) << fault;
        EXPECT_EQ(asked(process, "next"), "fine: next") << fault;
    }
}

TEST_F(ModelProcessTest, WhoSaysNothingForTooLongIsEnded) {
    ModelProcess process{loop, options(), model};
    EXPECT_EQ(asked(process, "hang"), failure(ModelFailure::slow));
    EXPECT_EQ(asked(process, "next"), "fine: next");
}

TEST_F(ModelProcessTest, WhoGoesOnAfterItsAnswerIsEnded) {
    ModelProcess process{loop, options(), model};
    EXPECT_EQ(asked(process, "flood"), std::string(1000, 'x'));
    EXPECT_TRUE(waitFor([&] { return !process.isRunning(); }));
    EXPECT_EQ(asked(process, "next"), "fine: next");
}

TEST_F(ModelProcessTest, QuestionsAtOnceAreAskedOneAfterTheOther) {
    ModelProcess process{loop, options(), model};
    std::vector<Future<EngineAnswer>> futures;
    for (const auto* each : {"a", "crash", "b", "c"}) futures.push_back(process.ask("", each));

    std::vector<std::string> answers;
    for (auto& each : futures) answers.push_back(told(awaited(std::move(each))));

    EXPECT_EQ(answers, (std::vector<std::string>{"fine: a", failure(ModelFailure::brokeOff),
                                                 "fine: b", "fine: c"}));
}

TEST_F(ModelProcessTest, AQuestionThatIsDroppedIsCancelledAndTheProcessStays) {
    ModelProcess process{loop, options(), model};
    const std::string first = asked(process, "who");
    {
        const auto dropped = process.ask("", "until cancelled");
        settle();
    }
    EXPECT_EQ(asked(process, "who"), first);
}

TEST_F(ModelProcessTest, AProcessThatDoesNotStopIsEnded) {
    ModelProcess process{loop, options(), model};
    const std::string first = asked(process, "who");
    {
        const auto dropped = process.ask("", "hang");
        settle();
    }
    const auto begin = std::chrono::steady_clock::now();
    const std::string second = asked(process, "who");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
    EXPECT_NE(second, "nothing");
    EXPECT_FALSE(second.starts_with("failure")) << second;
    EXPECT_TRUE(second != first || second == "2");  // in a space of its own each has that number
}

TEST_F(ModelProcessTest, QuestionsThatWaitMayBeDropped) {
    ModelProcess process{loop, options(), model};
    auto first = process.ask("", "a");
    for (int i = 0; i < 50; ++i) static_cast<void>(process.ask("", "hang"));

    EXPECT_EQ(told(awaited(process.ask("", "b"))), "fine: b");
    EXPECT_EQ(told(awaited(std::move(first))), "fine: a");
}

TEST_F(ModelProcessTest, IdleItGoesAndComesAgain) {
    auto hasty = options();
    hasty.patience = 200ms;
    ModelProcess process{loop, hasty, model};
    EXPECT_EQ(asked(process, "a"), "fine: a");
    EXPECT_TRUE(process.isRunning());

    EXPECT_TRUE(waitFor([&] { return !process.isRunning(); }));

    EXPECT_EQ(asked(process, "b"), "fine: b");
}

TEST_F(ModelProcessTest, ItMayGoWhileItsProcessHangs) {
    auto process = std::make_unique<ModelProcess>(loop, options(), model);
    const auto question = process->ask("", "hang");
    settle();
    process.reset();
    EXPECT_TRUE(waitFor([] { return processesNamed("orvu-faulty-mod").empty(); }));
}

TEST_F(ModelProcessTest, WhoHearsOfAnAnswerMayEndTheProcess) {
    auto process = std::make_unique<ModelProcess>(loop, options(), model);
    TaskScope tasks;
    bool isOver = false;
    const auto ask = [](std::unique_ptr<ModelProcess>* which, bool* over) -> Task<void> {
        static_cast<void>(co_await (*which)->ask("", "a"));
        which->reset();
        *over = true;
    };
    tasks.start(ask(&process, &isOver));
    EXPECT_TRUE(waitFor([&] { return isOver; }));
}

TEST_F(ModelProcessTest, WhatCanNotBeShutInIsNotRun) {
    for (const auto* name : {"gone", "babbling", "open"}) {
        std::filesystem::create_symlink(faultyModel, folder / name);
        auto faulty = options();
        faulty.program = folder / name;
        ModelProcess process{loop, faulty, model};
        EXPECT_EQ(asked(process, "a"), failure(ModelFailure::notShutIn)) << name;
        EXPECT_FALSE(process.isRunning());
    }
}

TEST_F(ModelProcessTest, OneThatNeverGetsReadyIsEnded) {
    std::filesystem::create_symlink(faultyModel, folder / "mute");
    auto faulty = options();
    faulty.program = folder / "mute";
    faulty.start = 300ms;
    ModelProcess process{loop, faulty, model};
    EXPECT_EQ(asked(process, "a"), failure(ModelFailure::notShutIn));
}

TEST_F(ModelProcessTest, WithoutAProgramNothingIsRun) {
    auto none = options();
    none.program = folder / "none";
    ModelProcess process{loop, none, model};
    EXPECT_EQ(asked(process, "a"), failure(ModelFailure::notShutIn));
}

TEST_F(ModelProcessTest, WhatIsNoFileAnyMoreCanNotBeRead) {
    mkfifo((folder / "pipe.gguf").c_str(), S_IRUSR | S_IWUSR);
    for (const auto& file : {folder / "gone.gguf", folder / "pipe.gguf",
                             std::filesystem::path{"/dev/zero"}, std::filesystem::path{folder}}) {
        ModelProcess process{loop, options(), file};
        EXPECT_EQ(asked(process, "a"), failure(ModelFailure::unloadable)) << file;
    }
}

TEST_F(ModelProcessTest, AQuestionBeyondAllSenseIsRefusedAtOnce) {
    ModelProcess process{loop, options(), model};
    EXPECT_EQ(asked(process, std::string(EngineRequest::maxLength + 1, 'x')),
              failure(ModelFailure::contextTooSmall));
    EXPECT_FALSE(process.isRunning());
}

}  // namespace
}  // namespace orvu

#include "engine/EngineWorld.h"
#include "platform/linux/Worker.h"

#include <sys/stat.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <thread>

namespace orvu {
namespace {

using namespace std::chrono_literals;

class WorkerTest : public EngineTest {
protected:
    /// Ends a piece of work that waits for it, whatever becomes of the test.
    struct Gate {
        std::shared_ptr<std::atomic<bool>> open = std::make_shared<std::atomic<bool>>(false);
        ~Gate() { *open = true; }
        [[nodiscard]] std::function<int()> work(int result) const {
            return [gate = open, result] {
                while (!*gate) std::this_thread::sleep_for(1ms);
                return result;
            };
        }
    };
    [[nodiscard]] static Task<void> collect(Worker& room, std::function<int()> work,
                                            std::vector<int>& results) {
        auto future = room.run<int>(std::move(work), -1);
        results.push_back(co_await future);
    }
};

TEST_F(WorkerTest, ResultsComeInTheOrderOfTheWorkAndFromAnotherThread) {
    Worker room{loop, Worker::AtEnd::forget, {}};
    std::vector<int> results;
    std::vector<Task<void>> tasks;
    const auto here = std::this_thread::get_id();
    for (int i = 0; i < 20; ++i) {
        tasks.push_back(collect(
            room, [here, i] { return std::this_thread::get_id() == here ? -2 : i; }, results));
        tasks.back().start();
    }
    EXPECT_TRUE(results.empty());

    EXPECT_TRUE(waitFor([&] { return results.size() == 20; }));

    for (int i = 0; i < 20; ++i) EXPECT_EQ(results[static_cast<std::size_t>(i)], i);
}

TEST_F(WorkerTest, TheMainLoopTurnsWhileWorkIsSlow) {
    Worker room{loop, Worker::AtEnd::forget, {}};
    const Gate gate;
    std::vector<int> results;
    auto task = collect(room, gate.work(7), results);
    int turns = 0;
    std::function<void()> turn;
    Scheduled next;
    turn = [&] {
        ++turns;
        next = loop.whenIdle(turn);
    };
    next = loop.whenIdle(turn);

    task.start();
    EXPECT_TRUE(waitFor([&] { return turns > 1000; }));
    EXPECT_TRUE(results.empty());
    *gate.open = true;

    EXPECT_TRUE(waitFor([&] { return results == std::vector<int>{7}; }));
}

TEST_F(WorkerTest, WorkThatHangsFailsAndTheNextIsDone) {
    // Long enough for what follows, however busy the computer is.
    Worker room{loop, Worker::AtEnd::forget, {1s, 2}};
    const Gate gate;
    std::vector<int> results;
    auto hangs = collect(room, gate.work(1), results);
    auto next = collect(room, [] { return 2; }, results);
    hangs.start();
    next.start();

    EXPECT_TRUE(waitFor([&] { return results.size() == 2; }));

    EXPECT_EQ(results, (std::vector<int>{-1, 2}));
}

TEST_F(WorkerTest, WhileTooManyHangAllFailsAndAfterwardsWorkIsDoneAgain) {
    Worker room{loop, Worker::AtEnd::forget, {20ms, 2}};
    const Gate gate;
    std::vector<int> results;
    std::vector<Task<void>> tasks;
    for (int i = 0; i < 2; ++i) {
        tasks.push_back(collect(room, gate.work(1), results));
        tasks.back().start();
    }
    tasks.push_back(collect(room, [] { return 3; }, results));
    tasks.back().start();
    EXPECT_TRUE(waitFor([&] { return results.size() == 3; }));
    EXPECT_EQ(results, (std::vector<int>{-1, -1, -1}));

    *gate.open = true;
    std::vector<int> later;
    EXPECT_TRUE(waitFor([&] {
        later.clear();
        auto task = collect(room, [] { return 4; }, later);
        task.start();
        return waitFor([&] { return !later.empty(); }) && later.front() == 4;
    }));
}

TEST_F(WorkerTest, WorkThatThrowsFails) {
    Worker room{loop, Worker::AtEnd::forget, {}};
    std::vector<int> results;
    auto task = collect(room, []() -> int { throw std::bad_alloc{}; }, results);
    task.start();

    EXPECT_TRUE(waitFor([&] { return results == std::vector<int>{-1}; }));
}

TEST_F(WorkerTest, ARoomThatForgetsEndsWhileItsWorkHangs) {
    const Gate gate;
    std::vector<int> results;
    {
        Worker room{loop, Worker::AtEnd::forget, {}};
        auto task = collect(room, gate.work(1), results);
        task.start();
    }
    settle();

    EXPECT_TRUE(results.empty());
}

TEST_F(WorkerTest, FilesAreWrittenBeforeTheirRoomEnds) {
    const auto file = folder / "deep" / "er" / "file";
    {
        LinuxFileIO room{loop};
        room.makeFolder(file.parent_path());
        room.write(file, "first");
        room.write(file, "second");
    }

    std::ifstream stream{file};
    EXPECT_EQ((std::string{std::istreambuf_iterator<char>{stream}, {}}), "second");
    const auto entries = std::filesystem::directory_iterator{file.parent_path()};
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST_F(WorkerTest, OnlyPlainFilesWithinTheLimitAreRead) {
    std::ofstream{folder / "ten"} << "0123456789";
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::vector<std::optional<std::string>> results;
    const auto read = [](FileIO& room, std::filesystem::path file, std::size_t limit,
                         std::vector<std::optional<std::string>>& into) -> Task<void> {
        auto future = room.read(std::move(file), limit);
        into.push_back(co_await future);
    };
    std::vector<Task<void>> tasks;
    tasks.push_back(read(files, folder / "ten", 10, results));
    tasks.push_back(read(files, folder / "ten", 9, results));
    tasks.push_back(read(files, folder / "pipe", 10, results));
    tasks.push_back(read(files, folder, 10, results));
    tasks.push_back(read(files, folder / "none", 10, results));
    for (auto& task : tasks) task.start();

    EXPECT_TRUE(waitFor([&] { return results.size() == 5; }));

    EXPECT_EQ(results, (std::vector<std::optional<std::string>>{
                           "0123456789", std::nullopt, std::nullopt, std::nullopt, std::nullopt}));
}

}  // namespace
}  // namespace orvu

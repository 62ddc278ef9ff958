#include "foundation/async/TaskScope.h"

#include "fakes/VirtualMainLoop.h"
#include "foundation/async/Future.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace orvu {
namespace {

using namespace std::chrono_literals;

/// How often what this test is about came up.
struct Occasions {
    int ended = 0;           ///< pieces of work
    int endedAsTheyRan = 0;  ///< of these
    int values = 0;          ///< that a task received
    int abandonedValues = 0;
};

/// Many tasks in a few scopes, of which each does things by chance: it waits, awaits others,
/// resumes others, starts some, ends scopes. So do its locals when they go. What must hold is
/// checked on the way.
class RandomTrace {
public:
    RandomTrace(unsigned seed, Occasions& occasions) : random_(seed), occasions_(occasions) {
        for (auto& scope : scopes_) scope = std::make_unique<TaskScope>();
    }

    void run() {
        for (int i = 0; i < 150; ++i) {
            if (chance(4)) {
                loop_.advance(std::chrono::milliseconds{below(10)});
            } else {
                act();
            }
            checkNothingIsLeftOfTheEnded();
        }
        acts_ = false;  // lest what goes start new work
        for (std::size_t i = 0; i < scopes_.size(); ++i) replaceScope(i);
        checkNothingIsLeftOfTheEnded();
        while (!given_.empty()) resolveOne();
        EXPECT_EQ(locals_, 0);
        EXPECT_EQ(loop_.pendingTimers(), 0U);
    }

private:
    /// One piece of work.
    struct Record {
        bool hasEnded = false;
        bool isDone = false;
        bool isRunning = true;
        std::vector<int> locals;  ///< their numbers, the newest last
    };
    using RecordPointer = std::shared_ptr<Record>;

    /// Checks that locals go once and in order, and may do something then.
    class Local {
    public:
        Local(RandomTrace& trace, RecordPointer record)
            : trace_(trace), record_(std::move(record)), number_(++trace.lastLocal_) {
            record_->locals.push_back(number_);
            ++trace_.locals_;
        }
        Local(const Local&) = delete;
        Local& operator=(const Local&) = delete;
        ~Local() {
            if (trace_.chance(10)) trace_.act();
            --trace_.locals_;
            auto& locals = record_->locals;
            EXPECT_TRUE(!locals.empty() && locals.back() == number_);
            std::erase(locals, number_);
        }

    private:
        RandomTrace& trace_;
        RecordPointer record_;
        int number_;
    };

    /// Does something when it is entered, and then lets its awaiter go on at once.
    class Shove {
    public:
        explicit Shove(RandomTrace& trace) : trace_(trace) {}
        [[nodiscard]] bool await_ready() const { return false; }
        void await_suspend(std::coroutine_handle<> waiter) {
            if (trace_.chance(2)) trace_.act();
            waiter.resume();
        }
        void await_resume() const {}

    private:
        RandomTrace& trace_;
    };

    /// Finds out that it has nothing to wait for after it did something.
    class Turnstile {
    public:
        explicit Turnstile(RandomTrace& trace) : trace_(trace) {}
        [[nodiscard]] bool await_ready() const { return false; }
        bool await_suspend(std::coroutine_handle<> /*waiter*/) {
            if (trace_.chance(2)) trace_.act();
            return false;
        }
        void await_resume() const {}

    private:
        RandomTrace& trace_;
    };

    struct Given {
        Promise<int> promise;
        int value;
    };

    Task<void> work(RecordPointer record) {
        co_await part(record, 0);
        arrive(*record);
        record->isDone = true;
    }

    /// A stretch of a piece of work, which awaits more such ones down to a depth of three.
    Task<int> part(RecordPointer record, int depth) {
        const Local all{*this, record};
        const int steps = below(5);
        for (int i = 0; i < steps; ++i) {
            const Local step{*this, record};
            switch (below(8)) {
                case 0:
                    co_await sleep(*record);
                    break;
                case 1:
                    if (depth == 3) continue;
                    EXPECT_EQ(co_await part(record, depth + 1), depth + 1);
                    break;
                case 2: {
                    const Promise<int> ready;
                    ready.resolve(i);
                    EXPECT_EQ(co_await ready.future(), i);
                    break;
                }
                case 3:
                    co_await Shove{*this};
                    break;
                case 4:
                    co_await Turnstile{*this};
                    break;
                case 5:
                    act();
                    continue;  // there was no wait, so the work may have ended
                default: {
                    auto [future, value] = ask();
                    record->isRunning = false;
                    EXPECT_EQ(co_await future, value);
                    ++occasions_.values;
                }
            }
            arrive(*record);
        }
        co_return depth;
    }
    Sleep sleep(Record& record) {
        record.isRunning = false;
        return {loop_, std::chrono::milliseconds{below(20)}};
    }
    std::pair<Future<int>, int> ask() {
        const Promise<int> promise;
        const int value = below(1000);
        promise.onAbandoned([this] {
            ++occasions_.abandonedValues;
            if (chance(8)) act();
        });
        given_.push_back({promise, value});
        return {promise.future(), value};
    }
    /// A wait has returned.
    void arrive(Record& record) {
        EXPECT_FALSE(record.hasEnded);
        record.isRunning = true;
    }

    void act() {
        checkSizes();
        if (!acts_ || depth_ > 6) return;
        ++depth_;
        const auto scope = static_cast<std::size_t>(below(scopes_.size()));
        switch (below(12)) {
            case 0:
                cancelScope(scope);
                break;
            case 1:
                replaceScope(scope);
                break;
            case 2:
            case 3:
            case 4:
                start(scope);
                break;
            default:
                resolveOne();
        }
        --depth_;
        checkSizes();
    }
    void start(std::size_t scope) {
        auto record = std::make_shared<Record>();
        all_.push_back(record);
        running_[scope].push_back(record);
        auto task = work(std::move(record));
        scopes_[scope]->start(std::move(task));
    }
    void resolveOne() {
        if (given_.empty()) return;
        const auto at = given_.begin() + below(given_.size());
        const Given given = *at;
        given_.erase(at);
        given.promise.resolve(given.value);
    }
    void cancelScope(std::size_t scope) {
        noteEnd(scope);
        scopes_[scope]->cancel();
    }
    void replaceScope(std::size_t scope) {
        noteEnd(scope);
        const auto former = std::exchange(scopes_[scope], std::make_unique<TaskScope>());
    }
    void noteEnd(std::size_t scope) {
        for (const auto& record : std::exchange(running_[scope], {})) {
            if (record->isDone) continue;
            record->hasEnded = true;
            ++occasions_.ended;
            if (record->isRunning) ++occasions_.endedAsTheyRan;
        }
    }

    void checkSizes() const {
        for (std::size_t i = 0; i < scopes_.size(); ++i) {
            const auto count = std::ranges::count(running_[i], false, &Record::isDone);
            EXPECT_EQ(scopes_[i]->size(), static_cast<std::size_t>(count));
        }
    }
    /// Only between the stretches of all work.
    void checkNothingIsLeftOfTheEnded() {
        checkSizes();
        for (auto& records : running_) {
            std::erase_if(records, [](const RecordPointer& record) { return record->isDone; });
        }
        std::erase_if(all_, [](const RecordPointer& record) {
            if (!record->hasEnded && !record->isDone) return false;
            EXPECT_TRUE(record->locals.empty());
            EXPECT_EQ(record.use_count(), 1);
            return true;
        });
    }

    int below(std::size_t limit) { return static_cast<int>(random_() % limit); }
    bool chance(std::size_t oneIn) { return below(oneIn) == 0; }

    std::mt19937 random_;
    Occasions& occasions_;
    VirtualMainLoop loop_;
    std::vector<Given> given_;  ///< not resolved yet, though nobody may want it any more
    std::vector<RecordPointer> all_;
    std::array<std::vector<RecordPointer>, 3> running_;  ///< of each scope
    int lastLocal_ = 0;
    int locals_ = 0;
    int depth_ = 0;  ///< of actions within actions
    bool acts_ = true;
    std::array<std::unique_ptr<TaskScope>, 3> scopes_;
};

TEST(TaskScopeTraceTest, NothingGoesOnAfterItsEndAndNothingIsLeftOfIt) {
    Occasions occasions;

    for (unsigned seed = 0; seed < 600 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomTrace trace{seed, occasions};
        trace.run();
    }

    EXPECT_GT(occasions.ended, 4000);
    EXPECT_GT(occasions.endedAsTheyRan, 1000);
    EXPECT_GT(occasions.values, 8000);
    EXPECT_GT(occasions.abandonedValues, 1000);
}

}  // namespace
}  // namespace orvu

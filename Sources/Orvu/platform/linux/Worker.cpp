#include "platform/linux/Worker.h"

#include <glib.h>

#include <cstdint>
#include <deque>
#include <system_error>
#include <thread>

namespace orvu {
namespace {

void runGuarded(const std::function<void()>& work) {
    try {
        work();
    } catch (...) {
        return;  // no memory, say: the work has no result
    }
}

/// Runs `action` in a turn of the main loop. May be called from any thread.
void postToMain(std::function<void()> action) {
    auto posted = std::make_unique<std::function<void()>>(std::move(action));
    g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer data) -> gboolean {
            (*static_cast<std::function<void()>*>(data))();
            return G_SOURCE_REMOVE;
        },
        posted.release(), [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
}

}  // namespace

/// Touched on the main thread alone; a thread knows only its own piece of work.
struct Worker::State : std::enable_shared_from_this<State> {
    State(MainLoop& mainLoop, AtEnd end, Limits given)
        : loop(mainLoop), atEnd(end), limits(given) {}

    MainLoop& loop;
    const AtEnd atEnd;
    const Limits limits;
    std::deque<Job> waiting;
    std::optional<Job> running;
    std::uint64_t number = 0;  ///< of the running piece
    std::thread thread;        ///< of the running piece
    int abandoned = 0;
    Scheduled deadline;
    Scheduled refusal;

    void startNext() {
        if (running || waiting.empty()) return;
        if (abandoned > 0 && abandoned >= limits.abandoned) {
            refusal = loop.after(std::chrono::milliseconds{0}, [this] { refuseAll(); });
            return;
        }
        running.emplace(std::move(waiting.front()));
        waiting.pop_front();
        startThread();
        if (limits.deadline) deadline = loop.after(*limits.deadline, [this] { timeOut(); });
    }

    void startThread() {
        const auto ended = [weakState = weak_from_this(), mine = ++number] {
            if (const auto state = weakState.lock()) state->ended(mine);
        };
        try {
            thread = std::thread{[work = running->work, ended]() mutable {
                runGuarded(work);
                work = nullptr;  // what it holds goes before others hear of the end
                postToMain(ended);
            }};
        } catch (const std::system_error&) {  // no thread to be had
            postToMain(ended);
        }
    }

    void ended(std::uint64_t which) {
        if (which != number || !running) {
            --abandoned;
            return;
        }
        deadline.cancel();
        if (thread.joinable()) thread.join();
        settle(Outcome::done);
    }

    void timeOut() {
        ++abandoned;
        if (thread.joinable()) thread.detach();
        settle(Outcome::late);
    }

    void settle(Outcome outcome) {
        const auto keepAlive = shared_from_this();
        const Job job = std::move(*running);
        running.reset();
        startNext();  // first: whoever hears of the result may end the weakState
        job.settled(outcome);
    }

    void refuseAll() {
        const auto keepAlive = shared_from_this();
        const auto refused = std::exchange(waiting, {});
        for (const Job& job : refused) job.settled(Outcome::late);
    }

    void end() {
        deadline.cancel();
        refusal.cancel();
        if (atEnd == AtEnd::forget) {
            if (thread.joinable()) thread.detach();
        } else {
            if (thread.joinable()) thread.join();
            for (const Job& job : waiting) runGuarded(job.work);
        }
        waiting.clear();
        running.reset();
        ++number;
    }
};

Worker::Worker(MainLoop& loop, AtEnd atEnd, Limits limits)
    : state_(std::make_shared<State>(loop, atEnd, limits)) {}

Worker::~Worker() { state_->end(); }

void Worker::add(std::function<void()> work, std::function<void(Outcome)> settled) {
    state_->waiting.push_back({std::move(work), std::move(settled)});
    state_->startNext();
}

}  // namespace orvu

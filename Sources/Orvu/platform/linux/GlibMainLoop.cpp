#include "platform/linux/GlibMainLoop.h"

#include <glib.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace orvu {
namespace {

/// A timer's work, and its source while it has not run.
struct Timer {
    std::function<void()> work;
    guint source = 0;
};

gboolean runTimer(gpointer data) {
    const auto timer = *static_cast<std::shared_ptr<Timer>*>(data);
    timer->source = 0;
    timer->work();
    return G_SOURCE_REMOVE;
}

void dropTimer(gpointer data) { delete static_cast<std::shared_ptr<Timer>*>(data); }

}  // namespace

/// The idle work in its order, behind one source: the library would run any number of idle
/// sources in one turn.
struct GlibMainLoop::IdleQueue {
    std::map<std::uint64_t, std::function<void()>> work;
    std::uint64_t order = 0;
    guint source = 0;

    static gboolean runOne(gpointer data) {
        auto& queue = *static_cast<IdleQueue*>(data);
        if (!queue.work.empty()) queue.work.extract(queue.work.begin()).mapped()();
        if (!queue.work.empty()) return G_SOURCE_CONTINUE;
        queue.source = 0;
        return G_SOURCE_REMOVE;
    }
};

GlibMainLoop::GlibMainLoop() : idle_(std::make_shared<IdleQueue>()) {}

GlibMainLoop::~GlibMainLoop() {
    if (idle_->source != 0) g_source_remove(idle_->source);
}

Scheduled GlibMainLoop::after(std::chrono::milliseconds delay, std::function<void()> work) {
    const auto timer = std::make_shared<Timer>(std::move(work));
    const auto longest = std::chrono::milliseconds{std::numeric_limits<int>::max()};
    const auto wait = std::clamp(delay, std::chrono::milliseconds{0}, longest);
    timer->source = g_timeout_add_full(G_PRIORITY_DEFAULT, static_cast<guint>(wait.count()),
                                       runTimer, new std::shared_ptr<Timer>{timer}, dropTimer);
    return Scheduled{[timer] {
        if (const guint source = std::exchange(timer->source, 0)) g_source_remove(source);
    }};
}

Scheduled GlibMainLoop::whenIdle(std::function<void()> work) {
    const std::uint64_t key = ++idle_->order;
    idle_->work.emplace(key, std::move(work));
    if (idle_->source == 0) {
        idle_->source = g_idle_add_full(G_PRIORITY_LOW, IdleQueue::runOne, idle_.get(), nullptr);
    }
    return Scheduled{[queue = std::weak_ptr{idle_}, key] {
        if (const auto live = queue.lock()) live->work.erase(key);
    }};
}

}  // namespace orvu

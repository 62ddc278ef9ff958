#pragma once

#include "platform/MainLoop.h"

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

namespace orvu {

/// A loop whose time stands still until a test moves it.
class VirtualMainLoop : public MainLoop {
public:
    [[nodiscard]] Date now() const override { return start_.after(elapsed_); }
    [[nodiscard]] Scheduled after(std::chrono::milliseconds delay,
                                  std::function<void()> work) override {
        const auto key = std::pair{elapsed_ + delay, ++order_};
        timers_->emplace(key, std::move(work));
        return Scheduled{[timers = timers_, key] { timers->erase(key); }};
    }
    [[nodiscard]] Scheduled whenIdle(std::function<void()> work) override {
        const auto key = ++order_;
        idle_->emplace(key, std::move(work));
        return Scheduled{[idle = idle_, key] { idle->erase(key); }};
    }

    /// Where the clock begins, and what it shows until it is moved.
    void setNow(Date now) {
        start_ = now;
        elapsed_ = {};
    }
    /// Moves the clock and runs what falls due on the way, in order.
    void advance(std::chrono::milliseconds interval) {
        const auto end = elapsed_ + interval;
        while (!timers_->empty() && timers_->begin()->first.first <= end) {
            auto entry = timers_->extract(timers_->begin());
            elapsed_ = entry.key().first;
            entry.mapped()();
        }
        elapsed_ = end;
    }
    /// Does one piece of idle work. False if there is none.
    bool runIdle() {
        if (idle_->empty()) return false;
        idle_->extract(idle_->begin()).mapped()();
        return true;
    }
    [[nodiscard]] std::size_t pendingTimers() const { return timers_->size(); }

private:
    using TimerKey = std::pair<std::chrono::milliseconds, std::uint64_t>;
    Date start_{780000000.0};  // September 2025
    std::chrono::milliseconds elapsed_{0};
    std::uint64_t order_ = 0;
    std::shared_ptr<std::map<TimerKey, std::function<void()>>> timers_ =
        std::make_shared<std::map<TimerKey, std::function<void()>>>();
    std::shared_ptr<std::map<std::uint64_t, std::function<void()>>> idle_ =
        std::make_shared<std::map<std::uint64_t, std::function<void()>>>();
};

}  // namespace orvu

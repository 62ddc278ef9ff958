#pragma once

#include "platform/BackgroundWork.h"

#include <deque>
#include <utility>

namespace orvu {

/// Work that is done when a test says so, or at once.
class FakeBackgroundWork : public BackgroundWork {
public:
    /// Does the oldest piece that waits. False if there is none.
    bool doNext() {
        if (waiting_.empty()) return false;
        const auto [work, settled] = std::move(waiting_.front());
        waiting_.pop_front();
        work();
        settled(Outcome::done);
        return true;
    }
    [[nodiscard]] std::size_t waiting() const { return waiting_.size(); }

protected:
    void add(std::function<void()> work, std::function<void(Outcome)> settled) override {
        waiting_.emplace_back(std::move(work), std::move(settled));
    }

private:
    std::deque<std::pair<std::function<void()>, std::function<void(Outcome)>>> waiting_;
};

}  // namespace orvu

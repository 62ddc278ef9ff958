#pragma once

#include "platform/BackgroundWork.h"
#include "platform/MainLoop.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace orvu {

/// Does pieces of work in threads of its own, one after the other, and hands the results to the
/// main thread. Work that takes longer than the deadline counts as failed: its thread is left
/// alone, and the next piece begins in another. While too many are left alone, all work fails.
class Worker : public BackgroundWork {
public:
    /// What happens to the work at hand when the room goes.
    enum class AtEnd {
        forget,  ///< it is left alone, and what waits is never begun
        finish,  ///< it is done first
    };
    struct Limits {
        std::optional<std::chrono::milliseconds> deadline;  ///< nothing for no limit
        int abandoned = 0;                                  ///< how many threads at most
    };

    /// `loop` must outlive the room.
    Worker(MainLoop& loop, AtEnd atEnd, Limits limits);
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker() override;

protected:
    void add(std::function<void()> work, std::function<void(Outcome)> settled) override;

private:
    struct Job {
        std::function<void()> work;            ///< in a thread
        std::function<void(Outcome)> settled;  ///< on the main thread, once
    };
    struct State;

    const std::shared_ptr<State> state_;
};

}  // namespace orvu

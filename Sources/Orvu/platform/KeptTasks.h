#pragma once

#include "foundation/async/Task.h"
#include "platform/MainLoop.h"

#include <list>
#include <memory>
#include <utility>

namespace orvu {

/// Holds work that runs on its own, each until its end or until its owner is gone. An owner may go
/// while its work runs, which the owner itself could not survive as the holder of the task.
class KeptTasks {
public:
    /// `loop` must outlive this.
    explicit KeptTasks(MainLoop& loop) : loop_(loop) {}

    /// Starts `work`. It must hold `owner` strongly whenever it does something by which the owner
    /// may go, and must not hold it where it waits.
    void keep(Task<void> work, std::weak_ptr<const void> owner) {
        sweep();
        tasks_.push_back({std::move(work), std::move(owner)});
        tasks_.back().work.start();
    }
    /// An owner has just gone: its work ends in an idle turn.
    void ownerWent() {
        sweeping_ = loop_.whenIdle([this] { sweep(); });
    }
    [[nodiscard]] std::size_t size() const { return tasks_.size(); }

private:
    struct Kept {
        Task<void> work;
        std::weak_ptr<const void> owner;
    };

    void sweep() {
        std::erase_if(tasks_,
                      [](const Kept& kept) { return kept.work.isDone() || kept.owner.expired(); });
    }

    MainLoop& loop_;
    std::list<Kept> tasks_;
    Scheduled sweeping_;
};

}  // namespace orvu

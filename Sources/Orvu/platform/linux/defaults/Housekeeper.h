#pragma once

#include "platform/linux/defaults/DatabaseFile.h"
#include "platform/linux/defaults/StorageOptions.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>

namespace orvu {

/// Keeps the older copy of an open database, in a thread and over connections of its own: makes
/// it anew now and then, and removes what was deleted from it, from files that were set aside and
/// from the log. What is to be removed is read from the database (`Erasure`), so it is done after
/// the next start if the process ends before.
class Housekeeper {
public:
    Housekeeper(DatabaseFile database, const HousekeepingPace& pace);
    Housekeeper(const Housekeeper&) = delete;
    Housekeeper& operator=(const Housekeeper&) = delete;
    /// Removes first what was noted. A copy that is just being made is given up.
    ~Housekeeper();

    /// To be told after each write that noted an erasure.
    void erasureWasNoted(bool isDeletion);

private:
    using Clock = std::chrono::steady_clock;

    void run(const std::stop_token& stop);
    /// Sleeps until there is something to do or a stop is asked for.
    void wait(const std::stop_token& stop);
    void eraseIfDue(bool isEnd);
    void backUpIfDue(const std::stop_token& stop);

    const DatabaseFile database_;
    const HousekeepingPace pace_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::optional<Clock::time_point> eraseAt_;  ///< guarded by the mutex
    Clock::time_point backUpAt_;                ///< the thread's own
    std::jthread thread_;                       // last, so that it ends before what it uses
};

}  // namespace orvu

#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <thread>
#include <utility>

namespace orvu {

/// Moves a database's log into its file when the log has grown long, in a thread and over a
/// connection of its own, so that no write has to wait for the disk. Writers and readers go on
/// meanwhile; once all is moved, the next write begins the log anew.
class LogCheckpointer {
public:
    static constexpr std::int64_t logLimit = 16 << 20;  // bytes

    LogCheckpointer(std::filesystem::path file, std::int64_t pageSize)
        : file_(std::move(file)), pageSize_(pageSize) {}
    LogCheckpointer(const LogCheckpointer&) = delete;
    LogCheckpointer& operator=(const LogCheckpointer&) = delete;

    /// To be told the log's length after each write.
    void logIsNow(int pages);

private:
    const std::filesystem::path file_;
    const std::int64_t pageSize_;
    std::int64_t startAt_ = logLimit;
    std::atomic<bool> running_ = false;
    std::jthread worker_;  // last, so that it ends before what it uses
};

}  // namespace orvu

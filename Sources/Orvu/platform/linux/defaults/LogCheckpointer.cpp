#include "platform/linux/defaults/LogCheckpointer.h"

#include "platform/linux/defaults/Sqlite.h"

#include <system_error>

namespace orvu {
namespace {

/// Best effort: what can't be moved now stays in the log, which is as safe.
void checkpoint(const std::filesystem::path& file) {
    SqliteConnection connection{file, SqliteConnection::Access::readWrite};
    if (connection.status() != SQLITE_OK) return;
    // As a statement: the library's function does nothing before the connection has read the file.
    connection.execute("PRAGMA wal_checkpoint(PASSIVE)");
    connection.keepLogAtClose();
}

}  // namespace

void LogCheckpointer::logIsNow(int pages) {
    const std::int64_t bytes = pages * pageSize_;
    if (bytes < logLimit) startAt_ = logLimit;  // it has begun anew
    if (bytes < startAt_ || running_) return;
    startAt_ = bytes + logLimit / 4;  // should this attempt achieve nothing
    running_ = true;
    try {
        worker_ = std::jthread{[this, file = file_] {
            checkpoint(file);
            running_ = false;
        }};
    } catch (const std::system_error&) {  // no thread to be had
        running_ = false;
    }
}

}  // namespace orvu

#include "platform/linux/defaults/Backup.h"

#include "platform/linux/defaults/DatabaseWriter.h"

#include <filesystem>
#include <system_error>

namespace orvu {
namespace {

// A copy that a power cut tears apart is worth nothing, but its checksums tell; the disk is not
// waited for. What is taken away is overwritten.
constexpr const char* updateSettings = R"(
    PRAGMA journal_mode=DELETE;
    PRAGMA synchronous=OFF;
    PRAGMA secure_delete=ON;
)";

/// Somebody may be looking at the copy, who does not take long.
constexpr int patience = 250;  // milliseconds

bool isWhole(SqliteConnection& source) {
    return source.queryInteger("SELECT integrity_check = 'ok' FROM pragma_integrity_check") == 1;
}

}  // namespace

std::optional<std::chrono::seconds> Backup::age() const {
    std::error_code failure;
    const auto made = std::filesystem::last_write_time(file_.path(), failure);
    const auto now = std::filesystem::file_time_type::clock::now();
    if (failure || made > now) return std::nullopt;
    return std::chrono::duration_cast<std::chrono::seconds>(now - made);
}

bool Backup::make(SqliteConnection& source, const std::stop_token& stop) {
    source.interruptOn(stop);
    // One view of it for the check and for each value. It holds up no writer.
    if (source.execute("BEGIN") != SQLITE_OK || !isWhole(source)) return false;
    DefaultsTable from{source};
    DatabaseWriter copy{file_};
    if (from.prepare() != SQLITE_OK || !copy.isGood()) return false;
    for (const auto& key : from.keys()) {
        bool isCopied = false;
        from.inspect(key, DefaultsTable::Check::checksum,
                     [&](const ValueView& value, bool isSound) {
                         isCopied = isSound && (value.type == SQLITE_NULL || copy.add(key, value));
                     });
        if (!isCopied || stop.stop_requested()) return false;
    }
    source.rollBack();
    return copy.finish();
}

bool Backup::update(const Changes& changes) {
    if (!exists()) return file_.remove();
    std::error_code failure;
    const auto made = std::filesystem::last_write_time(file_.path(), failure);
    if (!tryUpdate(changes)) return file_.remove();
    // It tells when everything was copied, not these values alone.
    std::filesystem::last_write_time(file_.path(), made, failure);
    return true;
}

bool Backup::tryUpdate(const Changes& changes) {
    SqliteConnection connection{file_.path(), SqliteConnection::Access::readWrite};
    sqlite3_busy_timeout(connection.handle(), patience);
    DefaultsTable table{connection};
    if (connection.status() != SQLITE_OK || connection.execute(updateSettings) != SQLITE_OK ||
        table.form() != DefaultsTable::Form::ours || table.prepare() != SQLITE_OK ||
        connection.execute("BEGIN IMMEDIATE") != SQLITE_OK) {
        return false;
    }
    for (const auto& [key, value] : changes) {
        const int code = value ? table.write(key, value->view()) : table.remove(key);
        if (code != SQLITE_DONE) return false;
    }
    return connection.execute("COMMIT") == SQLITE_OK;
}

Salvage::Values Backup::values() const {
    if (!exists()) return {};
    {
        // Takes back what a process that was killed has half written.
        SqliteConnection connection{file_.path(), SqliteConnection::Access::readWrite};
        static_cast<void>(connection.queryInteger("PRAGMA user_version"));
    }
    return Salvage::of(file_).sound;
}

bool Backup::removeHalfMade() { return DatabaseWriter::removeHalfMade(file_); }

}  // namespace orvu

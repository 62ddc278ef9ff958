#include "platform/linux/defaults/Housekeeper.h"

#include "platform/linux/defaults/Backup.h"
#include "platform/linux/defaults/DatabaseWriter.h"
#include "platform/linux/defaults/DefaultsTable.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

namespace orvu {
namespace {

// Milliseconds for other writers, who don't take long; and while they have to wait for us.
constexpr int patience = 100;
constexpr int shortPatience = 10;

/// The present values of what the erasures name. Nothing if they can't be read.
std::optional<Backup::Changes> presentValues(SqliteConnection& connection, DefaultsTable& table,
                                             std::vector<Erasure>& erasures) {
    Backup::Changes values;
    if (connection.execute("BEGIN") != SQLITE_OK) return std::nullopt;  // one view of both
    erasures = table.erasures();
    for (const auto& erasure : erasures) {
        std::optional<DefaultsTable::Row> row;
        const int code = table.read(erasure.key, row);
        if (code != SQLITE_ROW && code != SQLITE_DONE) return std::nullopt;
        if (row && row->isSound && row->value.type != SQLITE_NULL) {
            values[erasure.key] = std::move(row->value);
        } else if (!row || erasure.isDeletion) {
            values[erasure.key] = std::nullopt;
        }
        // Otherwise the value is damaged, and the older one is the only one left.
    }
    connection.rollBack();
    return values;
}

/// Whether a file that was set aside is one of this program, damaged or not. Those of strangers
/// and of later versions are whole, and theirs.
bool isOurs(const DatabaseFile& file) {
    if (!file.hasContent()) return !file.isFolder();
    SqliteConnection connection{file.path(), SqliteConnection::Access::immutable};
    const auto version = connection.queryInteger("PRAGMA user_version");
    if (!version) return true;
    if (*version > DefaultsTable::schemaVersion) return false;
    const auto tables = connection.queryInteger("SELECT count(*) FROM sqlite_schema");
    if (!tables || *tables == 0) return true;
    return connection.queryInteger("SELECT 1 FROM sqlite_schema WHERE name = 'defaults'") == 1;
}

bool removeFilesSetAside(const DatabaseFile& database) {
    return std::ranges::all_of(database.filesSetAside(), [](const DatabaseFile& file) {
        return !isOurs(file) || file.remove();
    });
}

/// Removes what a process that was killed has saved of a damaged file and not put into its place.
bool removeSalvaged(const DatabaseFile& database) {
    return DatabaseWriter::removeHalfMade(database.salvaged()) && database.salvaged().remove();
}

/// Moves the log into the file, and leaves nothing in it.
bool emptyLog(SqliteConnection& connection) {
    // The first does the work while others read and write; for the second, which keeps them
    // waiting, next to nothing is left.
    connection.execute("PRAGMA wal_checkpoint(PASSIVE)");
    sqlite3_busy_timeout(connection.handle(), shortPatience);
    return connection.queryInteger("PRAGMA wal_checkpoint(TRUNCATE)") == 0;
}

/// Removes everywhere what was noted as taken away. False if something of it may be left.
bool carryOutErasures(const DatabaseFile& database) {
    const FolderLock lock{database.folder(), std::try_to_lock};
    if (!lock.isHeld()) return false;
    Backup backup{database};
    if (!backup.removeHalfMade() || !removeSalvaged(database)) return false;

    SqliteConnection connection{database.path(), SqliteConnection::Access::readWrite};
    sqlite3_busy_timeout(connection.handle(), patience);
    DefaultsTable table{connection};
    if (connection.status() != SQLITE_OK || table.prepare() != SQLITE_OK) return false;
    std::vector<Erasure> erasures;
    const auto values = presentValues(connection, table, erasures);
    if (!values) return false;
    if (erasures.empty()) return true;

    if (!backup.update(*values)) return false;
    if (std::ranges::any_of(erasures, &Erasure::isDeletion)) {
        if (!removeFilesSetAside(database) || !emptyLog(connection)) return false;
    }
    const auto last = std::ranges::max(erasures, {}, &Erasure::number).number;
    return table.forgetErasures(last) == SQLITE_DONE;
}

}  // namespace

Housekeeper::Housekeeper(DatabaseFile database, const HousekeepingPace& pace)
    : database_(std::move(database)),
      pace_(pace),
      eraseAt_(Clock::now() + pace.afterStart),
      backUpAt_(Clock::now() + pace.firstBackup) {
    try {
        thread_ = std::jthread{[this](const std::stop_token& stop) { run(stop); }};
    } catch (const std::system_error&) {
        thread_ = {};  // no thread to be had: the next start does the work
    }
}

Housekeeper::~Housekeeper() = default;

void Housekeeper::erasureWasNoted(bool isDeletion) {
    const auto at = Clock::now() + (isDeletion ? pace_.afterDeletion : pace_.afterChange);
    {
        const std::scoped_lock lock{mutex_};
        if (eraseAt_ && *eraseAt_ <= at) return;
        eraseAt_ = at;
    }
    changed_.notify_one();
}

void Housekeeper::run(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        wait(stop);
        eraseIfDue(false);
        if (!stop.stop_requested()) backUpIfDue(stop);
    }
    eraseIfDue(true);
}

void Housekeeper::wait(const std::stop_token& stop) {
    std::unique_lock lock{mutex_};
    const auto next = [this] { return eraseAt_ ? std::min(*eraseAt_, backUpAt_) : backUpAt_; };
    while (!stop.stop_requested() && Clock::now() < next()) {
        const auto until = next();
        changed_.wait_until(lock, stop, until, [&] { return next() < until; });
    }
}

void Housekeeper::eraseIfDue(bool isEnd) {
    {
        const std::scoped_lock lock{mutex_};
        if (!eraseAt_ || (!isEnd && Clock::now() < *eraseAt_)) return;
        eraseAt_.reset();  // what is noted from now on is seen to next time
    }
    constexpr int attempts = 10;
    constexpr std::chrono::milliseconds pause{10};
    bool isDone = carryOutErasures(database_);
    for (int attempt = 1; !isDone && attempt < attempts; ++attempt) {
        std::this_thread::sleep_for(pause);
        isDone = carryOutErasures(database_);
    }
    if (isDone) return;
    const auto next = Clock::now() + pace_.afterFailure;
    const std::scoped_lock lock{mutex_};
    eraseAt_ = eraseAt_ ? std::min(*eraseAt_, next) : next;
}

void Housekeeper::backUpIfDue(const std::stop_token& stop) {
    if (Clock::now() < backUpAt_) return;
    backUpAt_ = Clock::now() + pace_.nextBackup;
    const FolderLock lock{database_.folder(), std::try_to_lock};
    if (!lock.isHeld()) return;
    Backup backup{database_};
    const auto age = backup.exists() ? backup.age() : std::nullopt;
    if (age && *age < pace_.backupAge) return;
    SqliteConnection source{database_.path(), SqliteConnection::Access::readWrite};
    if (source.status() == SQLITE_OK) backup.make(source, stop);
}

}  // namespace orvu

#include "platform/linux/defaults/UserDefaultsDatabase.h"

#include <filesystem>
#include <set>
#include <string>
#include <system_error>

namespace orvu {
namespace {

/// To be raised with each change of the table; a file that bears a greater one is not ours to
/// read.
constexpr std::int64_t schemaVersion = 1;

/// Beyond this the check of the whole file would be felt at the start. Damage then shows, and is
/// dealt with, when a damaged value is asked for.
constexpr std::uintmax_t checkedFileSize = 16 << 20;

// The history is the largest value, some megabyte that is written with each visit. With large
// pages that takes less than half the time that the library's usual 4,096 bytes take. What is
// deleted is overwritten, so that a history that was cleared is not left in free pages. A write
// reaches the system's cache before it returns, which the process's end can't undo; the disk is
// waited for by the checkpoints alone.
constexpr const char* settings = R"(
    PRAGMA page_size=32768;
    PRAGMA journal_mode=WAL;
    PRAGMA synchronous=NORMAL;
    PRAGMA wal_autocheckpoint=0;
    PRAGMA journal_size_limit=16777216;
    PRAGMA cache_size=-8000;
    PRAGMA secure_delete=ON;
)";

constexpr const char* createTable = R"(
    BEGIN IMMEDIATE;
    CREATE TABLE IF NOT EXISTS defaults (key TEXT PRIMARY KEY NOT NULL, value);
    PRAGMA user_version=1;
    COMMIT;
)";

// While opening, another process may just be tidying up the log; later a write may wait for one
// of another process, but not so long that the window stands still.
constexpr int openingPatience = 2000;  // milliseconds
constexpr int patience = 250;

}  // namespace

UserDefaultsDatabase::UserDefaultsDatabase(const std::filesystem::path& file) : file_(file) {
    openOrReplace();
}

UserDefaultsDatabase::~UserDefaultsDatabase() { close(); }

bool UserDefaultsDatabase::has(std::string_view key) {
    bool found = false;
    run([&] {
        SqliteStatement::Turn row{open_.has};
        row.bindText(1, key);
        const int code = row.step();
        found = code == SQLITE_ROW;
        return code;
    });
    return found;
}

void UserDefaultsDatabase::remove(std::string_view key) {
    runWrite([&] {
        SqliteStatement::Turn row{open_.erase};
        row.bindText(1, key);
        return row.step();
    });
}

void UserDefaultsDatabase::beginBatch() {
    if (batches_++ > 0) return;
    batchFailed_ = false;
    open_.connection.execute("BEGIN");
}

void UserDefaultsDatabase::endBatch() {
    if (--batches_ > 0) return;
    const bool stored = !batchFailed_ && open_.connection.execute("COMMIT") == SQLITE_OK;
    // Some failures have ended the transaction already; then there is nothing to take back.
    if (!stored && sqlite3_get_autocommit(open_.connection.handle()) == 0) {
        open_.connection.execute("ROLLBACK");
    }
    batchFailed_ = false;
}

void UserDefaultsDatabase::openOrReplace() {
    if (!file_.makeFolder()) return openInMemory();
    const FolderLock lock{file_.folder()};
    switch (open()) {
        case Opening::good:
            return;
        case Opening::damaged:
            return replaceDamaged();
        case Opening::refused:
            openInMemory();
            copyFrom(file_);
            return;
    }
}

UserDefaultsDatabase::Opening UserDefaultsDatabase::open() {
    file_.makePrivate();
    if (file_.isUnusable()) return Opening::damaged;
    open_.connection = SqliteConnection{file_.path(), SqliteConnection::Access::create};
    if (open_.connection.status() != SQLITE_OK) return failure();
    sqlite3_busy_timeout(open_.connection.handle(), openingPatience);
    if (open_.connection.execute(settings) != SQLITE_OK) return failure();
    const Opening result = openTable();
    if (result != Opening::good) return result;
    sqlite3_busy_timeout(open_.connection.handle(), patience);
    identity_ = file_.identity();
    watchLog();
    return Opening::good;
}

UserDefaultsDatabase::Opening UserDefaultsDatabase::openTable() {
    auto& connection = open_.connection;
    const auto version = connection.queryInteger("PRAGMA user_version");
    if (!version) return failure();
    if (*version > schemaVersion || !isSound()) return Opening::damaged;
    if (*version == 0) {
        if (connection.queryInteger("SELECT 1 FROM sqlite_schema")) return Opening::damaged;
        if (connection.execute(createTable) != SQLITE_OK) return failure();
    }
    open_.has =
        connection.prepare("SELECT 1 FROM defaults WHERE key = ?1 AND typeof(value) <> 'null'");
    open_.select = connection.prepare("SELECT value FROM defaults WHERE key = ?1");
    open_.upsert = connection.prepare(
        "INSERT INTO defaults (key, value) VALUES (?1, ?2) "
        "ON CONFLICT (key) DO UPDATE SET value = excluded.value");
    open_.erase = connection.prepare("DELETE FROM defaults WHERE key = ?1");
    const bool fits = open_.has && open_.select && open_.upsert && open_.erase;
    return fits ? Opening::good : failure();
}

UserDefaultsDatabase::Opening UserDefaultsDatabase::failure() const {
    const int code = open_.connection.status();
    // The general error says that a statement does not fit the tables.
    return isDamage(code) || code == SQLITE_ERROR ? Opening::damaged : Opening::refused;
}

bool UserDefaultsDatabase::isSound() {
    std::error_code failure;
    const auto size = std::filesystem::file_size(file_.path(), failure);
    if (failure || size > checkedFileSize) return true;
    auto check = open_.connection.prepare("PRAGMA quick_check(1)");
    if (!check) return !isDamage(open_.connection.status());
    SqliteStatement::Turn row{check};
    const int code = row.step();
    return code == SQLITE_ROW ? row.bytes(0) == "ok" : !isDamage(code);
}

void UserDefaultsDatabase::openInMemory() {
    close();
    open_.connection = SqliteConnection{SqliteConnection::memory, SqliteConnection::Access::create};
    (void)openTable();
}

void UserDefaultsDatabase::replaceDamaged() {
    open_.connection.keepLogAtClose();  // the file is set aside as it is
    close();
    const auto aside = file_.setAside();
    if (!aside || open() != Opening::good) openInMemory();
    copyFrom(aside.value_or(file_));
}

void UserDefaultsDatabase::startAnew() {
    const FolderLock lock{file_.folder()};
    if (file_.identity() == identity_) {
        replaceDamaged();
    } else {
        // Another process has met the damage first, and has put a new file in its place.
        close();
        if (open() != Opening::good) openInMemory();
    }
    if (batches_ > 0) open_.connection.execute("BEGIN");
}

void UserDefaultsDatabase::copyFrom(const DatabaseFile& other) {
    using Access = SqliteConnection::Access;
    if (!other.hasContent()) return;
    for (const auto access : {Access::readOnly, Access::immutable}) {
        SqliteConnection source{other.path(), access};
        source.keepLogAtClose();
        if (source.queryInteger("PRAGMA user_version") != schemaVersion) continue;
        copyRows(source);
        return;
    }
}

void UserDefaultsDatabase::copyRows(SqliteConnection& source) {
    // A scan ends at a damaged page, so there is one from each end. They read row numbers alone:
    // a value whose own pages are damaged then costs only that value.
    std::set<std::int64_t> numbers;
    for (const auto* const order : {"ASC", "DESC"}) {
        auto scan = source.prepare("SELECT rowid FROM defaults NOT INDEXED ORDER BY rowid " +
                                   std::string{order});
        if (!scan) return;
        SqliteStatement::Turn row{scan};
        bool isNew = true;
        while (isNew && row.step() == SQLITE_ROW) isNew = numbers.insert(row.integer(0)).second;
    }
    auto select =
        source.prepare("SELECT key, value FROM defaults WHERE rowid = ?1 AND typeof(key) = 'text'");
    open_.connection.execute("BEGIN");
    for (const auto number : numbers) {
        SqliteStatement::Turn row{select};
        row.bindInteger(1, number);
        if (row.step() != SQLITE_ROW) continue;
        SqliteStatement::Turn copy{open_.upsert};
        copy.bindColumn(1, row, 0);
        copy.bindColumn(2, row, 1);
        copy.step();
    }
    open_.connection.execute("COMMIT");
}

void UserDefaultsDatabase::watchLog() {
    const auto pageSize = open_.connection.queryInteger("PRAGMA page_size");
    checkpointer_.emplace(file_.path(), pageSize.value_or(1));
    const auto told = [](void* checkpointer, sqlite3*, const char*, int pages) {
        static_cast<LogCheckpointer*>(checkpointer)->logIsNow(pages);
        return SQLITE_OK;
    };
    sqlite3_wal_hook(open_.connection.handle(), told, &*checkpointer_);
}

void UserDefaultsDatabase::close() {
    checkpointer_.reset();  // waits for its connection to end, so that ours is the last
    open_ = {};
    identity_.reset();
}

bool UserDefaultsDatabase::isDamage(int code) {
    constexpr int primary = 0xFF;
    return (code & primary) == SQLITE_CORRUPT || (code & primary) == SQLITE_NOTADB;
}

}  // namespace orvu

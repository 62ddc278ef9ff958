#include "platform/linux/defaults/DefaultsTable.h"

namespace orvu {
namespace {

// `defaults` is made first, so that its two trees begin on the same pages in every file, which
// helps to read a damaged one. A program that knows no checksums updates the value alone; then
// the checksum, of a value that is gone, has to go. Our connections have triggers switched off.
constexpr const char* createTables = R"(
    BEGIN IMMEDIATE;
    CREATE TABLE IF NOT EXISTS defaults (key TEXT PRIMARY KEY NOT NULL, value, checksum INTEGER);
    PRAGMA user_version=1;
)";
constexpr const char* addChecksums = "ALTER TABLE defaults ADD COLUMN checksum INTEGER";
constexpr const char* createOthers = R"(
    CREATE TABLE IF NOT EXISTS erasures (
        number INTEGER PRIMARY KEY, key TEXT NOT NULL, isDeletion INTEGER NOT NULL);
    CREATE TABLE IF NOT EXISTS setAside (
        number INTEGER PRIMARY KEY, key TEXT NOT NULL, value, date TEXT NOT NULL);
    CREATE TRIGGER IF NOT EXISTS valueWithoutChecksum AFTER UPDATE OF value ON defaults
        BEGIN UPDATE defaults SET checksum = NULL WHERE key = new.key; END;
    COMMIT;
)";

}  // namespace

DefaultsTable::Form DefaultsTable::form() {
    const auto version = connection_->queryInteger("PRAGMA user_version");
    if (!version) return Form::unreadable;
    if (*version > schemaVersion) return Form::strange;
    if (*version == 0) {
        const auto tables = connection_->queryInteger("SELECT count(*) FROM sqlite_schema");
        if (!tables) return Form::unreadable;
        return *tables == 0 ? Form::empty : Form::strange;
    }
    if (connection_->prepare("SELECT key, value FROM defaults")) return Form::ours;
    return connection_->status() == SQLITE_ERROR ? Form::strange : Form::unreadable;
}

int DefaultsTable::create() {
    constexpr auto isComplete =
        "SELECT 1 FROM sqlite_schema WHERE name = 'valueWithoutChecksum' "
        "AND EXISTS (SELECT 1 FROM pragma_table_info('defaults') WHERE name = 'checksum')";
    constexpr auto hasChecksums =
        "SELECT 1 FROM pragma_table_info('defaults') WHERE name = 'checksum'";
    if (connection_->queryInteger(isComplete)) return SQLITE_OK;
    int code = connection_->execute(createTables);
    if (code == SQLITE_OK && !connection_->queryInteger(hasChecksums)) {
        code = connection_->execute(addChecksums);
    }
    if (code == SQLITE_OK) code = connection_->execute(createOthers);
    if (code != SQLITE_OK) connection_->rollBack();
    return code;
}

int DefaultsTable::prepare() {
    sqlite3_db_config(connection_->handle(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    select_ = connection_->prepare("SELECT value, checksum FROM defaults WHERE key = ?1");
    if (!select_) return connection_->status();
    upsert_ = connection_->prepare(
        "INSERT INTO defaults (key, value, checksum) VALUES (?1, ?2, ?3) ON CONFLICT (key) "
        "DO UPDATE SET value = excluded.value, checksum = excluded.checksum");
    if (!upsert_) return connection_->status();
    erase_ = connection_->prepare("DELETE FROM defaults WHERE key = ?1");
    if (!erase_) return connection_->status();
    note_ = connection_->prepare("INSERT INTO erasures (key, isDeletion) VALUES (?1, ?2)");
    return connection_->status();
}

int DefaultsTable::read(std::string_view key, std::optional<Row>& row) {
    return inspect(key, Check::checksum, [&](const ValueView& value, bool isSound) {
        row = Row{StoredValue{value}, isSound};
    });
}

int DefaultsTable::write(std::string_view key, const ValueView& value) {
    SqliteStatement::Turn turn{upsert_};
    turn.bindText(1, key);
    value.bind(turn, 2);
    turn.bindInteger(3, value.checksum(key));
    return turn.step();
}

int DefaultsTable::remove(std::string_view key) {
    SqliteStatement::Turn turn{erase_};
    turn.bindText(1, key);
    return turn.step();
}

std::vector<std::string> DefaultsTable::keys() {
    std::vector<std::string> result;
    auto select = connection_->prepare("SELECT key FROM defaults");
    if (!select) return result;
    SqliteStatement::Turn row{select};
    while (row.step() == SQLITE_ROW) result.emplace_back(row.bytes(0));
    return result;
}

int DefaultsTable::note(std::string_view key, bool isDeletion) {
    SqliteStatement::Turn turn{note_};
    turn.bindText(1, key);
    turn.bindInteger(2, isDeletion ? 1 : 0);
    return turn.step();
}

std::vector<Erasure> DefaultsTable::erasures() {
    std::vector<Erasure> result;
    auto select = connection_->prepare("SELECT number, key, isDeletion FROM erasures");
    if (!select) return result;
    SqliteStatement::Turn row{select};
    while (row.step() == SQLITE_ROW) {
        result.push_back({row.integer(0), std::string{row.bytes(1)}, row.integer(2) != 0});
    }
    return result;
}

int DefaultsTable::forgetErasures(std::int64_t upTo) {
    auto erase = connection_->prepare("DELETE FROM erasures WHERE number <= ?1");
    SqliteStatement::Turn turn{erase};
    turn.bindInteger(1, upTo);
    return turn.step();
}

int DefaultsTable::setAside(std::string_view key) {
    auto copy = connection_->prepare(
        "INSERT INTO setAside (key, value, date) "
        "SELECT key, value, datetime() FROM defaults "
        "WHERE key = ?1 AND value IS NOT NULL AND length(value) <= ?2");
    int code = SQLITE_DONE;
    {
        SqliteStatement::Turn turn{copy};
        turn.bindText(1, key);
        turn.bindInteger(2, bytesSetAside);
        code = turn.step();
    }
    if (code != SQLITE_DONE) return code;
    auto prune = connection_->prepare(
        "DELETE FROM setAside WHERE number IN (SELECT number FROM (SELECT number, "
        "row_number() OVER newestFirst AS place, "
        "sum(length(value)) OVER newestFirst AS bytes FROM setAside "
        "WINDOW newestFirst AS (ORDER BY number DESC)) WHERE place > ?1 OR bytes > ?2)");
    SqliteStatement::Turn turn{prune};
    turn.bindInteger(1, mostSetAside);
    turn.bindInteger(2, bytesSetAside);
    return turn.step();
}

int DefaultsTable::dropSetAside(std::string_view key) {
    auto erase = connection_->prepare("DELETE FROM setAside WHERE key = ?1");
    SqliteStatement::Turn turn{erase};
    turn.bindText(1, key);
    return turn.step();
}

}  // namespace orvu

#include "platform/linux/defaults/Sqlite.h"

#include <string>

namespace orvu {
namespace {

/// The library takes a null pointer for NULL, which an empty value is not.
const char* pointer(std::string_view bytes) { return bytes.data() ? bytes.data() : ""; }

/// The file as an address, in which only these characters mean something.
std::string fileUri(const std::filesystem::path& file) {
    std::string uri = "file:";
    for (const char c : std::filesystem::absolute(file).string()) {
        switch (c) {
            case '%':
                uri += "%25";
                break;
            case '?':
                uri += "%3f";
                break;
            case '#':
                uri += "%23";
                break;
            default:
                uri += c;
        }
    }
    return uri;
}

}  // namespace

void SqliteStatement::Turn::bindText(int parameter, std::string_view text) {
    sqlite3_bind_text64(statement_, parameter, pointer(text), text.size(), SQLITE_STATIC,
                        SQLITE_UTF8);
}

void SqliteStatement::Turn::bindBlob(int parameter, std::string_view bytes) {
    sqlite3_bind_blob64(statement_, parameter, pointer(bytes), bytes.size(), SQLITE_STATIC);
}

void SqliteStatement::Turn::bindInteger(int parameter, std::int64_t number) {
    sqlite3_bind_int64(statement_, parameter, number);
}

void SqliteStatement::Turn::bindReal(int parameter, double number) {
    sqlite3_bind_double(statement_, parameter, number);
}

void SqliteStatement::Turn::bindColumn(int parameter, const Turn& source, int column) {
    sqlite3_bind_value(statement_, parameter, sqlite3_column_value(source.statement_, column));
}

int SqliteStatement::Turn::type(int column) const {
    return sqlite3_column_type(statement_, column);
}

std::string_view SqliteStatement::Turn::bytes(int column) const {
    // A text comes as its own bytes too: the database keeps texts in UTF-8, as they were bound.
    const auto* const data = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    if (!data) return {};
    return {data, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

std::int64_t SqliteStatement::Turn::integer(int column) const {
    return sqlite3_column_int64(statement_, column);
}

double SqliteStatement::Turn::real(int column) const {
    return sqlite3_column_double(statement_, column);
}

SqliteConnection::SqliteConnection(const std::filesystem::path& file, Access access) {
    // Without mutexes: a connection stays with the thread that made it.
    int flags = SQLITE_OPEN_NOMUTEX;
    std::string name = file.string();
    switch (access) {
        case Access::create:
            flags |= SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
            break;
        case Access::readWrite:
            flags |= SQLITE_OPEN_READWRITE;
            break;
        case Access::readOnly:
            flags |= SQLITE_OPEN_READONLY;
            break;
        case Access::immutable:
            flags |= SQLITE_OPEN_READONLY | SQLITE_OPEN_URI;
            name = fileUri(file) + "?immutable=1";
            break;
    }
    sqlite3* opened = nullptr;
    status_ = sqlite3_open_v2(name.c_str(), &opened, flags, nullptr);
    handle_.reset(opened);
}

int SqliteConnection::execute(const char* sql) {
    return status_ = sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr);
}

SqliteStatement SqliteConnection::prepare(std::string_view sql) {
    sqlite3_stmt* statement = nullptr;
    status_ =
        sqlite3_prepare_v2(handle(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
    return SqliteStatement{statement};
}

std::optional<std::int64_t> SqliteConnection::queryInteger(std::string_view sql) {
    auto statement = prepare(sql);
    if (!statement) return std::nullopt;
    SqliteStatement::Turn turn{statement};
    status_ = turn.step();
    if (status_ != SQLITE_ROW) return std::nullopt;
    return turn.integer(0);
}

void SqliteConnection::keepLogAtClose() {
    if (handle()) sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

}  // namespace orvu

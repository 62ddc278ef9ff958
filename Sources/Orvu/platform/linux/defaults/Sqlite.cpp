#include "platform/linux/defaults/Sqlite.h"

#include <cstring>
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

void SqliteStatement::Turn::bindNull(int parameter) { sqlite3_bind_null(statement_, parameter); }

int SqliteStatement::Turn::type(int column) const {
    return sqlite3_column_type(statement_, column);
}

std::string_view SqliteStatement::Turn::bytes(int column) const {
    // A text comes as its own bytes too: the database keeps texts in UTF-8, as they were bound.
    const auto* const data = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    if (!data) return {};
    return {data, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

std::string_view SqliteStatement::Turn::text(int column) const {
    const auto* const data = sqlite3_column_text(statement_, column);
    return data ? std::string_view{reinterpret_cast<const char*>(data)} : std::string_view{};
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

void SqliteConnection::rollBack() {
    if (handle() && sqlite3_get_autocommit(handle()) == 0) {
        sqlite3_exec(handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void SqliteConnection::keepLogAtClose() {
    if (handle()) sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

void SqliteConnection::interruptOn(const std::stop_token& stop) {
    constexpr int steps = 1000;  // of the library's machine: some microseconds
    const auto isStopped = [](void* token) {
        return static_cast<const std::stop_token*>(token)->stop_requested() ? 1 : 0;
    };
    // The library wants a pointer to what it may change; the token is only asked.
    sqlite3_progress_handler(handle(), steps, isStopped, const_cast<std::stop_token*>(&stop));
}

std::string SqliteConnection::serialized() const {
    sqlite3_int64 size = 0;
    unsigned char* const bytes = sqlite3_serialize(handle(), "main", &size, 0);
    if (!bytes) return {};
    std::string result{reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size)};
    sqlite3_free(bytes);
    return result;
}

bool SqliteConnection::deserialize(std::string_view bytes) {
    auto* const copy = static_cast<unsigned char*>(sqlite3_malloc64(bytes.size()));
    if (!copy) return false;
    std::memcpy(copy, bytes.data(), bytes.size());
    const auto size = static_cast<sqlite3_int64>(bytes.size());
    // The library frees the copy, also if it fails.
    status_ = sqlite3_deserialize(handle(), "main", copy, size, size,
                                  SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_READONLY);
    return status_ == SQLITE_OK;
}

}  // namespace orvu

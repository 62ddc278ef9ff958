#include "platform/linux/SqliteUserDefaults.h"
#include <sqlite3.h>
namespace orvu {
class SqliteUserDefaults::Database {
public:
    sqlite3* db = nullptr;
    int type(std::string_view k, std::string* out, long long* i, double* d) const {
        sqlite3_stmt* s;
        sqlite3_prepare_v2(db, "select value from defaults where key=?", -1, &s, nullptr);
        sqlite3_bind_text(s, 1, k.data(), (int)k.size(), SQLITE_TRANSIENT);
        int t = 0;
        if (sqlite3_step(s) == SQLITE_ROW) {
            t = sqlite3_column_type(s, 0);
            if (out) {
                auto p = (const char*)sqlite3_column_blob(s, 0);
                out->assign(p ? p : "", (size_t)sqlite3_column_bytes(s, 0));
            }
            if (i) *i = sqlite3_column_int64(s, 0);
            if (d) *d = sqlite3_column_double(s, 0);
        }
        sqlite3_finalize(s);
        return t;
    }
    template <class F>
    void set(std::string_view k, F f) {
        sqlite3_stmt* s;
        sqlite3_prepare_v2(db, "insert or replace into defaults values(?,?)", -1, &s, nullptr);
        sqlite3_bind_text(s, 1, k.data(), (int)k.size(), SQLITE_TRANSIENT);
        f(s);
        sqlite3_step(s);
        sqlite3_finalize(s);
    }
};
SqliteUserDefaults::SqliteUserDefaults(const std::filesystem::path& f)
    : database_(std::make_unique<Database>()) {
    std::filesystem::create_directories(f.parent_path());
    sqlite3_open(f.c_str(), &database_->db);
    sqlite3_exec(database_->db,
                 "pragma journal_mode=wal;pragma synchronous=normal;create table if not exists "
                 "defaults(key text primary key not null, value)",
                 nullptr, nullptr, nullptr);
}
SqliteUserDefaults::~SqliteUserDefaults() { sqlite3_close(database_->db); }
bool SqliteUserDefaults::hasObject(std::string_view k) const {
    return database_->type(k, nullptr, nullptr, nullptr) != 0;
}
std::optional<std::string> SqliteUserDefaults::data(std::string_view k) const {
    std::string o;
    return database_->type(k, &o, nullptr, nullptr) == SQLITE_BLOB ? std::optional{o}
                                                                   : std::nullopt;
}
std::optional<std::string> SqliteUserDefaults::string(std::string_view k) const {
    std::string o;
    return database_->type(k, &o, nullptr, nullptr) == SQLITE_TEXT ? std::optional{o}
                                                                   : std::nullopt;
}
std::optional<std::int64_t> SqliteUserDefaults::integer(std::string_view k) const {
    long long i = 0;
    int t = database_->type(k, nullptr, &i, nullptr);
    return t == 1 || t == 2 ? std::optional<std::int64_t>{i} : std::nullopt;
}
std::optional<double> SqliteUserDefaults::number(std::string_view k) const {
    double i = 0;
    int t = database_->type(k, nullptr, nullptr, &i);
    return t == 1 || t == 2 ? std::optional{i} : std::nullopt;
}
std::optional<bool> SqliteUserDefaults::boolean(std::string_view k) const {
    if (auto n = number(k)) return *n != 0;
    if (auto s = string(k)) return *s == "YES" || *s == "true" || *s == "1";
    return std::nullopt;
}
void SqliteUserDefaults::setData(std::string_view k, std::string_view v) {
    database_->set(k, [&](sqlite3_stmt* s) {
        sqlite3_bind_blob(s, 2, v.data(), (int)v.size(), SQLITE_TRANSIENT);
    });
}
void SqliteUserDefaults::setString(std::string_view k, std::string_view v) {
    database_->set(k, [&](sqlite3_stmt* s) {
        sqlite3_bind_text(s, 2, v.data(), (int)v.size(), SQLITE_TRANSIENT);
    });
}
void SqliteUserDefaults::setInteger(std::string_view k, std::int64_t v) {
    database_->set(k, [&](sqlite3_stmt* s) { sqlite3_bind_int64(s, 2, v); });
}
void SqliteUserDefaults::setNumber(std::string_view k, double v) {
    database_->set(k, [&](sqlite3_stmt* s) { sqlite3_bind_double(s, 2, v); });
}
void SqliteUserDefaults::remove(std::string_view k) {
    sqlite3_stmt* s;
    sqlite3_prepare_v2(database_->db, "delete from defaults where key=?", -1, &s, nullptr);
    sqlite3_bind_text(s, 1, k.data(), (int)k.size(), SQLITE_TRANSIENT);
    sqlite3_step(s);
    sqlite3_finalize(s);
}
}  // namespace orvu

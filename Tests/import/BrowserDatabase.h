#pragma once

#include "foundation/Date.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <variant>
#include <vector>

namespace orvu {

/// A database as a browser makes it, open until the end of this object.
class BrowserDatabase {
public:
    using Value = std::variant<std::nullptr_t, std::int64_t, std::string>;

    explicit BrowserDatabase(const std::filesystem::path& file) {
        std::filesystem::create_directories(file.parent_path());
        EXPECT_EQ(sqlite3_open(file.c_str(), &handle_), SQLITE_OK);
    }
    BrowserDatabase(const BrowserDatabase&) = delete;
    BrowserDatabase& operator=(const BrowserDatabase&) = delete;
    ~BrowserDatabase() { sqlite3_close(handle_); }

    void run(const std::string& sql) {
        EXPECT_EQ(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle_) << " in " << sql;
    }
    void run(const std::string& sql, const std::vector<Value>& values) {
        sqlite3_stmt* statement = nullptr;
        ASSERT_EQ(sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle_);
        int parameter = 0;
        for (const Value& value : values) bind(statement, ++parameter, value);
        EXPECT_EQ(sqlite3_step(statement), SQLITE_DONE) << sqlite3_errmsg(handle_);
        sqlite3_finalize(statement);
    }

private:
    static void bind(sqlite3_stmt* statement, int parameter, const Value& value) {
        if (const auto* number = std::get_if<std::int64_t>(&value)) {
            sqlite3_bind_int64(statement, parameter, *number);
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            sqlite3_bind_text64(statement, parameter, text->data(), text->size(), SQLITE_TRANSIENT,
                                SQLITE_UTF8);
        }
    }

    sqlite3* handle_ = nullptr;
};

constexpr std::int64_t microseconds = 1'000'000;

inline std::int64_t chromiumTime(Date date) {
    return (date.wholeUnixSeconds() + 11'644'473'600) * microseconds;
}
inline std::int64_t firefoxTime(Date date) { return date.wholeUnixSeconds() * microseconds; }

/// A file "History" of Chromium's family; the older form has one column more.
class ChromiumHistory : public BrowserDatabase {
public:
    enum class Form { old, present };
    explicit ChromiumHistory(const std::filesystem::path& file, Form form = Form::present)
        : BrowserDatabase(file) {
        run("CREATE TABLE IF NOT EXISTS urls(id INTEGER PRIMARY KEY AUTOINCREMENT, "
            "url LONGVARCHAR, title LONGVARCHAR, visit_count INTEGER DEFAULT 0 NOT NULL, "
            "typed_count INTEGER DEFAULT 0 NOT NULL, last_visit_time INTEGER NOT NULL, "
            "hidden INTEGER DEFAULT 0 NOT NULL" +
            std::string{form == Form::old ? ", favicon_id INTEGER DEFAULT 0 NOT NULL)" : ")"});
        run("CREATE INDEX IF NOT EXISTS urls_url_index ON urls (url)");
    }
    void add(const Value& address, const Value& title, const Value& time, std::int64_t hidden = 0) {
        run("INSERT INTO urls(url, title, last_visit_time, hidden) VALUES(?, ?, ?, ?)",
            {address, title, time, hidden});
    }
    void add(const Value& address, const Value& title, Date date) {
        add(address, title, chromiumTime(date));
    }
};

/// A file "places.sqlite" of Firefox's family.
class FirefoxPlaces : public BrowserDatabase {
public:
    enum class Form { old, present };
    explicit FirefoxPlaces(const std::filesystem::path& file, Form form = Form::present)
        : BrowserDatabase(file) {
        const bool isOld = form == Form::old;
        run("CREATE TABLE moz_places(id INTEGER PRIMARY KEY, url LONGVARCHAR, title LONGVARCHAR, "
            "rev_host LONGVARCHAR, visit_count INTEGER DEFAULT 0, "
            "hidden INTEGER DEFAULT 0 NOT NULL, typed INTEGER DEFAULT 0 NOT NULL, " +
            std::string{isOld ? "favicon_id INTEGER, " : ""} +
            "frecency INTEGER DEFAULT -1 NOT NULL, last_visit_date INTEGER, guid TEXT" +
            std::string{isOld ? ")" : ", url_hash INTEGER DEFAULT 0 NOT NULL, description TEXT)"});
        run("CREATE INDEX moz_places_lastvisitdateindex ON moz_places (last_visit_date)");
        run("CREATE TABLE moz_bookmarks(id INTEGER PRIMARY KEY, type INTEGER, "
            "fk INTEGER DEFAULT NULL, parent INTEGER, position INTEGER, title LONGVARCHAR, "
            "keyword_id INTEGER, folder_type TEXT, dateAdded INTEGER, lastModified INTEGER)");
    }
    void addPlace(std::int64_t id, const Value& address, const Value& title, const Value& time,
                  std::int64_t hidden = 0) {
        run("INSERT INTO moz_places(id, url, title, last_visit_date, hidden) "
            "VALUES(?, ?, ?, ?, ?)",
            {id, address, title, time, hidden});
    }
    void addBookmark(const Value& place, const Value& title, std::int64_t type = 1) {
        run("INSERT INTO moz_bookmarks(type, fk, title) VALUES(?, ?, ?)", {type, place, title});
    }
};

}  // namespace orvu

#pragma once

#include "platform/linux/DatabaseFile.h"
#include "platform/linux/LogCheckpointer.h"
#include "platform/linux/Sqlite.h"

#include <memory>
#include <optional>
#include <string_view>

namespace orvu {

/// The table of named values, and what happens when its file turns out to be damaged or can't
/// be written. No operation fails loudly: what can't be read is absent, what can't be written
/// leaves the former value.
class UserDefaultsDatabase {
public:
    explicit UserDefaultsDatabase(const std::filesystem::path& file);
    ~UserDefaultsDatabase();
    UserDefaultsDatabase(const UserDefaultsDatabase&) = delete;
    UserDefaultsDatabase& operator=(const UserDefaultsDatabase&) = delete;

    [[nodiscard]] bool has(std::string_view key);
    /// What `take` makes of the key's row; nothing if there is none. `take` gets a row whose
    /// column 0 is the value.
    template <class T, class Take>
    [[nodiscard]] std::optional<T> read(std::string_view key, const Take& take);
    /// `bind` gets the statement and the number of the parameter that is the value.
    template <class Bind>
    void write(std::string_view key, const Bind& bind);
    void remove(std::string_view key);

private:
    enum class Opening { good, damaged, refused };
    struct Open {
        SqliteConnection connection;
        SqliteStatement has;
        SqliteStatement select;
        SqliteStatement upsert;
        SqliteStatement erase;
    };

    void openOrReplace();
    [[nodiscard]] Opening open();
    [[nodiscard]] Opening openTable();
    /// What the connection's last code says of the file.
    [[nodiscard]] Opening failure() const;
    [[nodiscard]] bool isSound();
    void openInMemory();
    void replaceDamaged();
    void startAnew();
    /// Takes over what can be read of a file with the same table.
    void copyFrom(const DatabaseFile& other);
    void copyRows(SqliteConnection& source);
    void watchLog();
    void close();

    /// Does `work`, which gives a result code. If that is of damage, begins anew and repeats it.
    template <class Work>
    void run(const Work& work);
    [[nodiscard]] static bool isDamage(int code);

    const DatabaseFile file_;
    std::optional<DatabaseFile::Identity> identity_;  ///< of the file that is open
    std::optional<LogCheckpointer> checkpointer_;
    Open open_;
};

template <class Work>
void UserDefaultsDatabase::run(const Work& work) {
    if (!isDamage(work())) return;
    startAnew();
    work();
}

template <class T, class Take>
std::optional<T> UserDefaultsDatabase::read(std::string_view key, const Take& take) {
    std::optional<T> result;
    run([&] {
        SqliteStatement::Turn row{open_.select};
        row.bindText(1, key);
        const int code = row.step();
        if (code == SQLITE_ROW) result = take(row);
        return code;
    });
    return result;
}

template <class Bind>
void UserDefaultsDatabase::write(std::string_view key, const Bind& bind) {
    run([&] {
        SqliteStatement::Turn row{open_.upsert};
        row.bindText(1, key);
        bind(row, 2);
        return row.step();
    });
}

}  // namespace orvu

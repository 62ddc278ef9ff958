#pragma once

#include "platform/linux/defaults/DatabaseFile.h"
#include "platform/linux/defaults/LogCheckpointer.h"
#include "platform/linux/defaults/Sqlite.h"

#include <memory>
#include <optional>
#include <string_view>

namespace orvu {

/// The table of named values, and what happens when its file turns out to be damaged or can't
/// be written. No operation fails loudly: what can't be read is absent, what can't be written
/// leaves the previous value.
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
    /// Batches may stand within one another; the outermost is one transaction.
    void beginBatch();
    /// Stores the batch, or none of it if one of its writes was refused.
    void endBatch();

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
    int run(const Work& work);
    template <class Work>
    void runWrite(const Work& work);
    [[nodiscard]] static bool isDamage(int code);

    const DatabaseFile file_;
    std::optional<DatabaseFile::Identity> identity_;  ///< of the file that is open
    std::optional<LogCheckpointer> checkpointer_;
    Open open_;
    int batches_ = 0;           ///< how many stand within one another
    bool batchFailed_ = false;  ///< a write of the present batch was refused
};

template <class Work>
int UserDefaultsDatabase::run(const Work& work) {
    const int code = work();
    if (!isDamage(code)) return code;
    startAnew();
    return work();
}

template <class Work>
void UserDefaultsDatabase::runWrite(const Work& work) {
    if (batchFailed_) return;
    if (run(work) != SQLITE_DONE && batches_ > 0) batchFailed_ = true;
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
    runWrite([&] {
        SqliteStatement::Turn row{open_.upsert};
        row.bindText(1, key);
        bind(row, 2);
        return row.step();
    });
}

}  // namespace orvu

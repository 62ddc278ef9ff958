#pragma once

#include "platform/linux/defaults/DatabaseFile.h"
#include "platform/linux/defaults/DefaultsTable.h"

namespace orvu {

/// Writes a whole new database beside a name that others know, and gives it that name when it is
/// complete. To be used under the folder's lock.
class DatabaseWriter {
public:
    /// Opens the half-made file, which is private to its owner and is removed at the end.
    explicit DatabaseWriter(const DatabaseFile& target);
    DatabaseWriter(const DatabaseWriter&) = delete;
    DatabaseWriter& operator=(const DatabaseWriter&) = delete;
    ~DatabaseWriter();

    /// Where the values go. Its failures count for `finish`.
    [[nodiscard]] DefaultsTable& table() { return table_; }
    [[nodiscard]] bool isGood() const { return isGood_; }
    /// Adds a value; false if that failed, now or before.
    bool add(std::string_view key, const ValueView& value);
    /// Waits for the disk and renames the file. False if anything has failed, and then the
    /// target is as before.
    [[nodiscard]] bool finish();

    /// Removes what an earlier process that was killed left of its work.
    static bool removeHalfMade(const DatabaseFile& target);

private:
    [[nodiscard]] static DatabaseFile halfMade(const DatabaseFile& target);

    const DatabaseFile target_;
    const DatabaseFile file_;
    SqliteConnection connection_;
    DefaultsTable table_;
    bool isGood_ = false;
};

}  // namespace orvu

#pragma once

#include "platform/linux/defaults/DatabaseFile.h"
#include "platform/linux/defaults/DefaultsTable.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What can be read of a database that may be damaged. Each value stands for itself.
struct Salvage {
    using Values = std::map<std::string, StoredValue, std::less<>>;

    Values sound;    ///< values with the right checksum, and those that have none
    Values damaged;  ///< values that are not what was written, where no sound one was found
    std::vector<Erasure> erasures;
    /// Whether all was read and sound, so that a key that is missing has no value.
    bool isComplete = false;

    /// Reads what it can of a database that nobody writes to meanwhile, with its log, and leaves
    /// the file as it is. Nothing of a file that a later version of the program wrote.
    [[nodiscard]] static Salvage of(const DatabaseFile& file);
    /// Whether a value was found that its checksum proves to be what was written.
    [[nodiscard]] bool isProven(std::string_view key) const;

private:
    enum class Trust { all, provenAlone };
    void readAll(SqliteConnection& source);
    void readBehindBadStart(const DatabaseFile& file);
    /// Whether each row was read.
    bool readRows(SqliteConnection& source, Trust trust);
    void take(const SqliteStatement::Turn& row, Trust trust);

    std::map<std::string, bool, std::less<>> isProven_;  ///< by its checksum, for each sound value
};

}  // namespace orvu

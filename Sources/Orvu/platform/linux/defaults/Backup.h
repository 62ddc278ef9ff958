#pragma once

#include "platform/linux/defaults/DatabaseFile.h"
#include "platform/linux/defaults/DefaultsTable.h"
#include "platform/linux/defaults/Salvage.h"

#include <chrono>
#include <map>
#include <optional>
#include <stop_token>
#include <string>

namespace orvu {

/// The older copy of a database, in a file ".backup" beside it that only its owner may read. To
/// be used under the folder's lock.
class Backup {
public:
    using Changes = std::map<std::string, std::optional<StoredValue>, std::less<>>;

    explicit Backup(const DatabaseFile& database) : file_(database.sibling(".backup")) {}

    [[nodiscard]] bool exists() const { return file_.hasContent(); }
    /// How long ago everything was copied last; nothing if that is unknown.
    [[nodiscard]] std::optional<std::chrono::seconds> age() const;
    /// Copies everything, if all of it can be read and is sound. False if it isn't, if the disk
    /// takes no more or a stop is asked for; then the copy is as before.
    bool make(SqliteConnection& source, const std::stop_token& stop);
    /// Sets or removes values, so that nothing is left of the ones before. A copy where that
    /// fails is deleted. False if it stands all the same.
    bool update(const Changes& changes);
    /// The values that are certain to be those that were copied.
    [[nodiscard]] Salvage::Values values() const;
    /// Removes what a process that was killed left behind.
    bool removeHalfMade();

private:
    [[nodiscard]] bool tryUpdate(const Changes& changes);

    const DatabaseFile file_;
};

}  // namespace orvu

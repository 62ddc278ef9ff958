#pragma once

#include "platform/linux/defaults/DatabaseFile.h"
#include "platform/linux/defaults/DefaultsTable.h"
#include "platform/linux/defaults/Housekeeper.h"
#include "platform/linux/defaults/LogCheckpointer.h"
#include "platform/linux/defaults/Salvage.h"
#include "platform/linux/defaults/Sqlite.h"
#include "platform/linux/defaults/StorageOptions.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace orvu {

/// The named values, and what happens when their file turns out to be damaged or can't be
/// written. No operation fails loudly: what can't be read is taken from the older copy or is
/// absent, what can't be written stays in memory until it can.
class UserDefaultsDatabase {
public:
    UserDefaultsDatabase(const std::filesystem::path& file, StorageOptions options);
    ~UserDefaultsDatabase();
    UserDefaultsDatabase(const UserDefaultsDatabase&) = delete;
    UserDefaultsDatabase& operator=(const UserDefaultsDatabase&) = delete;

    [[nodiscard]] std::optional<StoredValue> read(std::string_view key);
    /// Sets the value, or removes it if there is none.
    void write(std::string_view key, std::optional<StoredValue> value);
    void setAside(std::string_view key) { doubted_.emplace(key); }
    /// Batches may stand within one another; the outermost is one transaction.
    void beginBatch() { ++batches_; }
    void endBatch();

private:
    enum class Opening { good, damaged, refused };
    struct Write {
        std::optional<StoredValue> value;  ///< nothing removes the key
        bool isRepair = false;             ///< of a value that was found damaged
        bool isLater = false;              ///< another one, unwritten as well, came before it
    };

    void openOrReplace();
    [[nodiscard]] Opening open();
    [[nodiscard]] Opening openTable();
    [[nodiscard]] Opening failure(int code) const;
    [[nodiscard]] bool isSound();
    void openInMemory();
    void readIntoMemory();
    void replaceDamaged();
    void startAnew();
    void watch();
    void close();

    [[nodiscard]] bool writeSalvaged(const Salvage& salvage) const;
    /// What can be read of the file and, where that is not all, of its older copy.
    [[nodiscard]] Salvage salvaged() const;
    void write(std::string_view key, Write write);
    [[nodiscard]] std::optional<StoredValue> repaired(std::string_view key);

    /// Whether a value changes with each page, so that its changes are no deletions.
    [[nodiscard]] bool isPassing(std::string_view key) const;

    /// Does `work`, which gives a result code. If that is of damage, begins anew and repeats it.
    template <class Work>
    int run(const Work& work);
    /// Writes all that is unwritten, or nothing of it.
    void commit();
    [[nodiscard]] int tryCommit();
    [[nodiscard]] int writeOne(const std::string& key, const Write& write);
    /// Keeps or drops what the write of a key takes away.
    [[nodiscard]] int seeToPrevious(const std::string& key, const Write& write);
    [[nodiscard]] int noteDeletion(const std::string& key);

    const DatabaseFile file_;
    const StorageOptions options_;
    std::optional<DatabaseFile::Identity> identity_;  ///< of the file that is open
    std::optional<LogCheckpointer> checkpointer_;
    std::optional<Housekeeper> housekeeper_;
    SqliteConnection connection_;
    DefaultsTable table_;
    int batches_ = 0;  ///< how many stand within one another
    /// Of the present batch, and what the disk did not take.
    std::map<std::string, Write, std::less<>> unwritten_;
    std::set<std::string, std::less<>>
        trusted_;  ///< keys whose stored values are known to be sound
    std::set<std::string, std::less<>> doubted_;  ///< keys whose stored values nobody could read
    bool hasErased_ = false;                      ///< the present transaction notes an erasure
    bool hasDeleted_ = false;                     ///< and it is a deletion
};

}  // namespace orvu

#pragma once

#include "platform/UserDefaults.h"
#include "platform/linux/defaults/StorageOptions.h"

#include <filesystem>
#include <memory>

namespace orvu {

class UserDefaultsDatabase;

/// The program's named values in one SQLite database with a write-ahead log.
///
/// What is stored is not lost:
/// - A write is there after the process was killed at any moment, and is whole or not there at
///   all. One that the disk does not take counts in memory, and is written with the next one.
/// - Each value has a checksum. Of a damaged one, the value of the older copy counts, which is
///   made in a thread, at most once a day, from a database that reads whole.
/// - A file that is cut short or damaged otherwise is set aside. Each value that can still be
///   read comes into the new one; for the others those of the older copy do.
/// - A damaged value, and one that nobody could read (`setAside`), is kept aside in the database
///   when another takes its place: the latest eight, sixteen million bytes at most.
///
/// What a person deletes is deleted: a value that is removed, and what is gone from a document
/// that is not one of `StorageOptions::passing`. The older copy has nothing of it any more, nor
/// have the values set aside under that key and those of the passing documents beside it, nor the
/// log; and files that were set aside as damaged are deleted. All this is so a moment later, at
/// the latest when the object goes, or right after the next start if the process was killed. What
/// a passing document has lost may stand in the log until the object goes.
class SqliteUserDefaults : public UserDefaults {
public:
    /// Opens or makes the database at `file`, and its folder. One that is damaged, or was written
    /// by a later version of the program, is set aside under another name in the same folder; a
    /// new one takes its place, with what can still be read of a damaged one. The same happens
    /// when damage shows later, and where the file is gone and its older copy is not. Where
    /// nothing can be written the values live in memory.
    explicit SqliteUserDefaults(const std::filesystem::path& file, StorageOptions options = {});
    ~SqliteUserDefaults() override;

    [[nodiscard]] bool hasObject(std::string_view key) const override;
    [[nodiscard]] std::optional<std::string> data(std::string_view key) const override;
    [[nodiscard]] std::optional<std::string> string(std::string_view key) const override;
    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const override;
    [[nodiscard]] std::optional<double> number(std::string_view key) const override;
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const override;

    void setData(std::string_view key, std::string_view bytes) override;
    void setString(std::string_view key, std::string_view text) override;
    void setInteger(std::string_view key, std::int64_t number) override;
    /// A NaN has no effect.
    void setNumber(std::string_view key, double number) override;
    void remove(std::string_view key) override;
    void setAside(std::string_view key) override;

private:
    void beginBatch() override;
    void endBatch() override;

    std::unique_ptr<UserDefaultsDatabase> database_;
};

}  // namespace orvu

#pragma once

#include "platform/UserDefaults.h"

#include <filesystem>
#include <memory>

namespace orvu {

class UserDefaultsDatabase;

/// The program's named values in one SQLite database with a write-ahead log. A write is there
/// after the process was killed at any moment, and is whole or not there at all.
class SqliteUserDefaults : public UserDefaults {
public:
    /// Opens or makes the database at `file`, and its folder. One that is damaged, or was written
    /// by a later version of the program, is set aside under another name in the same folder; a
    /// new one takes its place, with what can still be read of a damaged one. The same happens
    /// when damage shows later. Where nothing can be written the values live in memory.
    explicit SqliteUserDefaults(const std::filesystem::path& file);
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
    /// A NaN is refused like a write to a full disk.
    void setNumber(std::string_view key, double number) override;
    void remove(std::string_view key) override;

private:
    void beginBatch() override;
    void endBatch() override;

    std::unique_ptr<UserDefaultsDatabase> database_;
};

}  // namespace orvu

#pragma once

#include "platform/linux/defaults/StoredValue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What a write has taken away, noted down in the same transaction until it is gone everywhere.
struct Erasure {
    std::int64_t number = 0;  ///< rises
    std::string key;
    /// Whether a person deleted something. Otherwise the value merely moved on, as a session
    /// does with each page.
    bool isDeletion = false;
};

/// The tables of named values over one connection, which must outlive it. Functions without a
/// result of their own give a code of the library.
///
/// - `defaults` has the values, each with its checksum. One that a program wrote that knows none
///   has no checksum.
/// - `erasures` has what was taken away and may still stand elsewhere, see `Erasure`.
/// - `setAside` has values that were damaged, or that nobody could read, when they were replaced.
class DefaultsTable {
public:
    /// To be raised with each change that an older program could not live with; a file that bears
    /// a greater one is not ours to read.
    static constexpr std::int64_t schemaVersion = 1;

    enum class Form { ours, empty, strange, unreadable };

    DefaultsTable() = default;
    explicit DefaultsTable(SqliteConnection& connection) : connection_(&connection) {}

    /// Whether the file has our table. The connection's status tells why it is unreadable.
    [[nodiscard]] Form form();
    /// Makes what is missing of the tables, also beside the table of a program that knew no
    /// checksums.
    [[nodiscard]] int create();
    /// To be called once before all that follows. Not `SQLITE_OK` if the tables don't fit.
    [[nodiscard]] int prepare();

    struct Row {
        StoredValue value;
        bool isSound = true;  ///< false if it isn't what was once written
    };
    /// `row` stays empty if there is none.
    int read(std::string_view key, std::optional<Row>& row);
    /// Puts `value` in the place of what stands.
    int write(std::string_view key, const ValueView& value);
    int remove(std::string_view key);
    enum class Check { checksum, none };
    /// Hands the value that stands to `see`, with whether it is sound.
    template <class See>
    int inspect(std::string_view key, Check check, const See& see);
    [[nodiscard]] std::vector<std::string> keys();

    int note(std::string_view key, bool isDeletion);
    [[nodiscard]] std::vector<Erasure> erasures();
    int forgetErasures(std::int64_t upTo);

    /// Copies the value that stands to those set aside, unless it has more than `bytesSetAside`.
    /// The oldest go, so that the others are at most `mostSetAside` and that large together.
    int setAside(std::string_view key);
    /// Drops the values of this key that were set aside.
    int dropSetAside(std::string_view key);
    static constexpr int mostSetAside = 8;
    static constexpr std::int64_t bytesSetAside = 16 << 20;

private:
    SqliteConnection* connection_ = nullptr;
    SqliteStatement select_;
    SqliteStatement upsert_;
    SqliteStatement erase_;
    SqliteStatement note_;
};

template <class See>
int DefaultsTable::inspect(std::string_view key, Check check, const See& see) {
    SqliteStatement::Turn row{select_};
    row.bindText(1, key);
    const int code = row.step();
    if (code != SQLITE_ROW) return code;
    const auto value = ValueView::of(row, 0);
    const bool isSound = check == Check::none || row.type(1) != SQLITE_INTEGER ||
                         row.integer(1) == value.checksum(key);
    see(value, isSound);
    return code;
}

}  // namespace orvu

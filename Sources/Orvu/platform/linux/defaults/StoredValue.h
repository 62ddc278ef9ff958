#pragma once

#include "platform/linux/defaults/Sqlite.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace orvu {

/// What stands, or is to stand, under a key, where it lies: texts and data are not copied.
struct ValueView {
    int type = SQLITE_NULL;  ///< one of the database's types
    std::string_view bytes;  ///< of a text or of data
    std::int64_t integer = 0;
    double real = 0;

    [[nodiscard]] static ValueView ofText(std::string_view text) {
        return {SQLITE_TEXT, text, 0, 0};
    }
    [[nodiscard]] static ValueView ofData(std::string_view data) {
        return {SQLITE_BLOB, data, 0, 0};
    }
    [[nodiscard]] static ValueView ofInteger(std::int64_t n) { return {SQLITE_INTEGER, {}, n, 0}; }
    [[nodiscard]] static ValueView ofReal(double number) { return {SQLITE_FLOAT, {}, 0, number}; }
    /// The value in a column of the present row; it stands until the row's next step.
    [[nodiscard]] static ValueView of(const SqliteStatement::Turn& row, int column);
    /// Gives the parameter this value, which must stand until the turn is over.
    void bind(SqliteStatement::Turn& turn, int parameter) const;

    /// Tells the value under this key from a damaged one. A change within one word of
    /// eight bytes always shows. It is no protection from somebody who wants to deceive.
    [[nodiscard]] std::int64_t checksum(std::string_view key) const;
    /// Whether all of `previous` still stands in this value, in one or two pieces.
    [[nodiscard]] bool extends(const ValueView& previous) const;
    /// Whether this value, in the place of `previous`, takes anything away: false if it extends
    /// it, or lacks no more than a beginning that made room for new things at the end, as the
    /// oldest of a list that is full.
    [[nodiscard]] bool loses(const ValueView& previous) const;
    /// Whether this is a list without entries, or nothing at all.
    [[nodiscard]] bool isEmpty() const;
};

/// A value with its bytes.
struct StoredValue {
    int type = SQLITE_NULL;
    std::string bytes;
    std::int64_t integer = 0;
    double real = 0;

    StoredValue() = default;
    explicit StoredValue(const ValueView& view)
        : type(view.type), bytes(view.bytes), integer(view.integer), real(view.real) {}
    [[nodiscard]] ValueView view() const { return {type, bytes, integer, real}; }
    friend bool operator==(const StoredValue&, const StoredValue&) = default;
};

}  // namespace orvu

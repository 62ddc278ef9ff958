#include "platform/linux/defaults/SqliteUserDefaults.h"

#include "platform/linux/defaults/UserDefaultsDatabase.h"

#include <cmath>
#include <string>

namespace orvu {
namespace {

using Row = SqliteStatement::Turn;

std::optional<std::string> bytesOfType(const Row& row, int type) {
    return row.type(0) == type ? std::optional{std::string{row.bytes(0)}} : std::nullopt;
}

std::optional<double> number(const Row& row) {
    const int type = row.type(0);
    return type == SQLITE_INTEGER || type == SQLITE_FLOAT ? std::optional{row.real(0)}
                                                          : std::nullopt;
}

/// Cut towards zero; nothing for a number beyond 64 bits.
std::optional<std::int64_t> integer(const Row& row) {
    if (row.type(0) == SQLITE_INTEGER) return row.integer(0);
    constexpr double limit = 9223372036854775808.0;  // 2^63
    const auto real = number(row);
    if (!real || !(*real >= -limit && *real < limit)) return std::nullopt;
    return static_cast<std::int64_t>(*real);
}

std::optional<bool> boolean(const Row& row) {
    if (row.type(0) == SQLITE_TEXT) {
        const auto text = row.bytes(0);
        return text == "YES" || text == "true" || text == "1";
    }
    const auto real = number(row);
    return real ? std::optional{*real != 0} : std::nullopt;
}

}  // namespace

SqliteUserDefaults::SqliteUserDefaults(const std::filesystem::path& file)
    : database_(std::make_unique<UserDefaultsDatabase>(file)) {}

SqliteUserDefaults::~SqliteUserDefaults() = default;

bool SqliteUserDefaults::hasObject(std::string_view key) const { return database_->has(key); }

std::optional<std::string> SqliteUserDefaults::data(std::string_view key) const {
    return database_->read<std::string>(
        key, [](const Row& row) { return bytesOfType(row, SQLITE_BLOB); });
}

std::optional<std::string> SqliteUserDefaults::string(std::string_view key) const {
    return database_->read<std::string>(
        key, [](const Row& row) { return bytesOfType(row, SQLITE_TEXT); });
}

std::optional<std::int64_t> SqliteUserDefaults::integer(std::string_view key) const {
    return database_->read<std::int64_t>(key, orvu::integer);
}

std::optional<double> SqliteUserDefaults::number(std::string_view key) const {
    return database_->read<double>(key, orvu::number);
}

std::optional<bool> SqliteUserDefaults::boolean(std::string_view key) const {
    return database_->read<bool>(key, orvu::boolean);
}

void SqliteUserDefaults::setData(std::string_view key, std::string_view bytes) {
    database_->write(key, [&](Row& row, int value) { row.bindBlob(value, bytes); });
}

void SqliteUserDefaults::setString(std::string_view key, std::string_view text) {
    database_->write(key, [&](Row& row, int value) { row.bindText(value, text); });
}

void SqliteUserDefaults::setInteger(std::string_view key, std::int64_t number) {
    database_->write(key, [&](Row& row, int value) { row.bindInteger(value, number); });
}

void SqliteUserDefaults::setNumber(std::string_view key, double number) {
    if (std::isnan(number)) return;  // the database has no form for it
    database_->write(key, [&](Row& row, int value) { row.bindReal(value, number); });
}

void SqliteUserDefaults::remove(std::string_view key) { database_->remove(key); }

void SqliteUserDefaults::beginBatch() { database_->beginBatch(); }

void SqliteUserDefaults::endBatch() { database_->endBatch(); }

}  // namespace orvu

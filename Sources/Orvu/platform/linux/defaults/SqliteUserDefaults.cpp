#include "platform/linux/defaults/SqliteUserDefaults.h"

#include "platform/linux/defaults/UserDefaultsDatabase.h"

#include <cmath>
#include <string>
#include <utility>

namespace orvu {
namespace {

/// The library takes no larger texts and data.
constexpr std::size_t mostBytes = 999'000'000;

std::optional<std::string> bytesOfType(std::optional<StoredValue> value, int type) {
    if (!value || value->type != type) return std::nullopt;
    return std::move(value->bytes);
}

std::optional<double> realOf(const StoredValue& value) {
    if (value.type == SQLITE_INTEGER) return static_cast<double>(value.integer);
    return value.type == SQLITE_FLOAT ? std::optional{value.real} : std::nullopt;
}

/// Cut towards zero; nothing for a number beyond 64 bits.
std::optional<std::int64_t> integerOf(const StoredValue& value) {
    if (value.type == SQLITE_INTEGER) return value.integer;
    constexpr double limit = 9223372036854775808.0;  // 2^63
    const auto real = realOf(value);
    if (!real || !(*real >= -limit && *real < limit)) return std::nullopt;
    return static_cast<std::int64_t>(*real);
}

std::optional<bool> booleanOf(const StoredValue& value) {
    if (value.type == SQLITE_TEXT) {
        return value.bytes == "YES" || value.bytes == "true" || value.bytes == "1";
    }
    const auto real = realOf(value);
    return real ? std::optional{*real != 0} : std::nullopt;
}

}  // namespace

SqliteUserDefaults::SqliteUserDefaults(const std::filesystem::path& file, StorageOptions options)
    : database_(std::make_unique<UserDefaultsDatabase>(file, std::move(options))) {}

SqliteUserDefaults::~SqliteUserDefaults() = default;

bool SqliteUserDefaults::hasObject(std::string_view key) const {
    return database_->read(key).has_value();
}

std::optional<std::string> SqliteUserDefaults::data(std::string_view key) const {
    return bytesOfType(database_->read(key), SQLITE_BLOB);
}

std::optional<std::string> SqliteUserDefaults::string(std::string_view key) const {
    return bytesOfType(database_->read(key), SQLITE_TEXT);
}

std::optional<std::int64_t> SqliteUserDefaults::integer(std::string_view key) const {
    return database_->read(key).and_then(integerOf);
}

std::optional<double> SqliteUserDefaults::number(std::string_view key) const {
    return database_->read(key).and_then(realOf);
}

std::optional<bool> SqliteUserDefaults::boolean(std::string_view key) const {
    return database_->read(key).and_then(booleanOf);
}

void SqliteUserDefaults::setData(std::string_view key, std::string_view bytes) {
    if (bytes.size() > mostBytes) return;
    database_->write(key, StoredValue{ValueView::ofData(bytes)});
}

void SqliteUserDefaults::setString(std::string_view key, std::string_view text) {
    if (text.size() > mostBytes) return;
    database_->write(key, StoredValue{ValueView::ofText(text)});
}

void SqliteUserDefaults::setInteger(std::string_view key, std::int64_t number) {
    database_->write(key, StoredValue{ValueView::ofInteger(number)});
}

void SqliteUserDefaults::setNumber(std::string_view key, double number) {
    if (std::isnan(number)) return;  // the database has no form for it
    database_->write(key, StoredValue{ValueView::ofReal(number)});
}

void SqliteUserDefaults::remove(std::string_view key) { database_->write(key, std::nullopt); }

void SqliteUserDefaults::setAside(std::string_view key) { database_->setAside(key); }

void SqliteUserDefaults::beginBatch() { database_->beginBatch(); }

void SqliteUserDefaults::endBatch() { database_->endBatch(); }

}  // namespace orvu

#include "foundation/Uuid.h"

#include <sys/random.h>

#include <cstring>
#include <random>

namespace orvu {
namespace {

constexpr std::string_view digits = "0123456789ABCDEF";

/// The value of each hexadecimal digit, -1 for every other byte.
constexpr auto digitValues = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (std::uint8_t value = 0; value < 16; ++value) {
        const auto digit = static_cast<std::uint8_t>(digits[value]);
        values[digit] = static_cast<std::int8_t>(value);
        if (value >= 10) values[digit - 'A' + 'a'] = static_cast<std::int8_t>(value);
    }
    return values;
}();

int digitValue(char c) { return digitValues[static_cast<std::uint8_t>(c)]; }

/// Whether a hyphen stands before the byte with this number.
bool hyphenBefore(std::size_t byte) { return byte == 4 || byte == 6 || byte == 8 || byte == 10; }

}  // namespace

Uuid Uuid::random() {
    Uuid id;
    const auto length = static_cast<ssize_t>(id.bytes_.size());
    if (getrandom(id.bytes_.data(), id.bytes_.size(), 0) != length) {
        std::random_device device;
        for (auto& byte : id.bytes_) byte = static_cast<std::uint8_t>(device());
    }
    id.bytes_[6] = static_cast<std::uint8_t>((id.bytes_[6] & 0x0F) | 0x40);
    id.bytes_[8] = static_cast<std::uint8_t>((id.bytes_[8] & 0x3F) | 0x80);
    return id;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != 36) return std::nullopt;
    Uuid id;
    std::size_t at = 0;
    for (std::size_t byte = 0; byte < id.bytes_.size(); ++byte) {
        if (hyphenBefore(byte) && text[at++] != '-') return std::nullopt;
        const int high = digitValue(text[at]);
        const int low = digitValue(text[at + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        id.bytes_[byte] = static_cast<std::uint8_t>(high * 16 + low);
        at += 2;
    }
    return id;
}

std::string Uuid::string() const {
    std::string text(36, '-');
    std::size_t at = 0;
    for (std::size_t byte = 0; byte < bytes_.size(); ++byte) {
        if (hyphenBefore(byte)) ++at;
        text[at++] = digits[bytes_[byte] >> 4];
        text[at++] = digits[bytes_[byte] & 0x0F];
    }
    return text;
}

}  // namespace orvu

std::size_t std::hash<orvu::Uuid>::operator()(const orvu::Uuid& id) const noexcept {
    // The bytes are random already: any eight of them spread well.
    std::size_t value = 0;
    std::memcpy(&value, id.bytes().data(), sizeof value);
    return value;
}

#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// A universally unique identifier. The nil identifier is the default value.
class Uuid {
public:
    constexpr Uuid() = default;

    /// A fresh random identifier (version 4).
    [[nodiscard]] static Uuid random();
    /// Reads the canonical form of 36 characters, in either case of letters.
    [[nodiscard]] static std::optional<Uuid> parse(std::string_view text);

    /// The canonical form, in capitals.
    [[nodiscard]] std::string string() const;
    [[nodiscard]] const std::array<std::uint8_t, 16>& bytes() const { return bytes_; }

    friend auto operator<=>(const Uuid&, const Uuid&) = default;

private:
    std::array<std::uint8_t, 16> bytes_{};
};

}  // namespace orvu

template <>
struct std::hash<orvu::Uuid> {
    std::size_t operator()(const orvu::Uuid& id) const noexcept;
};

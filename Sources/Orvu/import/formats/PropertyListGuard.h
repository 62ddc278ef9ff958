#pragma once

#include <cstddef>
#include <string_view>

namespace orvu {

/// Whether a property list can be handed to the library that reads it. In the binary form an object
/// may stand in many places, and the library copies it into each: a few hundred bytes can mean more
/// than any memory holds. And it goes as deep as the list does.
struct PropertyListGuard {
    static constexpr std::size_t mostNodes = 1'000'000;  ///< with all copies
    static constexpr std::size_t deepest = 500;

    /// False for what is no property list too. Takes time that grows with the length alone.
    [[nodiscard]] static bool allows(std::string_view bytes);
};

}  // namespace orvu

#pragma once

#include "foundation/Date.h"

#include <cstddef>

namespace orvu {

/// Tells a page that changes its address so often, to such lengths, that nothing else gets done.
///
/// Each change passes through the program, whose engine reads the whole address several times over,
/// on the main thread. Ordinary addresses never count.
class AddressFlood {
public:
    AddressFlood() = default;

    /// Shorter addresses don't count, in bytes.
    static constexpr std::size_t shortest = 64 * std::size_t{1024};
    /// How much a page may make in a period, in bytes: the keystrokes of an editor that keeps a large
    /// drawing there.
    static constexpr std::size_t limit = 12 * std::size_t{1024} * 1024;
    /// Long enough for a computer that is so busy with them that it takes but one in a second.
    static constexpr double period = 8;  // seconds
    /// Fewer are never too much, however long.
    static constexpr int fewest = 3;

    /// An address of so many bytes was set. Whether that is too much.
    [[nodiscard]] bool add(std::size_t bytes, Date now) {
        if (bytes < shortest) return false;
        const double passed = now.secondsSince(begin_);
        if (passed < 0 || passed >= period) *this = AddressFlood{now};
        sum_ += bytes;
        return ++changes_ >= fewest && sum_ > limit;
    }

private:
    explicit AddressFlood(Date begin) : begin_(begin) {}

    Date begin_ = Date::distantPast();
    std::size_t sum_ = 0;  ///< of bytes since then
    int changes_ = 0;      ///< since then
};

}  // namespace orvu

#pragma once

#include "foundation/Url.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// What the server's manifest offers.
struct UpdateRelease {
    static constexpr std::uint64_t longest = 64 << 10;  ///< bytes of a manifest

    std::string version;  ///< for people alone
    std::int64_t build = 0;
    Url url;             ///< the archive
    std::string sha256;  ///< of the archive, in hexadecimal of either case

    /// Nothing if one of the four is missing or of another type. Other keys don't count.
    [[nodiscard]] static std::optional<UpdateRelease> parse(std::string_view manifest);

    friend bool operator==(const UpdateRelease&, const UpdateRelease&) = default;
};

}  // namespace orvu

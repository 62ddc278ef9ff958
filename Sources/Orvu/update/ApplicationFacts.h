#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvu {

/// What a copy of the program says of itself, in the file `release` at the top of its folder: a
/// line each "version 1.2", "build 12" and "identity app.orvu.Orvu", in any order.
struct ApplicationFacts {
    static constexpr std::string_view fileName = "release";
    static constexpr std::string_view program = "bin/orvu";

    std::string version = "0";
    std::int64_t build = 0;  ///< 0 if it isn't told or is no number
    std::string identity;

    [[nodiscard]] static ApplicationFacts parse(std::string_view text);
    [[nodiscard]] std::string string() const;

    friend bool operator==(const ApplicationFacts&, const ApplicationFacts&) = default;
};

}  // namespace orvu

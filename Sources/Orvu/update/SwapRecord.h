#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// What one start has to know of those before it, in a small file beside the application.
struct SwapRecord {
    /// How often a new copy may be started without showing a window.
    static constexpr int mostStarts = 2;

    enum class Phase {
        none,
        swapping,    ///< `to` is on its way into the place of `from`
        trial,       ///< `to` is there and hasn't shown a window yet
        takingBack,  ///< `from` is on its way back
    };

    Phase phase = Phase::none;
    std::int64_t from = 0;       ///< build
    std::int64_t to = 0;         ///< build
    int starts = 0;              ///< of `to` that have begun
    std::int64_t takenBack = 0;  ///< the greatest build that failed

    /// Nothing if `text` isn't as `string` writes it.
    [[nodiscard]] static std::optional<SwapRecord> parse(std::string_view text);
    [[nodiscard]] std::string string() const;

    friend bool operator==(const SwapRecord&, const SwapRecord&) = default;
};

}  // namespace orvu

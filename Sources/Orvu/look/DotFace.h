#pragma once

#include "foundation/Date.h"

#include <array>
#include <limits>
#include <optional>
#include <string_view>

namespace orvu {

enum class Mood {
    idle,
    happy,
    music,
    sleepy,
    listening,
    thinking,
    surprised,
    talking,
    curious,
};

/// All moods, in the order of the enumeration.
inline constexpr std::array allMoods{Mood::idle,      Mood::happy,     Mood::music,
                                     Mood::sleepy,    Mood::listening, Mood::thinking,
                                     Mood::surprised, Mood::talking,   Mood::curious};

/// The name by which a mood is stored: that of its enumerator.
[[nodiscard]] std::string_view rawValue(Mood mood);

/// One dot of the face.
struct DotCell {
    bool accent = false;  ///< in the accent colour instead of white
    double opacity = 0;   ///< 0 to 1

    friend constexpr bool operator==(const DotCell&, const DotCell&) = default;
};

/// A face of dark dots on a lit display, which breathes, blinks and looks around.
struct DotFaceModel {
    static constexpr int columns = 13;
    static constexpr int rows = 11;
    static constexpr double fullyRevealed = std::numeric_limits<double>::infinity();

    static constexpr std::size_t count = 143;
    static_assert(columns * rows == 143);

    using Cells = std::array<DotCell, count>;

    /// The dots row after row, at `t` ticks of which a second has nine. `lookX` moves the gaze
    /// by columns, to the left if negative; only what lies within `reveal` dots of the middle
    /// is shown.
    [[nodiscard]] static Cells cells(Mood mood, double t, int lookX, double reveal = fullyRevealed);
};

/// A mood that is shown for a moment.
struct MoodReaction {
    Mood mood;
    Date until;
};

/// The mood that a face shows `now`.
[[nodiscard]] Mood effectiveMood(Mood standing, const std::optional<MoodReaction>& reaction,
                                 Date now);
/// The face's time in ticks.
[[nodiscard]] double ticks(Date now);
/// How far, in dots, a face has come in that began to at `revealFrom`.
[[nodiscard]] double revealRadius(std::optional<Date> revealFrom, Date now);

}  // namespace orvu

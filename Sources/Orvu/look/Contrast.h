#pragma once

#include "look/drawing/Paint.h"

namespace orvu {

/// How much light a colour gives, from 0 for black to 1 for white.
[[nodiscard]] double relativeLuminance(Color color);
/// The contrast of two colours, from 1 for the same light to 21 for black on white.
[[nodiscard]] double contrastRatio(Color one, Color other);
/// What `paint` looks like on an opaque ground.
[[nodiscard]] Color blend(Paint paint, Color ground);
/// White, or `Desk::notchInk` where that is easier to read on `ground`.
[[nodiscard]] Color labelColor(Color ground);

}  // namespace orvu

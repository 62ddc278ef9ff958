#include "look/Contrast.h"

#include "look/Desk.h"

#include <algorithm>
#include <cmath>

namespace orvu {
namespace {

/// A component of a colour as an amount of light.
double light(std::uint8_t component) {
    const double value = component / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

}  // namespace

double relativeLuminance(Color color) {
    return 0.2126 * light(color.red) + 0.7152 * light(color.green) + 0.0722 * light(color.blue);
}

double contrastRatio(Color one, Color other) {
    const auto [dark, bright] = std::minmax({relativeLuminance(one), relativeLuminance(other)});
    return (bright + 0.05) / (dark + 0.05);
}

Color blend(Paint paint, Color ground) {
    const auto mix = [&](std::uint8_t above, std::uint8_t below) {
        return static_cast<std::uint8_t>(std::lround(std::lerp(below, above, paint.opacity)));
    };
    return {mix(paint.color.red, ground.red), mix(paint.color.green, ground.green),
            mix(paint.color.blue, ground.blue)};
}

Color labelColor(Color ground) {
    const double white = contrastRatio(Desk::white, ground);
    return white >= contrastRatio(Desk::notchInk, ground) ? Desk::white : Desk::notchInk;
}

}  // namespace orvu

#include "shell/SplitPages.h"

#include <algorithm>
#include <cmath>

namespace orvu {

SplitPages::Widths SplitPages::widths(int width) const {
    const int usable = std::max(width - dividerWidth, 1);
    const int wanted = static_cast<int>(std::lround(usable * fraction_));
    const int first = std::min(std::max(smallestPane, wanted), usable - smallestPane);
    return {std::max(first, 0), usable - std::max(first, 0)};
}

void SplitPages::dragTo(double x, int width) {
    if (width <= 0) return;
    fraction_ = std::clamp(x / width, smallestFraction, largestFraction);
}

void SplitPages::step(int steps) {
    fraction_ = std::clamp(fraction_ + steps * keyStep, smallestFraction, largestFraction);
}

}  // namespace orvu

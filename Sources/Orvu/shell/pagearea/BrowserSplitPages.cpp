#include "shell/pagearea/BrowserSplitPages.h"

#include <algorithm>
#include <cmath>

namespace orvu {

BrowserSplitPages::Widths BrowserSplitPages::widths(int width) const {
    const int usable = std::max(width - dividerWidth, 1);
    const int preferred = static_cast<int>(std::lround(usable * fraction_));
    const int first = std::min(std::max(minPaneWidth, preferred), usable - minPaneWidth);
    return {std::max(first, 0), usable - std::max(first, 0)};
}

void BrowserSplitPages::dragTo(double x, int width) {
    if (width <= 0) return;
    fraction_ = std::clamp(x / width, minFraction, maxFraction);
}

void BrowserSplitPages::step(int steps) {
    fraction_ = std::clamp(fraction_ + steps * keyStep, minFraction, maxFraction);
}

}  // namespace orvu

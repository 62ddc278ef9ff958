#include "look/drawing/LoadingDots.h"

#include <algorithm>
#include <cmath>

namespace orvu {

bool LoadingDots::isLit(int dot) const {
    return static_cast<double>(dot) / std::max(count, 1) <= progress;
}

double LoadingDots::opacity(int dot, double time) const {
    if (!isLit(dot)) return unlit;
    return (std::sin(6 * time - 0.35 * dot) / 2 + 0.5) * 0.6 + 0.4;
}

double LoadingDots::centre(int dot, double width) const {
    const double step = count > 1 ? (width - diameter) / (count - 1) : 0;
    return diameter / 2 + step * dot;
}

}  // namespace orvu

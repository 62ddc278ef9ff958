#include "look/drawing/NotchShape.h"

#include <algorithm>
#include <cmath>

namespace orvu {

double NotchShape::radius(double width, double height) const {
    return std::max(0.0, std::min({bottomRadius, (width - 2 * ear) / 2, height / 2}));
}

NotchShape::Outline NotchShape::outline(double width, double height) const {
    const double w = width;
    const double h = height;
    const double e = ear;
    const double r = radius(width, height);
    const double k = 0.45 * r;
    return {
        MoveTo{{0, 0}},
        QuadraticTo{{e, 0}, {e, e}},
        LineTo{{e, h - r}},
        CubicTo{{e, h - k}, {e + k, h}, {e + r, h}},
        LineTo{{w - e - r, h}},
        CubicTo{{w - e - k, h}, {w - e, h - k}, {w - e, h - r}},
        LineTo{{w - e, e}},
        QuadraticTo{{w - e, 0}, {w, 0}},
        ClosePath{},
    };
}

NotchShape NotchShape::between(NotchShape from, NotchShape to, double progress) {
    return {std::lerp(from.bottomRadius, to.bottomRadius, progress),
            std::lerp(from.ear, to.ear, progress)};
}

}  // namespace orvu

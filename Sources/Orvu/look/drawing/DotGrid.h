#pragma once

#include "look/drawing/Path.h"

#include <cmath>
#include <vector>

namespace orvu {

/// A square grid of dots, as on dotted paper.
struct DotGrid {
    double pitch = 20;    ///< from one dot's centre to the next one's
    double first = 10;    ///< from the edge to the first dot's centre
    double diameter = 2;  ///< of a dot

    /// How many dots stand in a row of this length. One exactly on the far edge is not drawn.
    [[nodiscard]] int count(double length) const {
        if (!(length > first)) return 0;
        return static_cast<int>(std::ceil((length - first) / pitch));
    }

    /// The dots' centres, row after row.
    [[nodiscard]] std::vector<PathPoint> centres(double width, double height) const {
        std::vector<PathPoint> points;
        for (int row = 0; row < count(height); ++row) {
            for (int column = 0; column < count(width); ++column) {
                points.push_back({first + column * pitch, first + row * pitch});
            }
        }
        return points;
    }
};

}  // namespace orvu

#pragma once

namespace orvu {

/// A place on the screen or in a window, in points; y grows downwards.
struct Point {
    int x = 0;
    int y = 0;
    friend bool operator==(Point, Point) = default;
};

/// In points.
struct Size {
    int width = 0;
    int height = 0;
    friend bool operator==(Size, Size) = default;
};

}  // namespace orvu

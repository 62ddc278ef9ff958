#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace orvu {

/// A picture in memory: `height` rows of `width` pixels without gaps, each pixel red, green, blue
/// and alpha, not multiplied by it.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;

    friend bool operator==(const Image&, const Image&) = default;
};

/// A picture that many share and none changes; null for no picture.
using ImagePointer = std::shared_ptr<const Image>;

}  // namespace orvu

#pragma once

#include "foundation/async/Future.h"
#include "foundation/Image.h"

#include <string>

namespace orvu {

/// Reads and writes image files, off the main thread and in the order in which it was asked.
class ImageCodec {
public:
    /// Larger pictures are scaled down to this many pixels on their longer side.
    static constexpr int maxSide = 256;

    virtual ~ImageCodec() = default;

    /// The picture in a file's `bytes`, the first one of a moving picture; null if there is none
    /// to be had within a bounded time and memory. Nothing outside `bytes` is read.
    [[nodiscard]] virtual Future<ImagePointer> decode(std::string bytes) = 0;
    /// The bytes of a PNG file; empty on failure.
    [[nodiscard]] virtual Future<std::string> encodePng(ImagePointer image) = 0;
};

}  // namespace orvu

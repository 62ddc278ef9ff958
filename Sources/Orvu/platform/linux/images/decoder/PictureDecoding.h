#pragma once

#include "foundation/Image.h"

#include <string>
#include <string_view>

namespace orvu {

/// Pictures that declare more pixels on a side are refused before their pixels are read.
constexpr int maxDeclaredSide = 4096;

/// The picture in a PNG, JPEG, GIF, ICO, BMP or SVG file, by its content and not by what anybody
/// calls it; null if there is none. Libraries read the bytes here, so this is for the decoder's
/// process alone.
[[nodiscard]] ImagePointer decodedPicture(std::string_view bytes);
/// The bytes of a PNG file; empty on failure.
[[nodiscard]] std::string encodedPng(const Image& image);

}  // namespace orvu

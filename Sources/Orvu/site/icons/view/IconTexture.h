#pragma once

#include "foundation/Image.h"
#include "platform/linux/GObjectPointer.h"

#include <gdk/gdk.h>

#include <memory>

namespace orvu {

/// A picture ready to be drawn at one size in device pixels.
using IconTexture = std::shared_ptr<const GObjectPointer<GdkTexture>>;

/// The picture stretched to `side` by `side` device pixels. All who ask for the same get the same
/// texture, as long as one of them keeps it.
[[nodiscard]] IconTexture iconTexture(const ImagePointer& image, int side);

}  // namespace orvu

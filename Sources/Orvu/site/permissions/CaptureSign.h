#pragma once

#include "platform/MediaCapture.h"

#include <string>

namespace orvu {

/// What is said where a page looks or listens.
struct CaptureSign {
    std::string name;  ///< of the button that ends it, such as "Camera in use. Stop"
    std::string help;  ///< for those who hover over it
    std::string stop;  ///< what ends it in a menu

    /// Of what is on; where nothing is, all texts are empty.
    [[nodiscard]] static CaptureSign of(ActiveCapture capture);

    friend bool operator==(const CaptureSign&, const CaptureSign&) = default;
};

}  // namespace orvu

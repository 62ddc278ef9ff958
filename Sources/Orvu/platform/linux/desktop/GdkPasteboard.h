#pragma once

#include "platform/Pasteboard.h"

namespace orvu {

/// The clipboard of the display that the program began on.
class GdkPasteboard : public Pasteboard {
public:
    void setString(const std::string& text) override;
};

}  // namespace orvu

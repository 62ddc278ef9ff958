#pragma once

#include "platform/SystemSound.h"

namespace orvu {

/// The bell of the display that the program began on.
class GdkSystemSound : public SystemSound {
public:
    void beep() override;
};

}  // namespace orvu

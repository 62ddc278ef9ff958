#pragma once

#include "platform/SystemSound.h"

namespace orvu {

/// Counts what would be heard.
class FakeSystemSound : public SystemSound {
public:
    void beep() override { ++beeps; }

    int beeps = 0;
};

}  // namespace orvu

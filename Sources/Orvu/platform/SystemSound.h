#pragma once

namespace orvu {

/// The sounds of the desktop.
class SystemSound {
public:
    virtual ~SystemSound() = default;

    /// Says that what was asked for can't be done.
    virtual void beep() = 0;
};

}  // namespace orvu

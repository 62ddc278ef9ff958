#pragma once

#include <sys/types.h>

namespace orvu {

/// Finds out whether the engine can make the sandbox around its page processes. It would end
/// the whole program where it can't. The probe runs beside the start of the program.
class SandboxProbe {
public:
    /// Starts the probe, unless the user switched the sandbox off.
    SandboxProbe();
    SandboxProbe(const SandboxProbe&) = delete;
    SandboxProbe& operator=(const SandboxProbe&) = delete;
    ~SandboxProbe();

    /// Waits for the probe, which takes some milliseconds.
    [[nodiscard]] bool canStartPages();

private:
    pid_t process_ = 0;
    bool result_ = true;
};

}  // namespace orvu

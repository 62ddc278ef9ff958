#pragma once

#include "platform/UpdateInstaller.h"

#include <filesystem>
#include <optional>
#include <string>

namespace orvu {

/// The small program that starts the application and swaps its copies; it has no window.
struct SwapLauncher {
    /// Where it lies in a copy.
    static constexpr const char* program = "bin/orvu-starter";

    /// Starts it for the copies in `folder`, in a session of its own: it waits for the end of this
    /// process. Gives the system's description of a failure.
    [[nodiscard]] static std::optional<std::string> launch(const std::filesystem::path& starter,
                                                           const std::filesystem::path& folder,
                                                           AfterSwap after);
    /// Waits for the end of a process as `launch` names it: "fd:N" for an open process handle, or
    /// "pid:N". False if `name` is neither.
    [[nodiscard]] static bool waitFor(const std::string& name);
};

}  // namespace orvu

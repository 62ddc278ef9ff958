#pragma once

#include "platform/linux/confinement/ConfinedProcess.h"

namespace orvu {

/// The program that decodes pictures, as it was installed.
[[nodiscard]] std::filesystem::path installedDecoder();
/// How to start one, with further arguments if need be.
[[nodiscard]] std::vector<std::string> decoderCommand(const std::filesystem::path& decoder,
                                                      ConfinedProcess::Isolation isolation);

}  // namespace orvu

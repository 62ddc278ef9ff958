#pragma once

#include "foundation/text/Translation.h"

#include <string>
#include <string_view>

namespace orvu {

/// What a profile without a name is called.
inline constexpr Phrase namelessProfile = phrase("New profile");

/// Whether nothing of a name can be seen: it is empty, or white space and control characters alone.
[[nodiscard]] bool isBlankProfileName(std::string_view name);

/// The name of a profile as the window shows it: in one line, and cut where it is very long. Never
/// blank.
[[nodiscard]] std::string shownProfileName(std::string_view name);

}  // namespace orvu

#pragma once

namespace orvu {

/// The program's name among all programs: on the message bus, of its desktop file and its icon.
inline constexpr const char* applicationId = "app.orvu.Orvu";

}  // namespace orvu

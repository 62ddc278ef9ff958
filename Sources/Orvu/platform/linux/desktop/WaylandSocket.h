#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace orvu {

/// How `WAYLAND_DISPLAY` names a socket that is given by its whole path, as seen from the folder
/// `XDG_RUNTIME_DIR`. Nothing if that is no whole path, if one of the folders isn't there, or if
/// the name is too long for a socket.
[[nodiscard]] std::optional<std::string> waylandSocketName(
    const std::filesystem::path& socket, const std::filesystem::path& runtimeFolder);

/// Lets a `WAYLAND_DISPLAY` that is a whole path be a name: the engine's sandbox looks for the
/// socket by its name alone, and the engine ends the program where pages don't find the display.
/// Call before the toolkit starts.
void nameWaylandSocket();

}  // namespace orvu

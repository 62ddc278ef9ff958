#include "platform/linux/desktop/WaylandSocket.h"

#include <sys/un.h>

#include <cstdlib>
#include <system_error>

namespace orvu {
namespace {

using Path = std::filesystem::path;

constexpr std::size_t longestAddress = sizeof(sockaddr_un::sun_path) - 1;

std::optional<Path> realFolder(const Path& folder) {
    std::error_code failure;
    auto found = std::filesystem::canonical(folder, failure);
    return failure ? std::nullopt : std::optional{std::move(found)};
}

}  // namespace

std::optional<std::string> waylandSocketName(const Path& socket, const Path& runtimeFolder) {
    if (!socket.is_absolute() || !socket.has_filename()) return std::nullopt;
    const auto from = realFolder(runtimeFolder);
    const auto to = realFolder(socket.parent_path());
    if (!from || !to) return std::nullopt;
    // What the folders really are, for ".." leads to the real folder above.
    auto name = (*to / socket.filename()).lexically_relative(*from).string();
    if ((runtimeFolder / name).native().size() > longestAddress) return std::nullopt;
    return name;
}

void nameWaylandSocket() {
    constexpr auto variable = "WAYLAND_DISPLAY";
    const char* const socket = std::getenv(variable);
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    if (!socket || !folder) return;
    if (const auto name = waylandSocketName(socket, folder)) setenv(variable, name->c_str(), 1);
}

}  // namespace orvu

#include "platform/linux/files/LinuxSystemPaths.h"

#include <glib.h>

namespace orvu {

SystemPaths linuxSystemPaths() {
    const auto below = [](const char* base) { return std::filesystem::path{base} / "Orvu"; };
    return {below(g_get_user_config_dir()), below(g_get_user_data_dir()),
            below(g_get_user_cache_dir())};
}

std::filesystem::path downloadsFolder() {
    const char* const known = g_get_user_special_dir(G_USER_DIRECTORY_DOWNLOAD);
    return known ? std::filesystem::path{known}
                 : std::filesystem::path{g_get_home_dir()} / "Downloads";
}

}  // namespace orvu

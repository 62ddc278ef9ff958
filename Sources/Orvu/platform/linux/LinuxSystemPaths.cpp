#include "platform/linux/LinuxSystemPaths.h"

#include <glib.h>

namespace orvu {

SystemPaths linuxSystemPaths() {
    const auto below = [](const char* base) { return std::filesystem::path{base} / "Orvu"; };
    return {below(g_get_user_config_dir()), below(g_get_user_data_dir()),
            below(g_get_user_cache_dir())};
}

}  // namespace orvu

#include "platform/linux/desktop/Renderer.h"

#include <glib.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace orvu {
namespace {

/// Whether the system offers a render node that this user may use.
bool hasGraphicsProcessor() {
    std::error_code error;
    const std::filesystem::directory_iterator end;
    for (std::filesystem::directory_iterator node{"/dev/dri", error}; !error && node != end;
         node.increment(error)) {
        if (!node->path().filename().string().starts_with("renderD")) continue;
        if (access(node->path().c_str(), R_OK | W_OK) == 0) return true;
    }
    return false;
}

}  // namespace

void chooseRenderer() {
    if (hasGraphicsProcessor()) return;
    g_setenv("GSK_RENDERER", "cairo", false);
    // Pages put their layers together by the emulated one all the same; only what is in them isn't
    // painted by it. Switched off altogether, pages would lose their third dimension.
    g_setenv("WEBKIT_SKIA_ENABLE_CPU_RENDERING", "1", false);
}

}  // namespace orvu

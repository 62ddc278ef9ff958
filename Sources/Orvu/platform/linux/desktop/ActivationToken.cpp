#include "platform/linux/desktop/ActivationToken.h"

#include <cstdlib>
#include <string_view>

namespace orvu {
namespace {

/// In bytes. Tokens have some 40; one that fills a message ends the connection to the display.
constexpr std::size_t longestToken = 1024;

/// Under the name by which the toolkit of the running program takes it.
void addToken(GVariantBuilder* data) {
    const char* const token = std::getenv("XDG_ACTIVATION_TOKEN");
    if (!token || *token == '\0' || !std::getenv("WAYLAND_DISPLAY")) return;
    if (std::string_view{token}.size() > longestToken) return;
    if (!g_utf8_validate(token, -1, nullptr)) return;
    g_variant_builder_add(data, "{sv}", "desktop-startup-id", g_variant_new_string(token));
}

}  // namespace

void passOnActivationToken(GApplication* application) {
    GApplicationClass* const type = G_APPLICATION_GET_CLASS(application);
    static const auto inherited = type->add_platform_data;
    type->add_platform_data = +[](GApplication* handingOver, GVariantBuilder* data) {
        addToken(data);  // the first of two of that name is the one that counts
        inherited(handingOver, data);
    };
}

}  // namespace orvu

// Loaded before the web engine into a program under test, by LD_PRELOAD. Pages of the program then
// find a camera and a microphone that the engine makes up, and the program knows nothing of it.

#include <dlfcn.h>

// Only the two types that pass through here; the real headers would bring in the libraries.
using Settings = struct Opaque;

/// Stands in for the engine's own function: the settings that it makes have made-up devices.
extern "C" Settings* webkit_settings_new() {
    const auto make = reinterpret_cast<Settings* (*)()>(dlsym(RTLD_NEXT, "webkit_settings_new"));
    const auto enable = reinterpret_cast<void (*)(Settings*, int)>(
        dlsym(RTLD_NEXT, "webkit_settings_set_enable_mock_capture_devices"));
    if (!make) return nullptr;
    Settings* const settings = make();
    if (enable) enable(settings, 1);
    return settings;
}

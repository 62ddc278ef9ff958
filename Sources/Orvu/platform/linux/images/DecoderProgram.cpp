#include "platform/linux/images/DecoderProgram.h"

namespace orvu {

std::filesystem::path installedDecoder() {
    return ConfinedProcess::installedProgram("orvu-image-decoder");
}

std::vector<std::string> decoderCommand(const std::filesystem::path& decoder,
                                        ConfinedProcess::Isolation isolation) {
    // What letters are drawn with.
    return ConfinedProcess::command(
        {.file = decoder,
         .folders = {"/etc/fonts", "/usr/share/fonts", "/usr/local/share/fonts",
                     "/usr/share/fontconfig", "/var/cache/fontconfig"}},
        isolation);
}

}  // namespace orvu

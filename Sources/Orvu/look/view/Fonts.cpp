#include "look/view/Fonts.h"

#include <fontconfig/fontconfig.h>
#include <giomm/resource.h>

#include <array>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

namespace orvu {
namespace {

constexpr std::array fonts{"Doto.ttf", "DotoBlack.ttf"};

Glib::RefPtr<const Glib::Bytes> bundled(const std::string& font) {
    return Gio::Resource::lookup_data_global("/app/orvu/Orvu/fonts/" + font);
}

std::string_view contents(const Glib::RefPtr<const Glib::Bytes>& bytes) {
    gsize size = 0;
    const auto* const data = static_cast<const char*>(bytes->get_data(size));
    return {data, size};
}

bool holds(const std::filesystem::path& path, std::string_view expected) {
    std::error_code error;
    if (std::filesystem::file_size(path, error) != expected.size() || error) return false;
    std::ifstream file{path, std::ios::binary};
    std::string found(expected.size(), '\0');
    return file.read(found.data(), static_cast<std::streamsize>(found.size())) && found == expected;
}

/// Writes beside the file and then takes its place, so that nobody ever reads half a font.
bool write(const std::filesystem::path& path, std::string_view text) {
    std::filesystem::path beside = path;
    beside += ".new";
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream file{beside, std::ios::binary | std::ios::trunc};
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    if (!file) return false;
    std::filesystem::rename(beside, path, error);
    return !error;
}

bool install(const std::string& font, const std::filesystem::path& folder) {
    const auto bytes = bundled(font);
    const std::filesystem::path path = folder / font;
    if (!holds(path, contents(bytes)) && !write(path, contents(bytes))) return false;
    const auto* const name = reinterpret_cast<const FcChar8*>(path.c_str());
    return FcConfigAppFontAddFile(FcConfigGetCurrent(), name) == FcTrue;
}

}  // namespace

void installFonts(const std::filesystem::path& caches) {
    const std::filesystem::path folder = caches / "fonts";
    for (const char* const font : fonts) {
        if (!install(font, folder)) {
            std::cerr << "Orvu can't use its font " << (folder / font) << '\n';
        }
    }
}

}  // namespace orvu

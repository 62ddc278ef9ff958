#include "import/formats/ProfilesIni.h"

#include <algorithm>

namespace orvu {
namespace {

constexpr std::size_t mostProfiles = 10'000;

std::string_view withoutBlanks(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

}  // namespace

std::vector<std::filesystem::path> profileFolders(std::string_view ini,
                                                  const std::filesystem::path& base) {
    std::vector<std::filesystem::path> result;
    while (!ini.empty() && result.size() < mostProfiles) {
        const auto end = std::min(ini.find('\n'), ini.size());
        const auto line = withoutBlanks(ini.substr(0, end));
        ini.remove_prefix(std::min(end + 1, ini.size()));
        constexpr std::string_view key = "Path=";
        if (!line.starts_with(key) || line.size() == key.size()) continue;
        const auto path = line.substr(key.size());
        if (path.contains('\0')) continue;
        result.push_back(base / path);  // which is `path` itself if that is absolute
    }
    return result;
}

}  // namespace orvu

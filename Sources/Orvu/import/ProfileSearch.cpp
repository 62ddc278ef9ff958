#include "import/ProfileSearch.h"

#include "import/formats/ProfilesIni.h"

#include <algorithm>
#include <chrono>
#include <string>

namespace orvu {
namespace {

using Path = std::filesystem::path;

constexpr int numberedProfiles = 12;
constexpr std::size_t longestIni = 1 << 20;  // bytes
constexpr std::chrono::seconds iniPatience{2};

void addNamedFolders(const ForeignFiles& files, const Path& base, std::vector<Path>& candidates) {
    const auto ini = files.text(base / "profiles.ini", longestIni,
                                std::chrono::steady_clock::now() + iniPatience);
    if (!ini) return;
    for (Path& folder : profileFolders(*ini, base)) candidates.push_back(std::move(folder));
}

std::vector<Path> candidatesIn(const ForeignFiles& files, const Path& base, BrowserKind kind) {
    std::vector<Path> candidates = files.entries(base);
    candidates.push_back(base / "Default");
    for (int number = 1; number <= numberedProfiles; ++number) {
        candidates.push_back(base / ("Profile " + std::to_string(number)));
    }
    candidates.push_back(base);
    if (kind == BrowserKind::firefox) addNamedFolders(files, base, candidates);
    return candidates;
}

/// When a profile was used last; nothing if the folder holds none.
std::optional<ForeignFiles::Time> lastUse(const ForeignFiles& files, const Path& folder,
                                          BrowserKind kind) {
    std::optional<ForeignFiles::Time> newest;
    for (const auto name : profileFiles(kind)) {
        if (const auto time = files.modified(folder / name)) newest = std::max(newest, time);
    }
    return newest;
}

}  // namespace

std::optional<Path> newestProfile(const ForeignFiles& files, const std::vector<Path>& bases,
                                  BrowserKind kind) {
    std::optional<Path> chosen;
    std::optional<ForeignFiles::Time> newest;
    for (const Path& base : bases) {
        for (const Path& candidate : candidatesIn(files, base, kind)) {
            const auto time = lastUse(files, candidate, kind);
            if (time <= newest) continue;  // nothing counts as earlier than any time
            newest = time;
            chosen = candidate;
        }
    }
    return chosen;
}

}  // namespace orvu

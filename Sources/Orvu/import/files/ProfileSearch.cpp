#include "import/files/ProfileSearch.h"

#include "import/files/SourceFile.h"
#include "import/formats/ProfilesIni.h"

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <compare>
#include <string>
#include <system_error>

namespace orvu {
namespace {

using Path = std::filesystem::path;

constexpr std::size_t mostEntries = 20'000;  // of one folder
constexpr int numberedProfiles = 12;
constexpr std::size_t longestIni = 1 << 20;  // bytes
constexpr std::chrono::seconds iniPatience{2};

struct Modified {
    time_t seconds = 0;
    long nanoseconds = 0;
    friend auto operator<=>(const Modified&, const Modified&) = default;
};

std::optional<Modified> modified(const Path& file) {
    struct stat facts{};
    if (stat(file.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) return std::nullopt;
    return Modified{facts.st_mtim.tv_sec, facts.st_mtim.tv_nsec};
}

void addEntries(const Path& base, std::vector<Path>& candidates) {
    std::error_code failure;
    const std::filesystem::directory_iterator end;
    std::size_t count = 0;
    for (std::filesystem::directory_iterator entry{base, failure};
         !failure && entry != end && count < mostEntries; entry.increment(failure), ++count) {
        candidates.push_back(entry->path());
    }
}

void addNamedFolders(const Path& base, std::vector<Path>& candidates) {
    const auto ini = sourceText(base / "profiles.ini", longestIni,
                                std::chrono::steady_clock::now() + iniPatience);
    if (!ini) return;
    for (Path& folder : profileFolders(*ini, base)) candidates.push_back(std::move(folder));
}

std::vector<Path> candidatesIn(const Path& base, BrowserKind kind) {
    std::vector<Path> candidates;
    addEntries(base, candidates);
    candidates.push_back(base / "Default");
    for (int number = 1; number <= numberedProfiles; ++number) {
        candidates.push_back(base / ("Profile " + std::to_string(number)));
    }
    candidates.push_back(base);
    if (kind == BrowserKind::firefox) addNamedFolders(base, candidates);
    return candidates;
}

/// When a profile was used last; nothing if the folder holds none.
std::optional<Modified> lastUse(const Path& folder, BrowserKind kind) {
    std::optional<Modified> newest;
    for (const auto name : profileFiles(kind)) {
        if (const auto time = modified(folder / name)) newest = std::max(newest, time);
    }
    return newest;
}

}  // namespace

std::optional<Path> newestProfile(const std::vector<Path>& bases, BrowserKind kind) {
    std::optional<Path> chosen;
    std::optional<Modified> newest;
    for (const Path& base : bases) {
        for (const Path& candidate : candidatesIn(base, kind)) {
            const auto time = lastUse(candidate, kind);
            if (time <= newest) continue;  // nothing counts as earlier than any time
            newest = time;
            chosen = candidate;
        }
    }
    return chosen;
}

}  // namespace orvu

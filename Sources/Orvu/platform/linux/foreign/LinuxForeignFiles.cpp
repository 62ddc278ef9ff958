#include "platform/linux/foreign/LinuxForeignFiles.h"

#include "platform/linux/foreign/CopiedDatabase.h"
#include "platform/linux/foreign/PrivateFolder.h"
#include "platform/linux/foreign/SourceFile.h"

#include <sys/stat.h>

#include <system_error>

namespace orvu {
namespace {

using Path = std::filesystem::path;

constexpr std::size_t mostEntries = 20'000;

}  // namespace

ForeignFiles::Access LinuxForeignFiles::access(const Path& file) const { return accessTo(file); }

bool LinuxForeignFiles::isFolder(const Path& path) const {
    std::error_code failure;
    return std::filesystem::is_directory(path, failure);
}

std::vector<Path> LinuxForeignFiles::entries(const Path& folder) const {
    std::vector<Path> result;
    std::error_code failure;
    const std::filesystem::directory_iterator end;
    for (std::filesystem::directory_iterator entry{folder, failure};
         !failure && entry != end && result.size() < mostEntries; entry.increment(failure)) {
        result.push_back(entry->path());
    }
    return result;
}

std::optional<ForeignFiles::Time> LinuxForeignFiles::modified(const Path& file) const {
    struct stat facts{};
    if (stat(file.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) return std::nullopt;
    return Time{facts.st_mtim.tv_sec, facts.st_mtim.tv_nsec};
}

std::optional<std::string> LinuxForeignFiles::text(const Path& file, std::size_t limit,
                                                   ReadDeadline deadline) const {
    return sourceText(file, limit, deadline);
}

std::unique_ptr<DatabaseSnapshot> LinuxForeignFiles::database(const Path& file,
                                                              ReadDeadline deadline) const {
    auto copy = std::make_unique<CopiedDatabase>(file, caches_, deadline);
    return copy->isThere() ? std::move(copy) : nullptr;
}

void LinuxForeignFiles::removeLeftovers() const { PrivateFolder::removeLeftovers(caches_); }

}  // namespace orvu

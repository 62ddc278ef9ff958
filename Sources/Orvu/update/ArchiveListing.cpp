#include "update/ArchiveListing.h"

#include "update/PlainPath.h"

#include <algorithm>

namespace orvu {
namespace {

std::string_view withoutSlash(std::string_view path) {
    if (path.ends_with('/')) path.remove_suffix(1);
    return path;
}

bool isOfApplication(std::string_view path) {
    return path == ArchiveListing::top || !ArchiveListing::pathBelowTop(path).empty();
}

}  // namespace

ArchiveListing::ArchiveListing(std::uint64_t archiveSize)
    : byteLimit_(std::min(mostBytes, freeBytes + std::min(archiveSize, mostBytes) * mostGrowth)) {}

std::string_view ArchiveListing::pathBelowTop(std::string_view path) {
    if (!path.starts_with(top)) return {};
    path.remove_prefix(top.size());
    return path.starts_with('/') ? withoutSlash(path.substr(1)) : std::string_view{};
}

bool ArchiveListing::add(const ArchiveEntry& entry) {
    hasApplication_ = hasApplication_ || isOfApplication(withoutSlash(entry.path));
    isRefused_ = isRefused_ || !allows(entry);
    return ++entries_ <= mostEntries && !(isRefused_ && hasApplication_);
}

bool ArchiveListing::allows(const ArchiveEntry& entry) {
    if (entries_ >= mostEntries || entry.kind == ArchiveEntry::Kind::other) return false;
    const bool isFolder = entry.kind == ArchiveEntry::Kind::folder;
    const auto path = isFolder ? withoutSlash(entry.path) : std::string_view{entry.path};
    if (!entry.hasPlainMode || !isPlainPath(path) || !isOfApplication(path)) return false;
    if (!isFolder && path == top) return false;
    if (!isFolder && entry.size > byteLimit_ - bytes_) return false;
    if (!isFolder) bytes_ += entry.size;
    for (auto above = pathAbove(path); !above.empty(); above = pathAbove(above)) {
        if (!claim(above, '/', false)) return false;
    }
    return claim(path, isFolder ? '/' : '.', true);
}

bool ArchiveListing::claim(std::string_view path, char kind, bool isEntry) {
    const std::string spelling = std::string{path} + kind;
    const auto [place, isNew] = known_.try_emplace(foldedPath(path), Known{spelling, isEntry});
    if (isNew) return true;
    if (place->second.spelling != spelling || (isEntry && place->second.isEntry)) return false;
    place->second.isEntry = place->second.isEntry || isEntry;
    return true;
}

ArchiveListing::Verdict ArchiveListing::verdict() const {
    if (!hasApplication_) return Verdict::noApplication;
    return isRefused_ || entries_ > mostEntries ? Verdict::refused : Verdict::allowed;
}

}  // namespace orvu

#include "platform/linux/update/UpdateArchive.h"

#include "platform/linux/files/FileDescriptor.h"
#include "update/PlainPath.h"

#include <archive.h>
#include <archive_entry.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <memory>
#include <string>

namespace orvu {
namespace {

using Verdict = ArchiveListing::Verdict;
using Kind = ArchiveEntry::Kind;

constexpr std::size_t blockSize = 1 << 16;  // bytes
/// What the headers of an archive may take beside its files, in bytes.
constexpr std::uint64_t headerBytes = 128 << 20;

struct ArchiveEnd {
    void operator()(archive* reader) const { archive_read_free(reader); }
};
using Reader = std::unique_ptr<archive, ArchiveEnd>;

Reader openReader(int descriptor) {
    Reader reader{archive_read_new()};
    archive_read_support_format_tar(reader.get());
    archive_read_support_filter_gzip(reader.get());
    lseek(descriptor, 0, SEEK_SET);
    const int result = archive_read_open_fd(reader.get(), descriptor, blockSize);
    return result == ARCHIVE_OK ? std::move(reader) : nullptr;
}

Kind kindOf(archive_entry* header) {
    if (archive_entry_hardlink(header) || archive_entry_symlink(header)) return Kind::other;
    if (archive_entry_sparse_count(header) > 0) return Kind::other;
    const auto type = archive_entry_filetype(header);
    if (type == AE_IFDIR) return Kind::folder;
    return type == AE_IFREG && archive_entry_size_is_set(header) ? Kind::file : Kind::other;
}

ArchiveEntry entryOf(archive_entry* header) {
    const char* const path = archive_entry_pathname(header);
    const auto special = S_ISUID | S_ISGID | S_ISVTX;
    return {.path = path ? path : "",
            .kind = kindOf(header),
            .size = static_cast<std::uint64_t>(archive_entry_size(header)),
            .hasPlainMode = (archive_entry_perm(header) & special) == 0};
}

bool isExecutable(archive_entry* header) { return (archive_entry_perm(header) & S_IXUSR) != 0; }

/// The next header; null at the end, and `failed` then says whether it is the true one.
archive_entry* nextHeader(archive* reader, bool& failed) {
    archive_entry* header = nullptr;
    const int result = archive_read_next_header(reader, &header);
    failed = result != ARCHIVE_OK && result != ARCHIVE_EOF;
    return result == ARCHIVE_OK ? header : nullptr;
}

bool makeFolders(int top, std::string_view path) {
    if (path.empty()) return true;
    if (!makeFolders(top, pathAbove(path))) return false;
    const std::string name{path};
    if (mkdirat(top, name.c_str(), 0700) == 0) return fchmodat(top, name.c_str(), 0755, 0) == 0;
    return errno == EEXIST;
}

bool writeAll(int file, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t count = write(file, bytes, size);
        if (count <= 0) return false;
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool copyContent(archive* reader, int file, std::uint64_t expected) {
    std::array<char, blockSize> block{};
    std::uint64_t written = 0;
    for (;;) {
        const la_ssize_t count = archive_read_data(reader, block.data(), block.size());
        if (count == 0) return written == expected;
        if (count < 0) return false;
        written += static_cast<std::uint64_t>(count);
        if (written > expected) return false;
        if (!writeAll(file, block.data(), static_cast<std::size_t>(count))) return false;
    }
}

bool writeFile(archive* reader, int top, const ArchiveEntry& entry, mode_t mode) {
    if (!makeFolders(top, pathAbove(entry.path))) return false;
    const FileDescriptor file{openat(top, entry.path.c_str(),
                                     O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600)};
    return file && copyContent(reader, file.get(), entry.size) && fchmod(file.get(), mode) == 0;
}

bool writeEntry(archive* reader, int top, archive_entry* header, const ArchiveEntry& entry) {
    if (entry.kind == Kind::file) {
        return writeFile(reader, top, entry, isExecutable(header) ? 0755 : 0644);
    }
    const std::string_view path = entry.path;
    return makeFolders(top, path.ends_with('/') ? path.substr(0, path.size() - 1) : path);
}

}  // namespace

std::uint64_t UpdateArchive::size() const {
    struct stat facts{};
    return fstat(descriptor_, &facts) == 0 ? static_cast<std::uint64_t>(facts.st_size) : 0;
}

Verdict UpdateArchive::verdict() const {
    const Reader reader = openReader(descriptor_);
    if (!reader) return Verdict::refused;
    ArchiveListing listing{size()};
    bool failed = false;
    while (archive_entry* const header = nextHeader(reader.get(), failed)) {
        if (!listing.add(entryOf(header))) return listing.verdict();
        const auto unpacked = static_cast<std::uint64_t>(archive_filter_bytes(reader.get(), 0));
        if (unpacked > listing.byteLimit() + headerBytes) return Verdict::refused;
    }
    return failed ? Verdict::refused : listing.verdict();
}

bool UpdateArchive::unpack(const std::filesystem::path& folder) const {
    const FileDescriptor top{open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)};
    const Reader reader = openReader(descriptor_);
    if (!top || !reader) return false;
    ArchiveListing listing{size()};
    bool failed = false;
    while (archive_entry* const header = nextHeader(reader.get(), failed)) {
        const auto entry = entryOf(header);
        if (!listing.add(entry) || listing.verdict() != Verdict::allowed) return false;
        if (!writeEntry(reader.get(), top.get(), header, entry)) return false;
    }
    return !failed;
}

}  // namespace orvu

#include "platform/linux/foreign/SourceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

constexpr std::size_t pieceSize = 1 << 20;

bool isOver(ReadDeadline deadline) { return std::chrono::steady_clock::now() >= deadline; }

/// How many bytes came; a negative number if reading failed.
ssize_t readSome(int descriptor, std::span<char> piece) {
    ssize_t count = -1;
    do {
        count = read(descriptor, piece.data(), piece.size());
    } while (count < 0 && errno == EINTR);
    return count;
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Hands a file over in pieces. False if it can't be read to its end by the deadline, has too many
/// bytes, or `take` refuses a piece.
bool readPieces(int source, std::size_t limit, ReadDeadline deadline, const auto& take) {
    std::vector<char> piece(pieceSize);
    for (std::size_t total = 0; !isOver(deadline);) {
        const ssize_t count = readSome(source, piece);
        if (count <= 0) return count == 0;
        total += static_cast<std::size_t>(count);
        if (total > limit) return false;
        if (!take(std::string_view{piece.data(), static_cast<std::size_t>(count)})) return false;
    }
    return false;
}

}  // namespace

ForeignFiles::Access accessTo(const std::filesystem::path& file) {
    struct stat facts{};
    if (stat(file.c_str(), &facts) != 0) {
        return errno == EACCES || errno == EPERM ? ForeignFiles::Access::refused
                                                 : ForeignFiles::Access::absent;
    }
    if (!S_ISREG(facts.st_mode)) return ForeignFiles::Access::absent;
    const auto descriptor = openSource(file);
    if (!descriptor) return ForeignFiles::Access::refused;
    std::array<char, 16> head{};
    return readSome(descriptor.get(), head) > 0 ? ForeignFiles::Access::readable
                                                : ForeignFiles::Access::empty;
}

bool isRegularFile(const std::filesystem::path& file) {
    struct stat facts{};
    return stat(file.c_str(), &facts) == 0 && S_ISREG(facts.st_mode);
}

FileDescriptor openSource(const std::filesystem::path& file) {
    FileDescriptor descriptor{open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)};
    struct stat facts{};
    const bool isFile =
        descriptor && fstat(descriptor.get(), &facts) == 0 && S_ISREG(facts.st_mode);
    return isFile ? std::move(descriptor) : FileDescriptor{};
}

std::optional<std::string> sourceText(const std::filesystem::path& file, std::size_t limit,
                                      ReadDeadline deadline) {
    const auto source = openSource(file);
    if (!source) return std::nullopt;
    std::string text;
    const auto take = [&](std::string_view piece) {
        text += piece;
        return true;
    };
    if (!readPieces(source.get(), limit, deadline, take)) return std::nullopt;
    return text;
}

bool copySource(const std::filesystem::path& file, const std::filesystem::path& target,
                std::size_t limit, ReadDeadline deadline) {
    const auto source = openSource(file);
    if (!source) return false;
    const FileDescriptor copy{
        open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600)};
    if (!copy) return false;
    return readPieces(source.get(), limit, deadline,
                      [&](std::string_view piece) { return writeAll(copy.get(), piece); });
}

}  // namespace orvu

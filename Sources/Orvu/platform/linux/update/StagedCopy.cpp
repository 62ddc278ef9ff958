#include "platform/linux/update/StagedCopy.h"

#include "platform/linux/files/FileDescriptor.h"
#include "platform/linux/update/UpdateKey.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

constexpr mode_t modeBits = 07777;
constexpr mode_t folderMode = 0755;

FileDescriptor openFolder(int above, const std::string& name) {
    return FileDescriptor{
        openat(above, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)};
}

bool hasPlainFacts(int descriptor, mode_t kind, mode_t mode, struct stat& facts) {
    return fstat(descriptor, &facts) == 0 && (facts.st_mode & S_IFMT) == kind &&
           (facts.st_mode & modeBits) == mode && facts.st_uid == geteuid();
}

/// The names in a folder; nothing if it can't be read, or holds more than the list can name.
std::optional<std::vector<std::string>> namesIn(int folder) {
    DIR* const stream = fdopendir(fcntl(folder, F_DUPFD_CLOEXEC, 0));
    if (!stream) return std::nullopt;
    const std::unique_ptr<DIR, int (*)(DIR*)> owner{stream, closedir};
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* const entry = readdir(stream)) {
        const std::string_view name{static_cast<const char*>(entry->d_name)};
        if (name != "." && name != "..") names.emplace_back(name);
        if (names.size() > SignedText::mostFiles) return std::nullopt;
    }
    return errno == 0 ? std::optional{names} : std::nullopt;
}

/// Goes through a copy and counts the files that are as the text says.
class Comparison {
public:
    explicit Comparison(const SignedText& text) : text_(text) {}

    bool compareFolder(const FileDescriptor& folder, const std::string& path) {
        struct stat facts{};
        if (!folder || !hasPlainFacts(folder.get(), S_IFDIR, folderMode, facts)) return false;
        const auto names = namesIn(folder.get());
        if (!names) return false;
        for (const std::string& name : *names) {
            std::string below = path;
            if (!below.empty()) below += '/';
            below += name;
            if (!compareEntry(folder.get(), name, below)) return false;
        }
        return true;
    }
    [[nodiscard]] bool isComplete() const { return files_ == text_.files.size(); }

private:
    bool compareEntry(int above, const std::string& name, const std::string& path) {
        if (text_.hasFolder(path)) return compareFolder(openFolder(above, name), path);
        const auto* const file = text_.file(path);
        return file && compareFile(above, name, *file);
    }
    bool compareFile(int above, const std::string& name, const SignedText::File& expected) {
        const FileDescriptor file{
            openat(above, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)};
        struct stat facts{};
        const mode_t mode = expected.isExecutable ? 0755 : 0644;
        ++files_;
        return file && hasPlainFacts(file.get(), S_IFREG, mode, facts) && facts.st_nlink == 1 &&
               static_cast<std::uint64_t>(facts.st_size) == expected.size &&
               sha256(file.get()) == expected.hash;
    }

    const SignedText& text_;
    std::size_t files_ = 0;
};

}  // namespace

bool isCopyOf(const std::filesystem::path& folder, const SignedText& text) {
    Comparison comparison{text};
    return comparison.compareFolder(openFolder(AT_FDCWD, folder.native()), "") &&
           comparison.isComplete();
}

}  // namespace orvu

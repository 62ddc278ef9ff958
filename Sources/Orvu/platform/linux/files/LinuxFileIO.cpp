#include "platform/linux/files/LinuxFileIO.h"

#include "platform/linux/files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string_view>
#include <system_error>

namespace orvu {
namespace {

std::optional<std::string> contentOf(const std::filesystem::path& file, std::size_t limit) {
    // Something else than a file in its place, such as a pipe, must not hold up the worker.
    const FileDescriptor open{::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    struct stat facts{};
    if (!open || fstat(open.get(), &facts) != 0 || !S_ISREG(facts.st_mode)) return std::nullopt;
    if (facts.st_size < 0 || static_cast<std::uintmax_t>(facts.st_size) > limit)
        return std::nullopt;
    std::string content(static_cast<std::size_t>(facts.st_size), '\0');
    std::size_t done = 0;
    while (done < content.size()) {
        const auto count = ::read(open.get(), content.data() + done, content.size() - done);
        if (count <= 0) return std::nullopt;
        done += static_cast<std::size_t>(count);
    }
    return content;
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = ::write(descriptor, bytes.data(), bytes.size());
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Into a file beside it first, which then takes its place.
void replace(const std::filesystem::path& file, std::string_view bytes) {
    std::string temporary = (file.parent_path() / ".new-XXXXXX").string();
    bool written = false;
    {
        const FileDescriptor open{mkostemp(temporary.data(), O_CLOEXEC)};
        if (!open) return;
        written = writeAll(open.get(), bytes);
    }
    if (!written || rename(temporary.c_str(), file.c_str()) != 0) unlink(temporary.c_str());
}

}  // namespace

Future<std::optional<std::string>> LinuxFileIO::read(std::filesystem::path file,
                                                     std::size_t limit) {
    return room_.run<std::optional<std::string>>(
        [file = std::move(file), limit] { return contentOf(file, limit); }, std::nullopt);
}

void LinuxFileIO::write(std::filesystem::path file, std::string bytes) {
    static_cast<void>(room_.run<bool>(
        [file = std::move(file), bytes = std::move(bytes)] {
            replace(file, bytes);
            return true;
        },
        false));
}

void LinuxFileIO::makeFolder(std::filesystem::path folder) {
    static_cast<void>(room_.run<bool>(
        [folder = std::move(folder)] {
            std::error_code failure;
            std::filesystem::create_directories(folder, failure);
            return true;
        },
        false));
}

}  // namespace orvu

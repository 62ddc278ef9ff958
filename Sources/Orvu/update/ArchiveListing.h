#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace orvu {

/// One entry of an archive as its reader tells it.
struct ArchiveEntry {
    enum class Kind {
        file,
        folder,
        other,  ///< a link of any kind, a device, a pipe, a socket
    };

    std::string path;
    Kind kind = Kind::other;
    std::uint64_t size = 0;     ///< bytes, of a file
    bool hasPlainMode = false;  ///< no bit that gives a program somebody else's rights
};

/// Looks at an archive's entries before anything of it is unpacked. All of them must be files and
/// folders of `Orvu.app`, none twice, none differing from another by case alone.
class ArchiveListing {
public:
    static constexpr std::string_view top = "Orvu.app";
    static constexpr std::size_t mostEntries = 40'000;
    static constexpr std::uint64_t mostBytes = 2ULL << 30;
    /// How many times its own size an archive may hold, beyond the first `freeBytes`.
    static constexpr std::uint64_t mostGrowth = 100;
    static constexpr std::uint64_t freeBytes = 16 << 20;

    enum class Verdict {
        allowed,
        noApplication,  ///< there is nothing of `Orvu.app` in it
        refused,
    };

    explicit ArchiveListing(std::uint64_t archiveSize);

    /// Takes the next entry; false if the archive need not be read on.
    bool add(const ArchiveEntry& entry);
    /// What holds after the last entry.
    [[nodiscard]] Verdict verdict() const;

    /// How many bytes it may give when it is unpacked.
    [[nodiscard]] std::uint64_t byteLimit() const { return byteLimit_; }
    /// The path of an entry below `Orvu.app`; empty for that itself and for any other place.
    [[nodiscard]] static std::string_view pathBelowTop(std::string_view path);

private:
    [[nodiscard]] bool allows(const ArchiveEntry& entry);
    [[nodiscard]] bool claim(std::string_view path, char kind, bool isEntry);
    struct Known {
        std::string spelling;
        bool isEntry = false;
    };

    const std::uint64_t byteLimit_;
    std::uint64_t bytes_ = 0;
    std::size_t entries_ = 0;
    std::map<std::string, Known> known_;  ///< by folded path
    bool hasApplication_ = false;
    bool isRefused_ = false;
};

}  // namespace orvu

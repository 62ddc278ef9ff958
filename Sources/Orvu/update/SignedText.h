#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What the maker signs of one update: which archive it is, what it is for, and each file of it.
/// It has one way to be written:
///
///     orvu-update 1
///     identity app.orvu.Orvu
///     version 1.2
///     build 12
///     archive 5304117 SHA-256
///     files 2
///     755 91204 SHA-256 bin/orvu
///     644 40 SHA-256 release
///
/// Hashes have 64 digits of lower-case hexadecimal. Paths are those below `Orvu.app`, sorted by
/// bytes, plain, and no two of them, nor their folders, differ by case alone. Folders are those
/// that the files need.
struct SignedText {
    static constexpr std::size_t longest = 4 << 20;  ///< bytes
    static constexpr std::size_t mostFiles = 20'000;
    static constexpr std::uint64_t largestFile = 512 << 20;     ///< bytes
    static constexpr std::uint64_t largestArchive = 512 << 20;  ///< bytes
    static constexpr std::uint64_t mostBytes = 2ULL << 30;      ///< of all files

    struct File {
        std::string path;
        bool isExecutable = false;  ///< its mode is 0755 then, and 0644 otherwise
        std::uint64_t size = 0;     ///< bytes
        std::string hash;           ///< SHA-256

        friend bool operator==(const File&, const File&) = default;
    };

    std::string identity;
    std::string version;
    std::int64_t build = 0;  ///< more than 0
    std::uint64_t archiveSize = 0;
    std::string archiveHash;
    std::vector<File> files;

    /// Nothing if `text` isn't written as `string` writes it, or breaks a rule.
    [[nodiscard]] static std::optional<SignedText> parse(std::string_view text);
    [[nodiscard]] std::string string() const;

    /// Nothing if there is no such file.
    [[nodiscard]] const File* file(std::string_view path) const;
    [[nodiscard]] bool hasFolder(std::string_view path) const;

    friend bool operator==(const SignedText&, const SignedText&) = default;
};

/// A text with its signature, as it comes from the server: the text, then one line "signature "
/// with 128 digits of lower-case hexadecimal.
struct SignedMessage {
    std::string_view text;       ///< the bytes that are signed
    std::string_view signature;  ///< in hexadecimal

    /// Nothing if there is no such line at the end. The message points into `bytes`.
    [[nodiscard]] static std::optional<SignedMessage> split(std::string_view bytes);
    [[nodiscard]] std::string string() const;
};

/// Whether `text` is of `digits` digits of lower-case hexadecimal.
[[nodiscard]] bool isHexadecimal(std::string_view text, std::size_t digits);

}  // namespace orvu

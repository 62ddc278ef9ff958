#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace orvu {

/// The bytes of a file.
struct FileBytes {
    std::uint64_t size = 0;
    /// Fills as much of `target` as can be read from `offset` on; how much that was.
    std::function<std::size_t(std::uint64_t offset, std::span<char> target)> read;
};

/// What the head of a model file in the format GGUF (versions 2 and 3, of small end first) tells.
struct GgufHeader {
    std::string architecture = {};
    std::string name = {};  ///< empty if it has none
    std::string type = {};  ///< "model", "adapter" ...; empty if it doesn't say
    bool hasChatTemplate = false;
    bool isPart = false;              ///< of a model in several files
    std::uint64_t contextTokens = 0;  ///< the longest context, 0 if it doesn't say
    std::uint64_t contextBytes = 0;   ///< memory for each token of a context, 0 if it doesn't say

    /// Reads one; nothing of a file that isn't whole or breaks a rule of the format. It reads each
    /// byte once at most and holds no more than a few of the values.
    [[nodiscard]] static std::optional<GgufHeader> read(const FileBytes& file);

    /// Whether a person could talk with it, as far as its head tells.
    [[nodiscard]] bool isOfChatModel() const;

    friend bool operator==(const GgufHeader&, const GgufHeader&) = default;
};

}  // namespace orvu

#include "platform/linux/files/FileText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

namespace orvu {

std::optional<std::string> fileText(const std::filesystem::path& file, std::size_t limit) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream{std::fopen(file.c_str(), "re"),
                                                                 std::fclose};
    if (!stream) return std::nullopt;
    std::string text;
    std::array<char, 65536> piece{};
    while (text.size() < limit) {
        const auto wanted = std::min(piece.size(), limit - text.size());
        const auto count = std::fread(piece.data(), 1, wanted, stream.get());
        text.append(piece.data(), count);
        if (count < wanted) break;
    }
    if (std::ferror(stream.get()) != 0) return std::nullopt;
    return text;
}

}  // namespace orvu

#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace orvu {

/// The names of downloaded files. None leads into another folder, hides its file, or holds
/// characters that don't print or turn the direction of those behind them.
struct DownloadName {
    /// The longest name that file systems take, in bytes.
    static constexpr std::size_t maxBytes = 255;

    /// The name for a file that somebody suggests to call so, of any length; "download" where
    /// nothing of the suggestion can be used.
    [[nodiscard]] static std::string safe(std::string_view suggested);
    /// `name`, from 2 on with its number in front of the extension, cut at a character to
    /// `maxBytes`. The extension is what follows the last dot, and stays.
    [[nodiscard]] static std::string numbered(std::string_view name, int number);
    /// The first of the numbered names that is not taken. One of them must be free.
    [[nodiscard]] static std::string free(std::string_view name,
                                          const std::function<bool(const std::string&)>& isTaken);
};

}  // namespace orvu

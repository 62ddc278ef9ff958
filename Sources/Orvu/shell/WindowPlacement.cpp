#include "shell/WindowPlacement.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace orvu {
namespace {

constexpr std::string_view maximizedMark = " maximized";

/// Reads a number at the head of `text` and takes it off.
std::optional<int> takeNumber(std::string_view& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{}) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

}  // namespace

std::array<Point, 3> WindowPlacement::windowButtonOrigins(int buttonHeight) {
    const int y = static_cast<int>(std::round((topBarHeight - buttonHeight) * 0.5));
    return {{{20, y}, {40, y}, {60, y}}};
}

std::string WindowFrame::string() const {
    return std::to_string(size.width) + " " + std::to_string(size.height) +
           std::string{maximized ? maximizedMark : ""};
}

std::optional<WindowFrame> WindowFrame::parse(std::string_view text) {
    constexpr int largest = 16384;
    const auto width = takeNumber(text);
    if (!width || !text.starts_with(' ')) return std::nullopt;
    text.remove_prefix(1);
    const auto height = takeNumber(text);
    if (!height || (!text.empty() && text != maximizedMark)) return std::nullopt;
    return WindowFrame{{std::clamp(*width, WindowPlacement::minimumSize.width, largest),
                        std::clamp(*height, WindowPlacement::minimumSize.height, largest)},
                       !text.empty()};
}

}  // namespace orvu

#include "notch/PastedText.h"

#include "foundation/text/Text.h"

#include <vector>

namespace orvu {
namespace {

/// What stands between line ends, without blanks around it; empty lines are left out.
std::vector<std::string_view> lines(std::string_view text) {
    std::vector<std::string_view> result;
    while (!text.empty()) {
        const auto end = text.find_first_of("\r\n");
        const auto line = trimmed(text.substr(0, end), TrimSet::whitespaces);
        if (!line.empty()) result.push_back(line);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return result;
}

bool hasBlank(std::string_view text) { return text.find_first_of(" \t") != std::string_view::npos; }

}  // namespace

std::string pastedText(std::string_view text) {
    if (text.find_first_of("\r\n") == std::string_view::npos) return std::string{text};
    const auto all = lines(text);
    std::string_view separator;
    if (!all.empty() && all.front().find("://") == std::string_view::npos) separator = " ";
    for (const auto line : all) {
        if (hasBlank(line)) separator = " ";
    }
    std::string result;
    for (const auto line : all) {
        if (!result.empty()) result += separator;
        result += line;
    }
    return result;
}

}  // namespace orvu

#include "update/PlainPath.h"

#include <algorithm>
#include <charconv>

namespace orvu {
namespace {

constexpr std::size_t longestPath = 1024;  // bytes
constexpr std::size_t longestName = 255;   // bytes
constexpr int deepest = 32;

bool isPlainName(std::string_view name) {
    if (name.empty() || name.size() > longestName || name == "." || name == "..") return false;
    return std::ranges::all_of(name, [](char c) { return c >= ' ' && c <= '~' && c != '\\'; });
}

}  // namespace

bool isPlainPath(std::string_view path) {
    if (path.size() > longestPath) return false;
    for (int names = 1; names <= deepest; ++names) {
        const auto end = path.find('/');
        if (!isPlainName(path.substr(0, end))) return false;
        if (end == std::string_view::npos) return true;
        path.remove_prefix(end + 1);
    }
    return false;
}

std::string foldedPath(std::string_view path) {
    std::string folded{path};
    for (char& c : folded) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return folded;
}

std::string_view pathAbove(std::string_view path) {
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view{} : path.substr(0, slash);
}

long long plainNumber(std::string_view text) {
    if (text.empty() || text.front() < '0' || text.front() > '9') return -1;
    if (text.size() > 1 && text.front() == '0') return -1;
    long long number = 0;
    const auto [stop, failure] = std::from_chars(text.begin(), text.end(), number);
    return failure == std::errc{} && stop == text.end() ? number : -1;
}

}  // namespace orvu

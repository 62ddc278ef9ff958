#include "site/downloads/DownloadName.h"

#include "foundation/text/Text.h"

#include <algorithm>

namespace orvu {
namespace {

constexpr std::string_view substitute = "download";
/// A longer one is no extension: keeping it would leave nothing of the name itself.
constexpr std::size_t maxExtensionBytes = 64;

bool isControl(int codePoint) {
    return codePoint < 0x20 || (codePoint >= 0x7F && codePoint <= 0x9F) || codePoint == 0x2028 ||
           codePoint == 0x2029;
}

/// "exe.fdp" with such a character in front reads "pdf.exe" the other way round.
bool turnsDirection(int codePoint) {
    return (codePoint >= 0x202A && codePoint <= 0x202E) ||
           (codePoint >= 0x2066 && codePoint <= 0x2069);
}

std::string printable(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const int codePoint = nextCodePoint(text, at);
        if (isControl(codePoint) || turnsDirection(codePoint)) continue;
        result += text.substr(begin, at - begin);
    }
    return result;
}

/// Where the extension begins, with its dot; the end of the name if there is none.
std::size_t extensionAt(std::string_view name) {
    const auto dot = name.rfind('.');
    const bool none = dot == std::string_view::npos || dot == 0 || dot + 1 == name.size() ||
                      name.size() - dot > maxExtensionBytes;
    return none ? name.size() : dot;
}

/// As many whole characters as fit, and at least a part of the first.
std::string_view cut(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes) return text;
    std::size_t end = 0;
    for (const auto character : characters(text)) {
        if (end + character.size() > bytes) break;
        end += character.size();
    }
    if (end > 0) return text.substr(0, end);
    for (std::size_t next = 0; next <= bytes;) {
        end = next;
        static_cast<void>(nextCodePoint(text, next));
    }
    return text.substr(0, end);
}

}  // namespace

std::string DownloadName::safe(std::string_view suggested) {
    const auto slash = suggested.rfind('/');
    if (slash != std::string_view::npos) suggested.remove_prefix(slash + 1);
    std::string name = printable(wellFormed(suggested));
    std::ranges::replace(name, ':', '-');
    const bool isBlank = trimmed(name, TrimSet::whitespacesAndNewlines).empty();
    return isBlank || name.starts_with('.') ? std::string{substitute} : name;
}

std::string DownloadName::numbered(std::string_view name, int number) {
    const std::string mark = number > 1 ? " " + std::to_string(number) : "";
    const std::string_view extension = name.substr(extensionAt(name));
    const std::string_view stem = name.substr(0, name.size() - extension.size());
    const std::size_t room = maxBytes - mark.size() - extension.size();
    return std::string{cut(stem, room)}.append(mark).append(extension);
}

std::string DownloadName::free(std::string_view name,
                               const std::function<bool(const std::string&)>& isTaken) {
    std::string candidate = numbered(name, 1);
    for (int number = 2; isTaken(candidate); ++number) candidate = numbered(name, number);
    return candidate;
}

}  // namespace orvu

#include "foundation/json/JsonSurrogates.h"

#include <charconv>
#include <string_view>

namespace orvu {
namespace {

constexpr std::size_t escapeSize = 6;

/// The unit that an escape at `at` stands for; a negative number if none such as "\u00e9" is there.
int unitAt(std::string_view json, std::size_t at) {
    const auto escape = json.substr(at, escapeSize);
    if (escape.size() < escapeSize || !escape.starts_with("\\u")) return -1;
    int unit = 0;
    const char* const end = escape.data() + escape.size();
    const auto read = std::from_chars(escape.data() + 2, end, unit, 16);
    return read.ptr == end ? unit : -1;
}

bool isHead(int unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isTail(int unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

std::string withLoneSurrogatesReplaced(std::string json) {
    for (auto at = json.find('\\'); at != std::string::npos; at = json.find('\\', at)) {
        const int unit = unitAt(json, at);
        if (unit < 0) {
            at += 2;  // an escape of one character, which may be a backslash itself
            continue;
        }
        const bool whole = isHead(unit) && isTail(unitAt(json, at + escapeSize));
        if (!whole && (isHead(unit) || isTail(unit))) json.replace(at, escapeSize, "\\ufffd");
        at += whole ? 2 * escapeSize : escapeSize;
    }
    return json;
}

}  // namespace orvu

#include "foundation/Url.h"

#include "foundation/text/Text.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <limits>

namespace orvu {
namespace {

bool isAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The length of the scheme at the head of `text`, or 0 if none stands there.
std::size_t schemeLength(std::string_view text) {
    if (text.empty() || !isAsciiLetter(text[0])) return 0;
    const auto end = std::ranges::find_if_not(text, [](char c) {
        return isAsciiLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
    });
    if (end == text.end() || *end != ':') return 0;
    return static_cast<std::size_t>(end - text.begin());
}

/// Blanks, line ends, control characters and invisible marks; not the two joiners, which
/// words of some languages need.
bool isRefused(int codePoint) {
    if (codePoint < 0) return true;
    if (codePoint < 0x80) return codePoint <= 0x20 || codePoint == 0x7F;
    if (codePoint == 0x200C || codePoint == 0x200D) return false;
    constexpr std::uint32_t refused =
        U_GC_CC_MASK | U_GC_CF_MASK | U_GC_ZS_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK | U_GC_CS_MASK;
    return (U_GET_GC_MASK(codePoint) & refused) != 0;
}

/// Whether all of `text` is of the characters that nearly all addresses are made of.
bool isPlain(std::string_view text) {
    // Without a way out in the middle, so that the compiler takes many bytes at a time.
    unsigned char found = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        found |= static_cast<unsigned char>((byte <= 0x20) | (byte >= 0x7F));
    }
    return found == 0;
}

bool holdsRefusedCharacter(std::string_view text) {
    if (isPlain(text)) return false;
    for (std::size_t at = 0; at < text.size();) {
        if (isRefused(nextCodePoint(text, at))) return true;
    }
    return false;
}

int hexValue(char c) {
    if (isDigit(c)) return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

/// The byte of the escape that stands at `at`, or -1.
int escapedByte(std::string_view text, std::size_t at) {
    if (at + 2 >= text.size() || text[at] != '%') return -1;
    const int high = hexValue(text[at + 1]);
    const int low = hexValue(text[at + 2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

/// An item of a query, as written.
struct QueryItem {
    std::string_view name;
    std::optional<std::string_view> value;  ///< nothing without a "="
};

/// Takes the first item off a query that is not empty.
QueryItem takeQueryItem(std::string_view& query) {
    const auto item = query.substr(0, query.find('&'));
    query.remove_prefix(std::min(query.size(), item.size() + 1));
    const auto equals = item.find('=');
    if (equals == std::string_view::npos) return {item, std::nullopt};
    return {item.substr(0, equals), item.substr(equals + 1)};
}

bool decodesTo(std::string_view written, std::string_view text) {
    return written.contains('%') ? percentDecoded(written) == text : written == text;
}

}  // namespace

std::optional<Url> Url::parse(std::string_view text) {
    if (text.empty() || text.size() > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
    if (holdsRefusedCharacter(text)) return std::nullopt;

    Url url{std::string{text}};
    const auto indexOf = [&](std::string_view stops, std::uint32_t from) {
        // The library's own search calls a function for each character.
        const auto found = std::find_if(text.begin() + from, text.end(), [&](char c) {
            for (const char stop : stops) {
                if (c == stop) return true;
            }
            return false;
        });
        return static_cast<std::uint32_t>(found - text.begin());
    };
    url.schemeEnd_ = static_cast<std::uint32_t>(schemeLength(text));
    std::uint32_t at = url.schemeEnd_ > 0 ? url.schemeEnd_ + 1 : 0;
    url.hostBegin_ = url.hostEnd_ = at;
    if (text.substr(at).starts_with("//")) {
        const std::uint32_t end = indexOf("/?#", at + 2);
        if (!url.readAuthority(at + 2, end)) return std::nullopt;
        at = end;
    }
    url.pathBegin_ = at;
    url.pathEnd_ = indexOf("?#", at);
    url.queryEnd_ = indexOf("#", url.pathEnd_);
    return url;
}

bool Url::readAuthority(std::uint32_t begin, std::uint32_t end) {
    const auto authority = part(begin, end);
    const auto at = authority.rfind('@');
    hostBegin_ = at == std::string_view::npos ? begin : begin + static_cast<std::uint32_t>(at) + 1;
    hostEnd_ = end;
    auto rest = part(hostBegin_, end);
    if (rest.starts_with('[')) {
        const auto close = rest.find(']');
        if (close == std::string_view::npos) return false;
        hostEnd_ = hostBegin_ + static_cast<std::uint32_t>(close) + 1;
        rest.remove_prefix(close + 1);
        if (!rest.empty() && rest[0] != ':') return false;
    } else {
        const auto colon = rest.find(':');
        if (colon != std::string_view::npos) {
            hostEnd_ = hostBegin_ + static_cast<std::uint32_t>(colon);
            rest.remove_prefix(colon);
        } else {
            rest = {};
        }
        if (part(hostBegin_, hostEnd_).find_first_of("[]") != std::string_view::npos) return false;
    }
    return rest.empty() || std::ranges::all_of(rest.substr(1), isDigit);
}

std::optional<std::string> Url::host() const {
    auto host = part(hostBegin_, hostEnd_);
    if (host.starts_with('[')) host = host.substr(1, host.size() - 2);
    if (host.empty()) return std::nullopt;
    return percentDecoded(host);
}

std::string Url::path() const { return percentDecoded(part(pathBegin_, pathEnd_)); }

std::optional<std::string_view> Url::query() const {
    if (queryEnd_ == pathEnd_) return std::nullopt;
    return part(pathEnd_ + 1, queryEnd_);
}

std::optional<std::string> Url::queryItem(std::string_view name) const {
    for (auto rest = query().value_or(""); !rest.empty();) {
        const QueryItem item = takeQueryItem(rest);
        if (!decodesTo(item.name, name)) continue;
        return item.value ? std::optional{percentDecoded(*item.value)} : std::nullopt;
    }
    return std::nullopt;
}

bool Url::hasQueryItem(std::string_view name, std::string_view value) const {
    for (auto rest = query().value_or(""); !rest.empty();) {
        const QueryItem item = takeQueryItem(rest);
        if (decodesTo(item.name, name) && item.value && decodesTo(*item.value, value)) return true;
    }
    return false;
}

std::string percentDecoded(std::string_view text) {
    if (!text.contains('%')) return std::string{text};
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        // One character may take several escapes; they are decoded together or not at all.
        std::string bytes;
        std::size_t end = at;
        for (int byte = escapedByte(text, end); byte >= 0 && bytes.size() < 4;
             byte = escapedByte(text, end)) {
            bytes.push_back(static_cast<char>(byte));
            end += 3;
            if (isWellFormed(bytes)) break;
        }
        if (!bytes.empty() && isWellFormed(bytes)) {
            result.append(bytes);
            at = end;
        } else {
            result.push_back(text[at++]);
        }
    }
    return result;
}

std::string percentEncoded(std::string_view text, QueryCharacters allowed) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const std::string_view marks =
        allowed == QueryCharacters::bangQuery ? "-._~!$'()*,;:@/" : "-._~!$'()*+,:@/?";
    std::string result;
    for (const char c : text) {
        if (isAsciiLetter(c) || isDigit(c) || marks.contains(c)) {
            result.push_back(c);
        } else {
            const auto byte = static_cast<unsigned char>(c);
            result.append({'%', digits[byte >> 4], digits[byte & 0x0F]});
        }
    }
    return result;
}

std::string siteName(const Url& url) { return replacingAll(url.host().value_or(""), "www.", ""); }

bool isWebUrl(const Url& url) {
    const std::string scheme = lowercased(url.scheme());
    return scheme == "http" || scheme == "https";
}

}  // namespace orvu

#include "foundation/text/Text.h"

#include <unicode/normalizer2.h>
#include <unicode/ubrk.h>
#include <unicode/ucasemap.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace orvu {
namespace {

/// Plain text whose bytes are its characters. A carriage return is left out because it joins
/// with the line feed that follows it.
bool isOneBytePerCharacter(std::string_view text) { return isAscii(text) && !text.contains('\r'); }

struct CloseBreaks {
    void operator()(UBreakIterator* breaks) const { ubrk_close(breaks); }
};

/// The bounds of the characters of one text. Making an iterator of the library costs far more
/// than using it, so one serves for the whole run of a thread; two threads can't share one.
class CharacterBreaks {
public:
    explicit CharacterBreaks(std::string_view text) {
        UErrorCode status = U_ZERO_ERROR;
        thread_local const std::unique_ptr<UBreakIterator, CloseBreaks> shared{
            ubrk_open(UBRK_CHARACTER, "en_US", nullptr, 0, &status)};
        if (!shared) return;
        utext_openUTF8(&text_, text.data(), static_cast<std::int64_t>(text.size()), &status);
        ubrk_setUText(shared.get(), &text_, &status);
        if (U_SUCCESS(status)) breaks_ = shared.get();
    }
    CharacterBreaks(const CharacterBreaks&) = delete;
    CharacterBreaks& operator=(const CharacterBreaks&) = delete;
    ~CharacterBreaks() { utext_close(&text_); }

    /// The next bound, in bytes; nothing behind the last.
    std::optional<std::size_t> next() {
        const std::int32_t bound = breaks_ ? ubrk_next(breaks_) : UBRK_DONE;
        if (bound == UBRK_DONE) return std::nullopt;
        return static_cast<std::size_t>(bound);
    }
    bool isBound(std::size_t at) {
        return breaks_ && ubrk_isBoundary(breaks_, static_cast<std::int32_t>(at));
    }

private:
    UText text_ = UTEXT_INITIALIZER;
    UBreakIterator* breaks_ = nullptr;
};

bool isTrimmed(int codePoint, TrimSet set) {
    if (codePoint == '\t' || codePoint == 0x200B || codePoint == 0xFEFF) return true;
    if (codePoint < 0) return false;
    if (u_charType(codePoint) == U_SPACE_SEPARATOR) return true;
    if (set == TrimSet::whitespaces) return false;
    return (codePoint >= 0x0A && codePoint <= 0x0D) || codePoint == 0x85 || codePoint == 0x2028 ||
           codePoint == 0x2029;
}

/// The head of `text` that is composed in one go. It ends within a run of marks on one letter
/// that is longer than any script needs: the library sorts such a run in quadratic time.
std::string_view composedPiece(std::string_view text) {
    constexpr int longestRun = 30;
    int run = 0;
    for (std::size_t at = 0; at < text.size();) {
        const int codePoint = nextCodePoint(text, at);
        const bool isMark = codePoint >= 0x300 && u_getCombiningClass(codePoint) != 0;
        run = isMark ? run + 1 : 0;
        if (run == longestRun) return text.substr(0, at);
    }
    return text;
}

std::string asciiLowercased(std::string_view text) {
    std::string result{text};
    for (char& c : result) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return result;
}

/// Whether a character ends between two code points, as far as those two alone decide it.
std::optional<bool> isBoundaryBetween(UChar32 before, UChar32 after) {
    const auto kind = [](UChar32 codePoint) {
        return u_getIntPropertyValue(codePoint, UCHAR_GRAPHEME_CLUSTER_BREAK);
    };
    const auto isControl = [](int each) {
        return each == U_GCB_CR || each == U_GCB_LF || each == U_GCB_CONTROL;
    };
    const int first = kind(before);
    const int second = kind(after);
    if (isControl(first) || isControl(second)) return first != U_GCB_CR || second != U_GCB_LF;
    if (second == U_GCB_EXTEND || second == U_GCB_ZWJ || second == U_GCB_SPACING_MARK) return false;
    if (first == U_GCB_OTHER && second == U_GCB_OTHER) return true;
    return std::nullopt;
}

struct CloseCaseMap {
    void operator()(UCaseMap* map) const { ucasemap_close(map); }
};

}  // namespace

std::size_t characterCount(std::string_view text) {
    if (isOneBytePerCharacter(text)) return text.size();
    CharacterBreaks breaks{text};
    std::size_t count = 0;
    while (breaks.next()) ++count;
    return count;
}

std::string_view wholeCodePoints(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes) return text;
    const auto isContinuation = [&](std::size_t at) {
        return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
    };
    constexpr std::size_t longest = 4;  // bytes of a code point; more are no text anyway
    std::size_t end = bytes;
    while (end > 0 && bytes - end < longest && isContinuation(end)) --end;
    return text.substr(0, end);
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    if (text.size() <= count) return text;  // a character has at least one byte
    if (count == 0) return {};
    // Behind the wanted characters one more byte tells whether the last one goes on.
    if (isOneBytePerCharacter(text.substr(0, count + 1))) return text.substr(0, count);
    CharacterBreaks breaks{text};
    std::optional<std::size_t> bound;
    for (std::size_t seen = 0; seen < count; ++seen) {
        bound = breaks.next();
        if (!bound) return text;
    }
    return text.substr(0, *bound);
}

std::vector<std::string_view> characters(std::string_view text) {
    std::vector<std::string_view> result;
    std::size_t begin = 0;
    if (isOneBytePerCharacter(text)) {
        for (; begin < text.size(); ++begin) result.push_back(text.substr(begin, 1));
        return result;
    }
    CharacterBreaks breaks{text};
    while (const auto end = breaks.next()) {
        result.push_back(text.substr(begin, *end - begin));
        begin = *end;
    }
    return result;
}

std::string_view trimmed(std::string_view text, TrimSet set) {
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t at = begin;
        if (!isTrimmed(nextCodePoint(text, at), set)) break;
        begin = at;
    }
    std::size_t end = text.size();
    while (end > begin) {
        std::size_t last = end - 1;
        while (last > begin && U8_IS_TRAIL(text[last])) --last;
        std::size_t at = last;
        if (!isTrimmed(nextCodePoint(text, at), set) || at != end) break;
        end = last;
    }
    return text.substr(begin, end - begin);
}

std::string lowercased(std::string_view text) {
    if (isAscii(text)) return asciiLowercased(text);
    UErrorCode status = U_ZERO_ERROR;
    static const std::unique_ptr<UCaseMap, CloseCaseMap> map{ucasemap_open("", 0, &status)};
    std::string result(text.size() + text.size() / 2 + 8, '\0');
    const auto size =
        ucasemap_utf8ToLower(map.get(), result.data(), static_cast<std::int32_t>(result.size()),
                             text.data(), static_cast<std::int32_t>(text.size()), &status);
    if (U_FAILURE(status)) return asciiLowercased(text);
    result.resize(static_cast<std::size_t>(size));
    return replacingAll(result, "\u03C2", "\u03C3");
}

bool containsCharacters(std::string_view text, std::string_view part) {
    if (part.empty()) return true;
    if (isOneBytePerCharacter(part) && isOneBytePerCharacter(text)) {
        return positionOf(part, text) != std::string_view::npos;
    }
    const std::string where = composed(text);
    const std::string what = composed(part);
    CharacterBreaks breaks{where};
    for (auto at = positionOf(what, where); at != std::string::npos;
         at = positionOf(what, where, at + 1)) {
        if (breaks.isBound(at) && breaks.isBound(at + what.size())) return true;
    }
    return false;
}

bool beginsWithCharacters(std::string_view text, std::string_view part) {
    if (part.empty()) return true;
    if (isOneBytePerCharacter(part) && isOneBytePerCharacter(text)) return text.starts_with(part);
    const std::string where = composed(text);
    const std::string what = composed(part);
    return where.starts_with(what) && CharacterBreaks{where}.isBound(what.size());
}

bool isCharacterBoundary(std::string_view text, std::size_t at) {
    if (at == 0 || at >= text.size()) return at <= text.size();
    if (isAscii(text.substr(at - 1, 2))) return text[at - 1] != '\r' || text[at] != '\n';
    std::size_t begin = at - 1;
    while (begin > 0 && at - begin < 4 && U8_IS_TRAIL(text[begin])) --begin;
    std::size_t reached = begin;
    const int before = nextCodePoint(text, reached);
    const bool endsHere = reached == at;
    const int after = nextCodePoint(text, reached);
    if (endsHere && before >= 0 && after >= 0) {
        if (const auto known = isBoundaryBetween(before, after)) return *known;
    }
    return CharacterBreaks{text}.isBound(at);
}

std::string composed(std::string_view text) {
    if (isAscii(text)) return std::string{text};
    UErrorCode status = U_ZERO_ERROR;
    const auto* normalizer = icu::Normalizer2::getNFCInstance(status);
    std::string result;
    for (std::string_view rest = text; !rest.empty() && U_SUCCESS(status);) {
        const auto piece = composedPiece(rest);
        rest.remove_prefix(piece.size());
        const icu::StringPiece bytes{piece.data(), static_cast<std::int32_t>(piece.size())};
        // Nearly every text is composed already, and the question costs far less than the work.
        if (normalizer->isNormalizedUTF8(bytes, status)) {
            result.append(piece);
        } else {
            const auto wide = icu::UnicodeString::fromUTF8(bytes);
            normalizer->normalize(wide, status).toUTF8String(result);
        }
    }
    return U_SUCCESS(status) ? result : std::string{text};
}

std::size_t positionOf(std::string_view part, std::string_view text, std::size_t from) {
    if (from > text.size() || part.size() > text.size() - from) return std::string_view::npos;
    const void* const found =
        memmem(text.data() + from, text.size() - from, part.data(), part.size());
    if (!found) return std::string_view::npos;
    return static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

std::string replacingAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    std::size_t done = 0;
    for (auto at = positionOf(from, text); at != std::string_view::npos;
         at = positionOf(from, text, done)) {
        result.append(text, done, at - done).append(to);
        done = at + from.size();
    }
    return result.append(text, done);
}

bool isAscii(std::string_view text) {
    // Without a way out in the middle, so that the compiler takes many bytes at a time.
    unsigned char bits = 0;
    for (const char c : text) bits |= static_cast<unsigned char>(c);
    return bits < 0x80;
}

bool isWellFormed(std::string_view text) {
    if (isAscii(text)) return true;
    for (std::size_t at = 0; at < text.size();) {
        if (nextCodePoint(text, at) < 0) return false;
    }
    return true;
}

std::string wellFormed(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        if (nextCodePoint(text, at) < 0) {
            result.append("\uFFFD");
        } else {
            result.append(text, begin, at - begin);
        }
    }
    return result;
}

int nextCodePoint(std::string_view text, std::size_t& at) {
    const char* const bytes = text.data();
    const auto size = static_cast<std::int64_t>(text.size());
    auto index = static_cast<std::int64_t>(at);
    UChar32 codePoint = 0;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"  // within the library's macro
    U8_NEXT(bytes, index, size, codePoint);
#pragma GCC diagnostic pop
    at = static_cast<std::size_t>(index);
    return codePoint;
}

}  // namespace orvu

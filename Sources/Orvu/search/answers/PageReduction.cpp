#include "search/answers/PageReduction.h"

#include "foundation/text/Latin1.h"
#include "foundation/text/Text.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

// A page is reduced by four regular expressions. To search for them by backtracking takes quadratic
// time, or all of the stack, where a page is made for it. So each has a scanner of its own that
// finds the same.

namespace orvu {
namespace {

constexpr auto npos = std::string_view::npos;

/// The bytes of a match.
struct Match {
    std::size_t begin;
    std::size_t end;
};

/// `text` with a space in the place of each match. `next(from)` is the first match that begins at
/// `from` or behind it.
template <class Next>
std::string spaced(std::string_view text, Next next) {
    std::string result;
    result.reserve(text.size());
    std::size_t done = 0;
    while (const std::optional<Match> match = next(done)) {
        result.append(text, done, match->begin - done).push_back(' ');
        done = match->end;
    }
    return result.append(text, done);
}

/// The elements that are left out with all that is in them. No name begins with another, so at most
/// one stands at a place.
constexpr std::array<std::string_view, 7> elementNames{"script", "style",  "noscript", "svg",
                                                       "nav",    "footer", "header"};
constexpr std::size_t longestName = 8;

/// The characters outside ASCII that case folding makes letters of these names: a long s, and the
/// two ligatures of an s and a t.
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> foldedCharacters{
    {{"\u017F", "s"}, {"\uFB05", "st"}, {"\uFB06", "st"}}};

char lowercased(char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c); }

/// The letters that case folding makes of the head of a text, about as many as a name may have.
class FoldedHead {
public:
    explicit FoldedHead(std::string_view text);

    [[nodiscard]] std::string_view letters() const { return {letters_.data(), count_}; }
    /// Where the character ends that the last of the first `letters` letters comes from.
    [[nodiscard]] std::size_t end(std::size_t letters) const { return ends_[letters - 1]; }

private:
    void add(char letter, std::size_t end);

    std::array<char, longestName + 1> letters_;  // a ligature may be the last character
    std::array<std::size_t, longestName + 1> ends_;
    std::size_t count_ = 0;
};

FoldedHead::FoldedHead(std::string_view text) {
    for (std::size_t at = 0; at < text.size() && count_ < longestName;) {
        const char letter = lowercased(text[at]);
        if (letter >= 'a' && letter <= 'z') {
            add(letter, ++at);
            continue;
        }
        if (static_cast<unsigned char>(letter) < 0x80) break;
        const auto* const folded = std::ranges::find_if(foldedCharacters, [&](const auto& each) {
            return text.substr(at).starts_with(each.first);
        });
        if (folded == foldedCharacters.end()) break;
        at += folded->first.size();
        for (const char each : folded->second) add(each, at);
    }
}

void FoldedHead::add(char letter, std::size_t end) {
    letters_[count_] = letter;
    ends_[count_] = end;
    ++count_;
}

struct ElementName {
    std::size_t index;  ///< in `elementNames`
    std::size_t end;    ///< of the name in the text
};

/// The name at `at`, which may go on there: "navigation" is a "nav".
std::optional<ElementName> elementNameAt(std::string_view text, std::size_t at) {
    const FoldedHead head{text.substr(at)};
    for (std::size_t index = 0; index < elementNames.size(); ++index) {
        const std::string_view name = elementNames[index];
        if (!head.letters().starts_with(name)) continue;
        return ElementName{index, at + head.end(name.size())};
    }
    return std::nullopt;
}

/// The matches of `(?is)<(script|style|noscript|svg|nav|footer|header)[^>]*>.*?</\1>`, asked for
/// from left to right. An element ends with the first closing tag of its name; one without any is
/// no match.
class Elements {
public:
    explicit Elements(std::string_view text);
    std::optional<Match> next(std::size_t from);

private:
    /// Where the closing tags of a name end, in ascending order.
    struct ClosingTags {
        std::vector<std::size_t> ends;
        std::size_t passed = 0;  ///< how many of them no later element can end with
    };

    std::size_t nextBracket(std::size_t from);
    std::size_t elementEnd(std::size_t name, std::size_t contents);

    std::string_view text_;
    std::array<ClosingTags, elementNames.size()> closingTags_;
    std::size_t bracket_ = 0;  ///< the ">" that was found last
};

Elements::Elements(std::string_view text) : text_(text) {
    for (auto at = positionOf("</", text); at != npos; at = positionOf("</", text, at + 2)) {
        const auto name = elementNameAt(text, at + 2);
        if (!name || !text.substr(name->end).starts_with('>')) continue;
        closingTags_[name->index].ends.push_back(name->end + 1);
    }
}

std::optional<Match> Elements::next(std::size_t from) {
    for (auto at = text_.find('<', from); at != npos; at = text_.find('<', at + 1)) {
        const auto name = elementNameAt(text_, at + 1);
        if (!name) continue;
        const auto bracket = nextBracket(name->end);
        if (bracket == npos) break;
        const auto end = elementEnd(name->index, bracket + 1);
        if (end != npos) return Match{at, end};
    }
    return std::nullopt;
}

/// The first ">" at `from` or behind it, which never moves back and isn't 0. Tags without an end
/// all ask for the same one.
std::size_t Elements::nextBracket(std::size_t from) {
    if (bracket_ < from) bracket_ = text_.find('>', from);
    return bracket_;
}

/// Where an element ends whose contents begin at `contents`, which never moves back. A closing tag
/// has no ">" but its last character, so one that ends behind `contents` begins there too.
std::size_t Elements::elementEnd(std::size_t name, std::size_t contents) {
    auto& [ends, passed] = closingTags_[name];
    while (passed < ends.size() && ends[passed] <= contents) ++passed;
    return passed < ends.size() ? ends[passed] : npos;
}

/// The next match of `(?s)<!--.*?-->`. The two pairs of hyphens are never the same ones.
std::optional<Match> nextComment(std::string_view text, std::size_t from) {
    constexpr std::string_view opening = "<!--";
    constexpr std::string_view closing = "-->";
    const auto begin = positionOf(opening, text, from);
    if (begin == npos) return std::nullopt;
    const auto end = positionOf(closing, text, begin + opening.size());
    if (end == npos) return std::nullopt;
    return Match{begin, end + closing.size()};
}

/// The next match of `<[^>]+>`, of which "<>" is none.
std::optional<Match> nextTag(std::string_view text, std::size_t from) {
    for (auto begin = text.find('<', from); begin != npos; begin = text.find('<', begin + 1)) {
        const auto bracket = text.find('>', begin + 1);
        if (bracket == npos) break;
        if (bracket > begin + 1) return Match{begin, bracket + 1};
    }
    return std::nullopt;
}

/// Reads the code point at `at`, moves `at` behind it, and tells whether it is a blank.
bool isNextBlank(std::string_view text, std::size_t& at) {
    const char first = text[at];
    if (static_cast<unsigned char>(first) >= 0x80) {
        return u_isUWhiteSpace(nextCodePoint(text, at)) != 0;
    }
    ++at;
    return first == ' ' || (first >= '\t' && first <= '\r');
}

/// The next match of `\s+`.
std::optional<Match> nextBlanks(std::string_view text, std::size_t from) {
    std::size_t begin = from;
    std::size_t at = from;
    while (at < text.size() && !isNextBlank(text, at)) begin = at;
    if (begin == text.size()) return std::nullopt;
    std::size_t end = at;
    while (at < text.size() && isNextBlank(text, at)) end = at;
    return Match{begin, end};
}

std::string withoutMarkup(std::string_view html) {
    Elements elements{html};
    const std::string shown = spaced(html, [&](auto from) { return elements.next(from); });
    const std::string said = spaced(shown, [&](auto from) { return nextComment(shown, from); });
    return spaced(said, [&](auto from) { return nextTag(said, from); });
}

/// Resolves one kind of entity after the other, so "&amp;lt;" is "<" in the end.
std::string withEntitiesResolved(std::string text) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 6> entities{
        {{"&amp;", "&"},
         {"&nbsp;", " "},
         {"&quot;", "\""},
         {"&#39;", "'"},
         {"&lt;", "<"},
         {"&gt;", ">"}}};
    for (const auto& [entity, meaning] : entities) text = replacingAll(text, entity, meaning);
    return text;
}

std::string withSingleSpaces(std::string_view text) {
    return spaced(text, [&](auto from) { return nextBlanks(text, from); });
}

std::string decoded(std::string_view html) {
    return isWellFormed(html) ? std::string{html} : fromLatin1(html);
}

}  // namespace

std::string PageReduction::text(std::string_view html) {
    const std::string page = decoded(wholeCodePoints(html, maxBytes));
    const std::string text = withSingleSpaces(withEntitiesResolved(withoutMarkup(page)));
    return std::string{firstCharacters(text, maxCharacters)};
}

}  // namespace orvu

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Text in UTF-8, seen as people see it. "Characters" are user-perceived characters (grapheme
/// clusters) everywhere. Bytes that are no UTF-8 stay as they are; each of them, or the head of a
/// sequence that breaks off, counts as one code point. Any thread may call any of this.
namespace orvu {

/// Which characters `trimmed` takes off.
enum class TrimSet {
    whitespaces,             ///< Unicode space separators and the tab
    whitespacesAndNewlines,  ///< those and the line ends
};

/// Number of characters.
[[nodiscard]] std::size_t characterCount(std::string_view text);
/// As much of the head of `text` as `bytes` hold, without half a code point at the end.
[[nodiscard]] std::string_view wholeCodePoints(std::string_view text, std::size_t bytes);
/// The first `count` characters, or all if there are fewer.
[[nodiscard]] std::string_view firstCharacters(std::string_view text, std::size_t count);
/// The characters of `text`, which must outlive the answer.
[[nodiscard]] std::vector<std::string_view> characters(std::string_view text);
/// `text` without the characters of `set` at both ends. Zero-width spaces and byte-order marks
/// at the ends go with them.
[[nodiscard]] std::string_view trimmed(std::string_view text, TrimSet set);
/// Lower case for comparing: knows no locale, and a final sigma becomes an ordinary one.
[[nodiscard]] std::string lowercased(std::string_view text);
/// Whether `part` stands in `text` as whole characters, canonically equivalent ones being the
/// same. The empty text stands in every text.
[[nodiscard]] bool containsCharacters(std::string_view text, std::string_view part);
/// Whether `text` begins with `part`, compared in the same way.
[[nodiscard]] bool beginsWithCharacters(std::string_view text, std::string_view part);
/// Whether no character of `text` has bytes on both sides of `at`.
[[nodiscard]] bool isCharacterBoundary(std::string_view text, std::size_t at);
/// The one form that all canonically equivalent texts have in common, as far as they are UTF-8.
[[nodiscard]] std::string composed(std::string_view text);
/// As `text.find(part, from)`, but in linear time whatever the texts are. `part` is not empty.
[[nodiscard]] std::size_t positionOf(std::string_view part, std::string_view text,
                                     std::size_t from = 0);
/// `text` with each occurrence of `from` (not empty) replaced by `to`, left to right.
[[nodiscard]] std::string replacingAll(std::string_view text, std::string_view from,
                                       std::string_view to);
[[nodiscard]] bool isAscii(std::string_view text);
[[nodiscard]] bool isWellFormed(std::string_view text);
/// `text` with U+FFFD in the place of each byte, or broken-off sequence, that is no UTF-8.
[[nodiscard]] std::string wellFormed(std::string_view text);

/// Reads the code point that begins at `at` and moves `at` behind it. Gives a negative number,
/// and moves by at least one byte, where no well-formed sequence begins.
[[nodiscard]] int nextCodePoint(std::string_view text, std::size_t& at);

}  // namespace orvu

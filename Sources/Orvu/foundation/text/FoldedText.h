#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace orvu {

/// A text prepared for being compared with many others without regard to letter case: in lower
/// case and canonically composed. The answers are those of `containsCharacters` and
/// `beginsWithCharacters` on the lower-cased texts.
class FoldedText {
public:
    /// No text gets shorter than this part of its bytes: lower-casing leaves a third of a
    /// character's bytes, and so do each of the two steps of composing.
    static constexpr std::size_t minPart = 27;

    FoldedText() = default;
    explicit FoldedText(std::string_view text);
    /// Takes what is lower-cased already.
    [[nodiscard]] static FoldedText fromLowercased(std::string_view text);

    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] bool contains(const FoldedText& part) const;
    [[nodiscard]] bool beginsWith(const FoldedText& part) const;

    friend bool operator==(const FoldedText&, const FoldedText&) = default;

private:
    std::string text_;
};

/// Whether the `size` bytes at `at` are whole characters of `text`.
[[nodiscard]] bool areWholeCharacters(std::string_view text, std::size_t at, std::size_t size);

}  // namespace orvu

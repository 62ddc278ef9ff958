#pragma once

#include <unicode/uversion.h>

#include <memory>
#include <optional>
#include <string_view>

U_NAMESPACE_BEGIN
class RegexPattern;
U_NAMESPACE_END

namespace orvu {

/// A regular expression, compiled once. Its blanks (`\s`) and digits (`\d`) are those of every
/// script. Copies share what was compiled.
class Regex {
public:
    enum class LetterCase { significant, ignored };

    /// `pattern` is one of ours: that it does not compile is a bug.
    Regex(std::string_view pattern, LetterCase letterCase);

    /// Whether it matches anywhere in `text`, where bytes that are no UTF-8 count as U+FFFD.
    /// Nothing if the search needs too many steps and was given up.
    [[nodiscard]] std::optional<bool> isFoundIn(std::string_view text) const;

private:
    std::shared_ptr<const icu::RegexPattern> pattern_;
};

}  // namespace orvu

#pragma once

#include <concepts>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

/// The texts that the program shows, in its person's language. They stand in the sources in English,
/// which is what is shown where a catalogue of gettext has nothing for them. `tools/texts` collects
/// what stands in `tr`, `trn` and `phrase`.
namespace orvu {

/// Where the catalogues lie: `folder/LANGUAGE/LC_MESSAGES/orvu.mo`. The language is that of the
/// process, so this stands after `setlocale`, or before it.
void useTranslations(const std::filesystem::path& folder);

/// What this desktop makes of a text once it is translated and before values come into it: what
/// people and pages say in them stays as it is. It must be called before the first text is shown.
using Wording = std::string (*)(std::string_view text);
void useWording(Wording wording);

/// A text that is a constant.
class Phrase {
public:
    constexpr Phrase() = default;  ///< empty
    constexpr explicit Phrase(const char* english) : english_(english) {}

    /// In the person's language; it lasts as long as the program.
    [[nodiscard]] const char* c_str() const;  // NOLINT(readability-identifier-naming)
    [[nodiscard]] constexpr bool empty() const { return *english_ == '\0'; }
    operator std::string_view() const { return c_str(); }
    operator std::string() const { return c_str(); }

    friend bool operator==(const Phrase& one, std::string_view other) {
        return std::string_view{one} == other;
    }
    friend bool operator==(const Phrase& one, const Phrase& other) {
        return std::string_view{one} == std::string_view{other};
    }

private:
    const char* english_ = "";
};

[[nodiscard]] constexpr Phrase phrase(const char* english) { return Phrase{english}; }

/// Puts values into the places of a text: "{1}" is the first, up to "{9}". Braces in values mean
/// nothing.
[[nodiscard]] std::string filled(std::string_view pattern,
                                 std::initializer_list<std::string_view> values);

/// Picks between a text for one thing and one for several by the language's own rule for `count`,
/// which is its "{1}".
[[nodiscard]] std::string_view pluralPattern(const char* one, const char* many,
                                             unsigned long count);

/// A text with values in its places.
template <typename First, typename... Values>
[[nodiscard]] std::string tr(const char* english, const First& first, const Values&... values) {
    return filled(phrase(english), {std::string_view{first}, std::string_view{values}...});
}

/// A text that tells a number, not below 0; the values come after it, from "{2}" on.
template <std::integral Count, typename... Values>
[[nodiscard]] std::string trn(const char* one, const char* many, Count count,
                              const Values&... values) {
    return filled(pluralPattern(one, many, static_cast<unsigned long>(count)),
                  {std::to_string(count), std::string_view{values}...});
}

}  // namespace orvu

#pragma once

#include <string>
#include <string_view>

/// The names that files of an update may have.
namespace orvu {

/// Whether `path` leads to something below its folder and is the same everywhere: names of
/// printable ASCII characters with single slashes between them, none of them "." or "..", no
/// backslash, at most 255 bytes in a name, 1,024 in all and 32 names.
[[nodiscard]] bool isPlainPath(std::string_view path);

/// What paths that differ only by the case of letters have in common.
[[nodiscard]] std::string foldedPath(std::string_view path);

/// The path above; empty if it has a single name.
[[nodiscard]] std::string_view pathAbove(std::string_view path);

/// Reads a decimal number as this program writes it: no sign, no zeros at its head, below 2^63.
/// A negative number if it is none.
[[nodiscard]] long long plainNumber(std::string_view text);

}  // namespace orvu

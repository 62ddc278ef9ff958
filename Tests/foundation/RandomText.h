#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>

namespace orvu {

/// Texts of every kind, the same ones in each run.
class RandomText {
public:
    explicit RandomText(std::uint64_t seed) : engine_(seed) {}

    /// A number from 0 to `limit` - 1.
    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(engine_() % limit); }

    /// UTF-8 of at most `pieces` pieces: plain letters, controls, NUL, marks that combine,
    /// signs of several code points, percent signs and blanks of all kinds.
    std::string text(std::size_t pieces) {
        static constexpr std::array<std::string_view, 28> odd{"\r\n",    "\r",
                                                              "\n",      "\t",
                                                              "\x01",    "\x1F",
                                                              "\x7F",    "\"",
                                                              "\\",      "/",
                                                              "%",       "%41",
                                                              "%C3",     "%A9",
                                                              "%",       "é",
                                                              "e\u0301", "\u0301",
                                                              "Σ",       "ς",
                                                              "İ",       "👩‍👩‍👧",
                                                              "🇩🇪",      "한",
                                                              "\u200B",  "\uFEFF",
                                                              "\u2028",  "\u00A0"};
        std::string result;
        for (std::size_t left = below(pieces + 1); left > 0; --left) {
            switch (below(4)) {
                case 0:
                    result += odd[below(odd.size())];
                    break;
                case 1:
                    result.push_back('\0');
                    break;
                case 2:
                    result.push_back(' ');
                    break;
                default:
                    result.push_back(static_cast<char>('a' + below(26)));
            }
        }
        return result;
    }

    /// Any bytes at all, most of them no UTF-8.
    std::string bytes(std::size_t most) {
        std::string result(below(most + 1), '\0');
        for (char& c : result) c = static_cast<char>(below(256));
        return result;
    }

private:
    std::mt19937_64 engine_;
};

/// `count` times `piece`.
inline std::string repeated(std::string_view piece, std::size_t count) {
    std::string result;
    result.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i) result += piece;
    return result;
}

/// The pieces one behind the other.
inline std::string joined(std::initializer_list<std::string_view> pieces) {
    std::string result;
    for (const auto piece : pieces) result += piece;
    return result;
}

}  // namespace orvu

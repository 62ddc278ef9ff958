#pragma once

#include "foundation/Color.h"
#include "foundation/text/Translation.h"

#include <array>
#include <string_view>

namespace orvu {

/// The colours of the reader. They stand in the order in which a person is offered them.
enum class ReaderTheme { paper, white, night };

struct ReaderThemeFacts {
    ReaderTheme theme;
    std::string_view rawValue;  ///< as stored
    Phrase label;               ///< for people
    Color background;
    Color ink;
    Color muted;
};

inline constexpr std::array<ReaderThemeFacts, 3> readerThemes{{{ReaderTheme::paper,
                                                                "paper",
                                                                phrase("paper theme"),
                                                                {251, 250, 247},
                                                                {29, 31, 36},
                                                                {107, 111, 119}},
                                                               {ReaderTheme::white,
                                                                "white",
                                                                phrase("white theme"),
                                                                {255, 255, 255},
                                                                {29, 31, 36},
                                                                {107, 111, 119}},
                                                               {ReaderTheme::night,
                                                                "night",
                                                                phrase("night theme"),
                                                                {22, 23, 27},
                                                                {232, 233, 236},
                                                                {158, 162, 170}}}};

[[nodiscard]] constexpr const ReaderThemeFacts& facts(ReaderTheme theme) {
    return readerThemes[static_cast<std::size_t>(theme)];
}

}  // namespace orvu

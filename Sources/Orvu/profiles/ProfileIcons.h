#pragma once

#include "foundation/text/Translation.h"

#include <array>
#include <string_view>
#include <vector>

namespace orvu {

/// The symbols that a person can choose from for a profile.
struct ProfileIcons {
    struct Row {
        std::string_view symbol;
        Phrase words;  ///< what it is looked for by, between single spaces
    };

    /// In the order in which they are shown.
    static const std::array<Row, 102> all;

    /// The symbols of the rows in which each word of `search`, in any case, stands in the words or
    /// in the symbol's name, be it as a part of one; all of them if it is blank.
    [[nodiscard]] static std::vector<std::string_view> icons(std::string_view search);
};

}  // namespace orvu

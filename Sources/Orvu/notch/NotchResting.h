#pragma once

#include "core/BrowserTab.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// What the notch says while its command bar is closed.
struct NotchResting {
    std::string site;   ///< the host; empty in an empty tab
    std::string quiet;  ///< behind it: the path, or the prompt of an empty tab
    std::string name;   ///< what assistive technology calls it
    /// Where a click begins: the whole address, or nothing in an empty tab.
    std::string address;

    [[nodiscard]] static NotchResting of(const BrowserTab& tab);

    friend bool operator==(const NotchResting&, const NotchResting&) = default;
};

/// The button that bookmarks the page.
struct NotchBookmark {
    std::string_view symbol;
    std::string_view help;
    std::string_view label;
    bool isOn = false;

    [[nodiscard]] static NotchBookmark of(bool isBookmarked);

    friend bool operator==(const NotchBookmark&, const NotchBookmark&) = default;
};

/// The button that shows the page's article in its place.
struct NotchReader {
    std::string_view symbol;
    std::string_view help;
    std::string_view label;
    bool isOn = false;

    [[nodiscard]] static NotchReader of(bool isReading);

    friend bool operator==(const NotchReader&, const NotchReader&) = default;
};

}  // namespace orvu

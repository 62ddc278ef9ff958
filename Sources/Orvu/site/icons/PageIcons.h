#pragma once

#include "foundation/Url.h"
#include "platform/WebView.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvu {

/// How a page tells of its own icons.
struct PageIcons {
    static constexpr std::size_t limit = 4;

    /// An expression that gives the addresses of the icons that a page declares: those with the
    /// largest declared size first, at most four. Sizes that are no numbers count as 0.
    static constexpr std::string_view script = R"js(
Array.from(document.querySelectorAll('link[rel~="icon" i], link[rel="apple-touch-icon" i]'))
    .map(link => ({
        href: link.href,
        size: (link.getAttribute('sizes') || '').split(/\s+/).reduce(
            (most, text) => Math.max(most, parseInt(text, 10) || 0), 0)
    }))
    .sort((a, b) => b.size - a.size)
    .slice(0, 4)
    .map(icon => icon.href)
)js";

    /// Where to look for the icon of the page at `page`, in this order: what the script gave, as
    /// far as it is addresses, and the site's "/favicon.ico".
    [[nodiscard]] static std::vector<Url> candidates(const ScriptResult& answer, const Url& page);
};

}  // namespace orvu

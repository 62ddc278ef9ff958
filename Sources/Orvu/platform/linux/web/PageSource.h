#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// The source of a page, as one view shows it as text. It is nowhere else, so that no other page
/// can ask for it.
struct PageSource {
    /// Longer documents are not shown.
    static constexpr std::size_t limit = 16U << 20U;  // bytes

    std::string address = {};  ///< its own one, which names that of the page
    std::string text = {};     ///< in UTF-8
    std::string title = {};    ///< of the view that shows it
};

/// `bytes` in UTF-8, read as a page says that it is written. What can't be read becomes U+FFFD.
[[nodiscard]] std::string sourceText(std::string_view bytes, const std::string& charset);

/// Hands the source of the page in `view` to `done`; nothing if there is none or it is too long.
void readPageSource(WebKitWebView* view, std::function<void(std::optional<std::string>)> done);

/// Lets the engine load the addresses of sources; `of` gives what a view is to show, or null.
/// Pages can't reach them. To be called once in the process.
void registerPageSources(std::function<const PageSource*(WebKitWebView*)> of);

}  // namespace orvu

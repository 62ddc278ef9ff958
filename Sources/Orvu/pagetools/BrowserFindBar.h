#pragma once

#include "foundation/async/TaskScope.h"
#include "foundation/text/Translation.h"
#include "platform/WebView.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// The search for a text in the page in front. It asks for the next match and remembers whether
/// there was one; finding, marking and scrolling is the page's own.
class BrowserFindBar {
public:
    static constexpr Phrase prompt = phrase("Find in page");
    /// Searches what stands in front at this moment, a page or its article, and goes on to the next
    /// match; nothing if nothing stands there.
    using Search =
        std::function<std::optional<Future<bool>>(const std::string& text, FindConfiguration how)>;

    explicit BrowserFindBar(Search search) : search_(std::move(search)) {}
    BrowserFindBar(const BrowserFindBar&) = delete;
    BrowserFindBar& operator=(const BrowserFindBar&) = delete;

    [[nodiscard]] const std::string& text() const { return text_; }
    /// Searches for another text; the same one does nothing.
    void setText(const std::string& text);
    /// Goes on to the next match, or the previous one. An empty text only takes the outcome away.
    void find(bool backwards);

    /// The outcome of the last search; nothing before the first one has ended.
    [[nodiscard]] std::optional<bool> found() const { return found_; }
    /// What to say of it; empty for nothing.
    [[nodiscard]] std::string_view status() const;

    /// Calls `slot` after the outcome changed.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    [[nodiscard]] Task<void> await(Future<bool> answer);
    void setFound(std::optional<bool> found);

    const Search search_;
    std::string text_;
    std::optional<bool> found_;
    sigc::signal<void()> changed_;
    TaskScope searching_;  ///< the last search alone: an earlier one has nothing to say any more
};

}  // namespace orvu

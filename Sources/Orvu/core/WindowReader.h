#pragma once

#include "core/BrowserTab.h"
#include "foundation/async/TaskScope.h"
#include "platform/SystemSound.h"

#include <memory>
#include <optional>

namespace orvu {

/// The reader of one window: the one article that it shows, in the place of its tab's page.
class WindowReader {
public:
    /// An article, and the tab in whose place it stands.
    struct Shown {
        Uuid tab;
        std::shared_ptr<const ReaderArticle> article;
    };

    /// `sound` must outlive this.
    explicit WindowReader(SystemSound& sound) : sound_(sound) {}
    WindowReader(const WindowReader&) = delete;
    WindowReader& operator=(const WindowReader&) = delete;

    /// The last article. Its tab may have gone, or gone elsewhere.
    [[nodiscard]] const std::optional<Shown>& shown() const { return shown_; }
    /// The article that stands in the place of a tab's page; null if the page itself is shown.
    [[nodiscard]] std::shared_ptr<const ReaderArticle> article(const BrowserTab& tab) const;

    /// Ends the reader if it is the tab's. Otherwise asks its page for its article, to show it when
    /// it comes; if there is none, a sound says so.
    void toggle(const std::shared_ptr<BrowserTab>& tab);

    /// Calls `slot` after another article is shown, or none.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    [[nodiscard]] Task<void> read(Uuid tab, Task<std::optional<ReaderArticle>> reading);
    void show(std::optional<Shown> shown);

    SystemSound& sound_;
    std::optional<Shown> shown_;
    sigc::signal<void()> changed_;
    TaskScope tasks_;  // last, so that it ends before what its work uses
};

}  // namespace orvu

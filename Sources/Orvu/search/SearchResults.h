#pragma once

#include "core/AppServices.h"
#include "core/BrowserTab.h"
#include "search/answers/SearchAnswer.h"
#include "search/answers/SearchStrip.h"

#include <sigc++/sigc++.h>

#include <memory>
#include <optional>

namespace orvu {

/// What stands beside one tab's page of search results while the tab is shown: the strip above it
/// and the answer at its side. It begins an answer whenever another search is to be answered, or the
/// answer is to be seen again.
class SearchResults : public sigc::trackable {
public:
    /// May begin an answer at once. A window that is private has none. `kesto` and `services` must
    /// outlive this; the tab may go.
    SearchResults(const std::shared_ptr<BrowserTab>& tab, bool isPrivate, Kesto& kesto,
                  AppServices& services);
    SearchResults(const SearchResults&) = delete;
    SearchResults& operator=(const SearchResults&) = delete;

    /// The strip above the page; nothing over a page that shows no results.
    [[nodiscard]] const std::optional<SearchStrip>& strip() const { return state_.strip; }
    /// Whether the answer stands beside the page.
    [[nodiscard]] bool showAnswer() const { return state_.showAnswer; }
    /// Whether it would if the person asked for it.
    [[nodiscard]] bool canShowAnswer() const { return state_.canShowAnswer; }
    [[nodiscard]] SearchAnswer& answer() { return answer_; }

    /// Shows or hides answers, in all windows.
    void setAnswerOpen(bool open) { settings_.searchAnswerOpen.set(open); }
    /// Goes where a link of the strip or a source leads, in the same tab.
    void open(const Url& url);
    /// The tab's address.
    [[nodiscard]] const std::optional<Url>& page() const { return state_.page; }

    /// Calls `slot` when one of these became another.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    struct State {
        std::optional<Url> page;
        std::optional<SearchStrip> strip;
        bool canShowAnswer = false;
        bool showAnswer = false;

        friend bool operator==(const State&, const State&) = default;
    };

    void update();
    [[nodiscard]] State present() const;

    const std::weak_ptr<BrowserTab> tab_;
    const bool isPrivate_;
    Settings& settings_;
    State state_;
    sigc::signal<void()> changed_;
    SearchAnswer answer_;
};

}  // namespace orvu

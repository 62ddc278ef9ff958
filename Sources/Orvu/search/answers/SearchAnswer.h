#pragma once

#include "assistant/Kesto.h"
#include "core/BrowserTab.h"
#include "foundation/async/TaskScope.h"
#include "platform/BackgroundWork.h"
#include "platform/MainLoop.h"
#include "platform/PageReads.h"
#include "search/answers/ResultsPage.h"

#include <sigc++/sigc++.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// A short answer to a search, from its top results: waits for the page of results, reads what it
/// lists, fetches the first few of the pages behind it and has the assistant's model answer. All of
/// it stays on this computer but the requests for those pages.
class SearchAnswer {
public:
    /// Where the answer stands.
    struct Phase {
        enum class Kind {
            unavailable,  ///< no model can be asked
            failed,
            reading,   ///< waits for the results, and fetches pages
            thinking,  ///< the model is at work
            done,
        };
        Kind kind = Kind::reading;
        std::string message;  ///< why, for the person, where there is no answer

        friend bool operator==(const Phase&, const Phase&) = default;
    };
    /// A result, numbered as the model cites it.
    struct Source {
        int id = 0;  ///< from 1
        std::string title;
        Url url;                   ///< where it leads; a redirect of the engine's, maybe
        std::optional<Url> shown;  ///< the address that the page of results tells; may be relative

        friend bool operator==(const Source&, const Source&) = default;
    };

    static constexpr std::size_t readLimit = 3;    ///< results whose pages are fetched
    static constexpr std::size_t handedLimit = 4;  ///< results that the model hears of
    static constexpr std::size_t followUpsLimit = 3;
    static constexpr std::size_t followUpLimit = 90;  ///< characters, exclusive
    /// How long a page that is busy may take for telling its results, each time it is asked.
    static constexpr std::chrono::seconds resultsPatience{5};

    /// What the model is told before every search.
    static const std::string_view systemPrompt;
    /// How the requests for pages name themselves.
    static const std::string userAgent;

    /// What the model said, taken apart.
    struct Reply {
        std::string answer;
        std::vector<std::string> followUps;

        friend bool operator==(const Reply&, const Reply&) = default;
    };
    [[nodiscard]] static Reply reply(std::string_view text);

    /// All that is referred to must outlive this.
    SearchAnswer(Kesto& kesto, MainLoop& loop, PageReads& reads, BackgroundWork& background)
        : kesto_(kesto), loop_(loop), reads_(reads), background_(background) {}
    SearchAnswer(const SearchAnswer&) = delete;
    SearchAnswer& operator=(const SearchAnswer&) = delete;

    [[nodiscard]] const Phase& phase() const { return phase_; }
    /// The search that is answered.
    [[nodiscard]] const std::string& question() const { return question_; }
    /// What the model said, without the searches that it proposes; empty until it did.
    [[nodiscard]] const std::string& answer() const { return answer_; }
    /// The searches that it proposes.
    [[nodiscard]] const std::vector<std::string>& followUps() const { return followUps_; }
    /// The results, also while a new run has not found its own yet.
    [[nodiscard]] const std::vector<Source>& sources() const { return sources_; }
    /// Whether the sources are those of the present run.
    [[nodiscard]] bool sourcesAreCurrent() const { return sourcesAreCurrent_; }

    /// What the model that answers is called; empty if that isn't known.
    [[nodiscard]] std::string modelName() const { return kesto_.model().modelName(); }

    /// Answers `query` from the results that `tab` shows or will show, in the place of whatever is
    /// under way.
    void run(const std::shared_ptr<BrowserTab>& tab, std::string query);
    /// Answers another question from the same results.
    void ask(std::string question);

    /// Calls `slot` after each change.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    using Results = std::vector<FoundResult>;
    using Texts = std::vector<std::string>;

    [[nodiscard]] Task<void> read(std::weak_ptr<BrowserTab> tab, std::string query);
    [[nodiscard]] Task<void> untilLoaded(std::weak_ptr<BrowserTab> tab);
    [[nodiscard]] Task<Results> findResults(std::weak_ptr<BrowserTab> tab);
    [[nodiscard]] Task<Results> results(std::weak_ptr<BrowserTab> tab);
    [[nodiscard]] Task<Texts> textsOf(std::vector<Url> pages, Url listing);
    [[nodiscard]] Task<void> think(std::string question);
    void publish(const Results& results);
    void set(Phase phase);

    Kesto& kesto_;
    MainLoop& loop_;
    PageReads& reads_;
    BackgroundWork& background_;
    Phase phase_;
    std::string question_;
    std::string answer_;
    std::vector<std::string> followUps_;
    std::vector<Source> sources_;
    bool sourcesAreCurrent_ = false;
    std::vector<Kesto::Page> pages_;  ///< what the last run told the model
    sigc::signal<void()> changed_;
    TaskScope task_;  // last, so that it ends before what it uses
};

}  // namespace orvu

#pragma once

#include "foundation/async/TaskScope.h"
#include "platform/LanguageModel.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The assistant: takes one question and the text of some pages, asks the model of this computer
/// once, and tells how it went. There is one for all windows, so a question asked in one of them
/// replaces the answer that the others show. It knows nothing of tabs: whoever asks decides what
/// it may read.
class Kesto {
public:
    /// A page as the model may see it.
    struct Page {
        std::string title;
        std::string url;   ///< empty for none
        std::string text;  ///< what is visible of it

        friend bool operator==(const Page&, const Page&) = default;
    };

    /// Where a question stands.
    struct Phase {
        enum class Kind { idle, thinking, done, error };
        Kind kind = Kind::idle;
        std::string message;  ///< of an error, for the person

        friend bool operator==(const Phase&, const Phase&) = default;
    };

    // Limits in characters, all of them plain cuts of the head.
    static constexpr std::size_t questionLimit = 1800;
    static constexpr std::size_t pagesLimit = 4;
    static constexpr std::size_t textBudget = 3600;  ///< for all pages together
    static constexpr std::size_t titleLimit = 200;
    static constexpr std::size_t urlLimit = 400;
    /// What is read of a page for a question.
    static constexpr std::size_t pageTextLimit = 6000;

    /// What the model is told before every question.
    static const std::string_view systemPrompt;

    /// `model` must outlive this.
    explicit Kesto(LanguageModel& model) : model_(model) {}
    Kesto(const Kesto&) = delete;
    Kesto& operator=(const Kesto&) = delete;

    [[nodiscard]] const Phase& phase() const { return phase_; }
    /// What the model said, without white space at its ends; empty until it did.
    [[nodiscard]] const std::string& answer() const { return answer_; }
    /// The titles of the pages that were given with the question, those beyond the limit as well.
    [[nodiscard]] const std::vector<std::string>& sources() const { return sources_; }

    /// Asks, in the place of any question that is under way.
    void ask(std::string_view question, const std::vector<Page>& pages);

    /// The sentence to show while no model can be asked; computed anew at each call.
    [[nodiscard]] std::optional<std::string> unavailableReason() const;
    /// The sentence for a reason; nothing for none.
    [[nodiscard]] static std::optional<std::string> message(
        std::optional<UnavailableReason> reason);
    /// What the model is asked: the question, below the pages as JSON that no page can end.
    [[nodiscard]] static std::string prompt(std::string_view question,
                                            const std::vector<Page>& pages);
    /// One request to the model.
    [[nodiscard]] Future<ModelResponse> respond(const std::string& prompt,
                                                const std::string& instructions) {
        return model_.respond(prompt, instructions);
    }
    [[nodiscard]] LanguageModel& model() const { return model_; }

    /// Calls `slot` after each change of phase, answer or sources.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    void set(Phase phase);
    [[nodiscard]] Task<void> answerTo(std::string prompt);

    LanguageModel& model_;
    Phase phase_;
    std::string answer_;
    std::vector<std::string> sources_;
    sigc::signal<void()> changed_;
    TaskScope task_;
};

}  // namespace orvu

#pragma once

#include "assistant/Kesto.h"
#include "assistant/PageReading.h"
#include "assistant/SkillStore.h"
#include "core/BrowserStore.h"
#include "foundation/Observable.h"
#include "foundation/text/Translation.h"
#include "look/DotFace.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The assistant's panel in one window, without a widget: the question that is being typed with the
/// tabs brought in, what is asked and which pages go with it, and what the conversation shows. It
/// lives as long as the panel is open.
class KestoPanel : public sigc::trackable {
public:
    /// The lines that are told over the field, of which one kind shows at most.
    enum class Menu { none, newSkill, skills, mentions };

    /// What the conversation shows below the question.
    enum class Reply { dots, error, answer };

    static constexpr std::size_t mentionableLimit = 6;
    static constexpr std::size_t greetingSkills = 3;

    static constexpr std::string_view title = "Kesto";
    static constexpr Phrase closeLabel = phrase("Close Kesto");
    static constexpr Phrase sendLabel = phrase("Send");
    static constexpr Phrase skillsTitle = phrase("Skills");
    static constexpr Phrase newSkillTitle = phrase("New skill");
    static constexpr Phrase mentionsTitle = phrase("Mention a tab");
    static constexpr Phrase noMentions = phrase("No other open tabs match");
    static constexpr Phrase sourcesTitle = phrase("READ");
    static constexpr Phrase yours = phrase("yours");
    static constexpr Phrase deleteSkill = phrase("Delete Skill");
    static constexpr Phrase formTitle = phrase("NEW SKILL");
    static constexpr Phrase namePrompt = phrase("name");
    static constexpr Phrase instructionPrompt =
        phrase("What Kesto should do, e.g. “Draft a short, friendly reply”");
    static constexpr Phrase cancelTitle = phrase("Cancel");
    static constexpr Phrase saveTitle = phrase("Save Skill");
    static constexpr Phrase thinkingLabel = phrase("Thinking");

    /// `kesto`, `skills`, `settings` and `pending` must outlive the panel. `close` closes it, which
    /// may end it.
    KestoPanel(std::shared_ptr<BrowserStore> store, Kesto& kesto, SkillStore& skills,
               Settings& settings, Observable<std::optional<std::string>>& pending,
               std::function<void()> close);
    KestoPanel(const KestoPanel&) = delete;
    KestoPanel& operator=(const KestoPanel&) = delete;

    // What is typed. The view sets these as the person types, and follows them.
    Observable<std::string> text;
    /// Whether the field has the keyboard. Setting it gives it to the field.
    Observable<bool> inputFocused{false};
    Observable<bool> makingSkill{false};
    Observable<std::string> skillName;
    Observable<std::string> skillInstruction;

    [[nodiscard]] BrowserStore& store() const { return *store_; }
    [[nodiscard]] Kesto& kesto() const { return kesto_; }
    [[nodiscard]] SkillStore& skills() const { return skills_; }

    // What shows.
    [[nodiscard]] Mood mood() const;
    [[nodiscard]] std::string prompt() const;
    [[nodiscard]] std::string intro() const;
    /// What the conversation shows as the question; empty while it greets.
    [[nodiscard]] const std::string& lastQuestion() const { return lastQuestion_; }
    [[nodiscard]] Reply reply() const;
    [[nodiscard]] Menu menu() const;
    [[nodiscard]] bool canSend() const;
    [[nodiscard]] bool canSaveSkill() const;

    /// What is typed after a slash at the front, as long as it is one word.
    [[nodiscard]] std::optional<std::string> skillQuery() const;
    /// What is typed after the last @ that begins a word; it may hold blanks.
    [[nodiscard]] std::optional<std::string> mentionQuery() const;
    /// The tabs that can be brought in and match, in the order of the column.
    [[nodiscard]] BrowserStore::TabList mentionable(std::string_view query) const;
    [[nodiscard]] const std::vector<Uuid>& mentions() const { return mentions_; }
    /// The tabs that were brought in and are still open.
    [[nodiscard]] BrowserStore::TabList mentionedTabs() const;

    // What is done.
    /// Return in the field, and the button beside it: runs the first skill of the menu, brings in
    /// its first tab, or sends.
    void submit();
    /// Asks; `shown` stands before what is asked in the conversation. Nothing for a blank text.
    void send(std::string_view asked, const std::optional<std::string>& shown);
    void run(const KestoSkill& skill);
    void mention(const BrowserTab& tab);
    void removeMention(const BrowserTab& tab);
    /// Sends the question that was handed in from elsewhere, if there is one.
    void takePending();
    /// Adds the skill of the form and closes it; leaves it open if the store refuses.
    void saveSkill();
    /// Escape in the field: ends the form. False if there was none, and somebody else may take it.
    bool cancelSkill();
    void close() const;

    /// Calls `slot` after each change of anything that shows.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    /// How many questions wait for their pages.
    struct Reading {
        int count = 0;
        sigc::signal<void()> changed;
    };

    /// One that waits for its pages.
    struct Question {
        Kesto& kesto;
        PageReader reader;
        std::string text;
        std::vector<std::weak_ptr<BrowserTab>> tabs;
        std::shared_ptr<Reading> reading;
    };

    [[nodiscard]] BrowserStore::TabList tabsToRead() const;
    [[nodiscard]] static Task<void> readAndAsk(Question question);
    void changed() { changed_.emit(); }

    const std::shared_ptr<BrowserStore> store_;
    Kesto& kesto_;
    SkillStore& skills_;
    Settings& settings_;
    Observable<std::optional<std::string>>& pending_;
    const std::function<void()> close_;
    std::vector<Uuid> mentions_;
    std::string lastQuestion_;
    const std::shared_ptr<Reading> reading_ = std::make_shared<Reading>();
    sigc::signal<void()> changed_;
};

}  // namespace orvu

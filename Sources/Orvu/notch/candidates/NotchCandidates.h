#pragma once

#include "foundation/Date.h"
#include "foundation/text/Translation.h"
#include "notch/candidates/NotchEntry.h"
#include "profiles/Preferences.h"
#include "search/Bang.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

class NotchSnapshot;
struct Visit;

/// What the candidates depend on beside the window's tabs and records.
struct NotchQuestion {
    std::string query = {};  ///< the text of the field, untouched
    std::vector<std::string> predictions = {};
    Prefs::Engine engine = Prefs::Engine::google;
    bool suggestionsOn = true;
    bool isPrivate = false;
    /// The time of day of a date, as people here write it.
    std::function<std::string(Date)> shortTime = {};
};

/// What stands under the list of the notch.
struct NotchFooter {
    /// Sends the typed text to another site.
    struct Chip {
        Bang bang;
        std::string help;

        /// Made when it is chosen: the typed text may be a book.
        [[nodiscard]] SearchFor action(std::string_view query) const;

        friend bool operator==(const Chip&, const Chip&) = default;
    };

    std::vector<Chip> chips;
    std::string note;

    friend bool operator==(const NotchFooter&, const NotchFooter&) = default;
};

/// Everything under the field of the notch, for one text in it: the list, the completion behind
/// the caret, and the row that says what Return will do. Candidates keep the order of their
/// sources and are cut by fixed caps.
class NotchCandidates {
public:
    static constexpr Phrase askSubtitle = phrase("Answer from your tabs, on this Mac");
    /// Stands in the primary row where it has no host.
    static constexpr std::string_view primarySymbol = "globe";

    NotchCandidates(const NotchSnapshot& snapshot, const NotchQuestion& question);

    [[nodiscard]] const std::vector<NotchEntry>& entries() const { return entries_; }
    /// The one host that a person is taken to want.
    [[nodiscard]] const std::optional<std::string>& topHit() const { return topHit_; }
    /// Past searches that begin with the typed text, the latest first.
    [[nodiscard]] const std::vector<std::string>& recentSearches() const { return recent_; }
    /// The completion behind the caret; may be empty.
    [[nodiscard]] const std::string& ghost() const { return ghost_; }
    [[nodiscard]] const std::string& primaryTitle() const { return primaryTitle_; }
    [[nodiscard]] const std::string& primarySubtitle() const { return primarySubtitle_; }
    /// The host whose icon the primary row shows; empty for `primarySymbol`.
    [[nodiscard]] const std::string& primaryHost() const { return primaryHost_; }
    [[nodiscard]] const NotchAction& primaryAction() const { return primaryAction_; }
    [[nodiscard]] const std::string& askTitle() const { return askTitle_; }
    [[nodiscard]] const std::optional<Bang::Parsed>& bang() const { return bang_; }
    [[nodiscard]] const std::optional<NotchFooter>& footer() const { return footer_; }

    /// The field's text once a person has taken a correction of what is searched for.
    [[nodiscard]] std::string queryWithCorrection(std::string_view correction) const;

private:
    struct Given;

    void findTopHit(const Given& given);
    void complete(const Given& given);
    void listSearches(const Given& given);
    void listTabs(const Given& given);
    void listBookmarks(const Given& given);
    void listHistory(const Given& given);
    void listToday(const Given& given);
    void listVisit(const Visit& visit, std::string_view section, const NotchQuestion& question);
    void decidePrimaryRow(const Given& given);
    void makeFooter(const Given& given);

    std::optional<Bang::Parsed> bang_;
    std::string prefix_;  ///< of what the rows search for, when there is a bang
    std::optional<std::string> topHit_;
    std::vector<std::string> recent_;
    std::string ghost_;
    std::vector<NotchEntry> entries_;
    std::string primaryTitle_;
    std::string primarySubtitle_;
    std::string primaryHost_;
    NotchAction primaryAction_;
    std::string askTitle_;
    std::optional<NotchFooter> footer_;
};

}  // namespace orvu

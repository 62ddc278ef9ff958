#pragma once

#include "core/BrowserStore.h"
#include "foundation/text/Translation.h"
#include "notch/AddressNotch.h"
#include "notch/candidates/NotchCandidates.h"
#include "notch/candidates/NotchSnapshot.h"
#include "search/Suggestions.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The keys that the notch's field does not leave to the text.
enum class NotchKey { enter, commandEnter, escape, tab, rightArrow, downArrow, upArrow };

/// The open notch of one tab: what its command bar says, which row is chosen, and what Return
/// does. All that it says is of one moment, and keys act on what it says: it follows the user's
/// own keys at once, and all else, late answers and changes of the history, at `refresh`, which
/// the view calls right before it draws.
class AddressNotchBody : public sigc::trackable {
public:
    using Entry = NotchEntry;
    /// The width of the curved corners where the shape meets the window's edge.
    static constexpr double ear = 14;
    static constexpr int noSelection = -1;

    /// `notch`, `snapshot` and `services` must outlive this. The snapshot is the window's: it serves
    /// one body after another.
    AddressNotchBody(AddressNotch& notch, std::shared_ptr<BrowserStore> store,
                     std::shared_ptr<BrowserTab> tab, NotchSnapshot& snapshot,
                     AppServices& services, std::unique_ptr<Suggestions> suggestions);
    AddressNotchBody(const AddressNotchBody&) = delete;
    AddressNotchBody& operator=(const AddressNotchBody&) = delete;

    [[nodiscard]] const std::shared_ptr<BrowserTab>& tab() const { return tab_; }
    [[nodiscard]] const std::string& query() const { return notch_.query(); }

    // --- What the command bar says -----------------------------------------------------------
    [[nodiscard]] const std::vector<Entry>& entries() const { return candidates_.entries(); }
    /// The primary row, the fixed ask row and the footer.
    [[nodiscard]] const NotchCandidates& candidates() const { return candidates_; }
    /// An index into `entries`, or `noSelection`: Return then means the primary row.
    [[nodiscard]] int selection() const { return selection_; }
    /// The completion behind the caret; empty unless the caret stands at the end of the text.
    [[nodiscard]] std::string ghost() const;
    /// The key hint at the right end of the field.
    [[nodiscard]] std::string_view keyHint() const {
        return ghost().empty() ? phrase("esc") : phrase("tab ⇥");
    }
    /// What "Did you mean" offers; nothing without a better text.
    [[nodiscard]] const std::optional<std::string>& correction() const { return correction_; }

    // --- What the user does ------------------------------------------------------------------
    /// The field's caret moved: whether it stands behind the whole text, with nothing selected.
    void setCaretAtEnd(bool atEnd);
    /// A key that comes before the text. False if it is the text's own.
    bool press(NotchKey key);
    /// What Return means at this moment.
    void submit(const std::vector<Entry>& entries);
    void goPrimary();
    void choose(const Entry& entry) { perform(entry.action); }
    void perform(const NotchAction& action);
    void ask();
    void useCorrection();

    /// Takes over what changed without a key of the user's: the history, tabs, bookmarks and
    /// predictions. The chosen row stays chosen wherever it stands now.
    void refresh();

    /// Calls `slot` when something changed that `refresh` takes over or that was taken over.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    void notchChanged();
    /// Follows an opening or a new text. False if there is neither.
    bool catchUp();
    void edited();
    bool complete();
    void select(int selection);
    void compute();
    void keepSelection(const std::string& id);
    void search(const std::string& text);
    void load(const Url& url);

    AddressNotch& notch_;
    const std::shared_ptr<BrowserStore> store_;
    const std::shared_ptr<BrowserTab> tab_;
    NotchSnapshot& snapshot_;
    AppServices& services_;
    const std::unique_ptr<Suggestions> suggestions_;
    std::string query_;  ///< the text that all below belongs to
    bool wasOpen_ = false;
    bool isEdited_ = false;  ///< since the notch opened
    bool caretAtEnd_ = false;
    int selection_ = noSelection;
    NotchCandidates candidates_;
    std::optional<std::string> correction_;
    sigc::signal<void()> changed_;
};

}  // namespace orvu

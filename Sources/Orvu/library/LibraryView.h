#pragma once

#include "core/AppServices.h"
#include "core/BrowserStore.h"
#include "foundation/Observable.h"
#include "foundation/Signal.h"
#include "foundation/text/Translation.h"
#include "library/FoldedVisits.h"
#include "library/LibraryEntries.h"

#include <sigc++/sigc++.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The library of one window, without a widget: its history, the bookmarks of its profile and the
/// tabs that were closed in it. What shows is always what the stores hold; between two changes
/// only keys of the lines are kept, and texts to search in. All texts are those of
/// `platformText`'s source.
class LibraryView : public sigc::trackable {
public:
    using Section = LibrarySection;

    struct SectionFacts {
        Section section;
        std::string_view rawValue;
        Phrase title;
        std::string_view symbol;
        Phrase prompt;     ///< of the search
        Phrase emptyText;  ///< without entries, and where the search finds none
    };
    static constexpr std::array<SectionFacts, 3> sections{{
        {Section::history, "history", phrase("History"), "clock.arrow.circlepath",
         phrase("Search history"),
         phrase("No pages yet. Pages you visit show up here for 30 days.")},
        {Section::bookmarks, "bookmarks", phrase("Bookmarks"), "star", phrase("Search bookmarks"),
         phrase("No bookmarks yet. Press ⌘D, or click the star in the notch, to keep a page.")},
        {Section::closed, "closed", phrase("Recently closed"), "xmark.square",
         phrase("Search recently closed"), phrase("Tabs you close in this window show up here.")},
    }};

    static constexpr Phrase heading = phrase("LIBRARY");
    static constexpr Phrase backTitle = phrase("Back to the page");
    static constexpr std::string_view backSymbol = "arrow.left";
    static constexpr std::string_view searchSymbol = "magnifyingglass";
    static constexpr Phrase clearTitle = phrase("Clear History…");
    static constexpr Phrase clearHeading = phrase("Clear history from");

    /// What a line about a page says. Each text is fit for one line, whatever a page wrote.
    struct Row {
        Url url;
        std::string title;  ///< the site's name where there is none; empty without either
        std::string host;   ///< for people
        std::string time;   ///< empty for a bookmark

        /// All of it in one text, for those who hear it.
        [[nodiscard]] std::string accessibleName() const;
        /// Whose icon stands for it.
        [[nodiscard]] std::string iconHost() const { return url.host().value_or(""); }
    };
    /// What the menu of a row offers.
    enum class Action { openInNewTab, copyLink, remove };
    struct MenuLine {
        std::string_view title;
        Action action;
    };
    /// What is answered to `clearHeading`.
    enum class Clearing { today, allTime, cancel };
    struct ClearAnswer {
        Phrase title;
        Clearing clearing;
    };
    static constexpr std::array<ClearAnswer, 3> clearAnswers{{
        {phrase("Today"), Clearing::today},
        {phrase("All time"), Clearing::allTime},
        {phrase("Cancel"), Clearing::cancel},
    }};

    /// `store` and `services` must outlive the view.
    LibraryView(BrowserStore& store, AppServices& services);
    LibraryView(const LibraryView&) = delete;
    LibraryView& operator=(const LibraryView&) = delete;

    /// What is searched for. It stays when another section shows.
    Observable<std::string> query;
    /// The question about clearing is open.
    Observable<bool> confirmClear{false};

    // What shows.
    /// The history where the library is closed.
    [[nodiscard]] Section section() const;
    [[nodiscard]] const SectionFacts& facts() const;
    /// What the empty field of the search says.
    [[nodiscard]] std::string prompt() const;
    /// The lines of the list. They stand until the next change, or the next call after one.
    [[nodiscard]] const std::vector<LibraryEntry>& entries();
    /// What a line about a page says; nothing for a header, and for what has left its list.
    [[nodiscard]] std::optional<Row> row(const LibraryEntry& entry) const;
    /// What the header of a day says now; its text is another one after midnight.
    [[nodiscard]] std::string dayTitle(const LibraryEntry& header) const;
    /// What the menu of each row offers, from top to bottom.
    [[nodiscard]] std::vector<MenuLine> menu() const;
    [[nodiscard]] bool canClear() const;

    // What is done. Nothing with an entry that has left its list.
    void show(Section section);
    /// Closes the library.
    void backToPage();
    /// Goes to the page in the tab in front, and closes the library.
    void open(const LibraryEntry& entry);
    /// The same in a new tab, which comes to the front.
    void openInNewTab(const LibraryEntry& entry);
    void copyLink(const LibraryEntry& entry);
    /// Forgets a visit or a bookmark. A closed tab stays.
    void remove(const LibraryEntry& entry);
    void perform(Action action, const LibraryEntry& entry);
    /// Opens the question, if there is anything to clear.
    void askToClear();
    /// Closes the question and clears what was answered.
    void clear(Clearing clearing);

    /// Calls `slot` after each change of anything that shows.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    /// What all three lists know of a page.
    struct Page {
        Url url;
        std::string title;
    };

    [[nodiscard]] std::vector<LibraryEntry> makeEntries();
    [[nodiscard]] std::vector<LibraryEntry> historyEntries();
    [[nodiscard]] std::optional<Page> pageOf(const LibraryEntry& entry) const;
    void historyMayHaveChanged();
    void setStale();

    BrowserStore& store_;
    BookmarkStore& bookmarks_;
    const Platform& platform_;
    std::vector<LibraryEntry> entries_;
    FoldedVisits folded_;
    bool isStale_ = true;        ///< `entries_` may be others now
    bool isFoldedStale_ = true;  ///< so may be what `folded_` holds
    sigc::signal<void()> changed_;
};

}  // namespace orvu

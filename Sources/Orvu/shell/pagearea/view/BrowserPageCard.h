#pragma once

#include "look/view/FrameRefresh.h"
#include "pagetools/view/BrowserFindBarView.h"
#include "shell/library/view/LibraryPage.h"
#include "shell/pagearea/view/BrowserPageContent.h"
#include "shell/pagearea/view/BrowserSplitPagesView.h"

#include <gtkmm/box.h>
#include <gtkmm/overlay.h>

#include <memory>
#include <optional>
#include <vector>

namespace orvu {

/// Everything between the column of tabs and the window's edge: one card with the tab in front,
/// two side by side, or the library. The search bar shows over one page alone; beside anything else
/// it waits.
class BrowserPageCard : public Gtk::Box {
public:
    /// `view` must outlive the card.
    explicit BrowserPageCard(BrowserView& view);
    ~BrowserPageCard() override;

    /// Shows what the store says now. True if another page stands there.
    bool refresh();
    /// Gives the keyboard to the tab in front.
    void focusContent();

    /// The parts beside the page of the tab in front that the keyboard can go to now.
    [[nodiscard]] std::vector<Gtk::Widget*> areas();

private:
    void clear();
    void showSingle();
    void showPair();
    bool showLibrary();
    void findChanged();
    void focusFind();
    void findAgain(FindDirection direction);
    void showFind();
    void closeFind();
    void endClosingFind();

    BrowserView& view_;
    Gtk::Overlay card_;  ///< the single page, and the search bar over it
    std::optional<BrowserPageContent> single_;
    std::unique_ptr<BrowserFindBarView> find_;
    std::unique_ptr<BrowserFindBarView> closingFind_;  ///< closed, and about to go
    FrameRefresh closingFindGoes_;
    std::optional<BrowserSplitPagesView> pair_;
    std::unique_ptr<LibraryPage> library_;
};

}  // namespace orvu

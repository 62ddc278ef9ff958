#pragma once

#include "look/view/FrameRefresh.h"
#include "pagetools/view/BrowserFindBarView.h"
#include "shell/pagearea/view/BrowserPageContent.h"
#include "shell/pagearea/view/BrowserSplitPagesView.h"

#include <gtkmm/box.h>
#include <gtkmm/overlay.h>

#include <memory>
#include <optional>

namespace orvu {

/// Everything between the column of tabs and the window's edge: one card with the tab in front,
/// or two side by side. The search bar shows over one page alone; while two stand side by side it
/// waits.
class BrowserPageCard : public Gtk::Box {
public:
    /// `view` must outlive the card.
    explicit BrowserPageCard(BrowserView& view);
    ~BrowserPageCard() override;

    /// Shows what the store says now. True if another page stands there.
    bool refresh();
    /// Gives the keyboard to the tab in front.
    void focusContent();

    /// What moves the border of two pages; nullptr where there is one.
    [[nodiscard]] Gtk::Widget* divider() { return pair_ ? &pair_->divider() : nullptr; }

    /// What the page of the tab in front asks for; nullptr if it asks for nothing.
    [[nodiscard]] Gtk::Widget* question() {
        return pair_ ? pair_->question() : single_->question();
    }
    /// What is said of a load that failed in the tab in front; nullptr where none did.
    [[nodiscard]] Gtk::Widget* notice() { return pair_ ? pair_->notice() : single_->notice(); }

private:
    void showSingle();
    void showPair();
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
};

}  // namespace orvu

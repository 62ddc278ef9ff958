#pragma once

#include "foundation/Signal.h"
#include "look/motion/view/EnteringBox.h"
#include "look/view/FrameRefresh.h"
#include "search/SearchResults.h"
#include "search/answers/view/SearchAnswerCardView.h"
#include "search/answers/view/SearchStripView.h"
#include "shell/BrowserView.h"
#include "shell/pagearea/view/ResultsRow.h"

#include <memory>
#include <optional>

namespace orvu {

/// What stands around the page of one tab that shows search results: the strip above it, and the
/// answer at its end. Around any other page there is nothing.
class ResultsFrame : public Gtk::Box {
public:
    /// `view` and `page`, what is framed, must outlive this.
    ResultsFrame(BrowserView& view, Gtk::Widget& page);
    ~ResultsFrame() override;

    /// Frames the page of `tab`. For another tab all begins anew.
    void show(const std::shared_ptr<BrowserTab>& tab);
    /// nullptr for none.
    [[nodiscard]] Gtk::Widget* strip() { return strip_.get(); }
    [[nodiscard]] Gtk::Widget* answer() { return card_.get(); }

    /// Calls `slot` when what had the keyboard goes.
    sigc::connection connectKeyboardFree(const sigc::slot<void()>& slot) {
        return keyboardFree_.connect(slot);
    }

private:
    void refresh();
    void showStrip(bool shows);
    void showCard(bool shows);

    BrowserView& view_;
    ResultsRow row_;
    std::weak_ptr<BrowserTab> tab_;
    std::optional<SearchResults> results_;
    std::unique_ptr<EnteringBox> stripPlace_;
    std::unique_ptr<SearchStripView> strip_;
    std::unique_ptr<SearchAnswerCardView> card_;
    FrameRefresh refresh_;
    sigc::signal<void()> keyboardFree_;
};

}  // namespace orvu

#pragma once

#include "look/view/DotFaceView.h"
#include "look/view/FrameRefresh.h"
#include "search/SearchResults.h"
#include "site/icons/SiteIcons.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvu {

/// The bar above a page of results. Where its links are wider than their room they scroll with the
/// keyboard's place, the wheel and the touchpad.
class SearchStripView : public Gtk::Box {
public:
    static constexpr int height = 44;

    /// `results` must outlive the strip.
    SearchStripView(SearchResults& results, SiteIcons icons);

private:
    using Links = std::function<std::vector<SearchStrip::Link>()>;

    void build();
    void addLinks(const Links& links, bool hasText);
    [[nodiscard]] Gtk::Button* makeButton(const SearchStrip::Link& link, bool hasText);
    void addAnswerButton();
    void refresh();

    SearchResults& results_;
    const SiteIcons icons_;
    Gtk::ScrolledWindow scroller_;
    Gtk::Box row_;
    std::optional<Prefs::Engine> engine_;  ///< that the row was built for
    std::vector<Gtk::Button*> kinds_;
    Gtk::Button answer_;
    Gtk::Box answerLine_;
    Gtk::Label answerTitle_;
    DotFaceView face_;
    FrameRefresh refresh_;
};

}  // namespace orvu

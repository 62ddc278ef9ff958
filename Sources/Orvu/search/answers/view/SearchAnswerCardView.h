#pragma once

#include "look/motion/view/EnteringBox.h"
#include "look/view/DotFaceView.h"
#include "look/view/FrameRefresh.h"
#include "search/SearchResults.h"
#include "search/answers/SearchAnswerCard.h"
#include "search/answers/view/ShimmerLine.h"
#include "site/icons/SiteIcons.h"

#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include <string>
#include <vector>

namespace orvu {

/// The card beside a page of results, with the answer and where it comes from. What a model or a page
/// says is plain text in it.
class SearchAnswerCardView : public EnteringBox {
public:
    /// `results` must outlive the card.
    SearchAnswerCardView(SearchResults& results, SiteIcons icons);

private:
    void addHeader();
    void addContent();
    void refresh();
    void refreshAnswer();
    void refreshSources();
    void refreshFollowUps();
    [[nodiscard]] std::vector<Gtk::Widget*> content();
    [[nodiscard]] SearchAnswer& answer() { return results_.answer(); }

    SearchResults& results_;
    const SiteIcons icons_;
    Gtk::Box header_;
    Gtk::Box tile_;
    DotFaceView face_;
    Gtk::Box names_;
    Gtk::Label name_;
    Gtk::Label status_;
    Gtk::Button close_;
    Gtk::Image cross_;
    Gtk::ScrolledWindow scroller_;
    Gtk::Box lines_;
    Gtk::Label question_;
    Gtk::Box shimmer_;
    EnteringBox answerPlace_;
    Gtk::Label answer_;
    Gtk::Label message_;
    Gtk::Box sources_;
    Gtk::Label next_;
    Gtk::Box followUps_;
    std::vector<SearchAnswer::Source> shownSources_;
    std::vector<std::string> shownFollowUps_;
    std::string shownAnswer_;
    FrameRefresh refresh_;
};

}  // namespace orvu

#include "search/answers/view/SearchSourceRow.h"

#include "assistant/view/KestoText.h"
#include "foundation/text/DisplayHost.h"
#include "look/text/OneLine.h"
#include "look/view/Accessible.h"

#include <string>

namespace orvu {
namespace {

constexpr int spacing = 8;
constexpr int numberWidth = 14;
constexpr int iconSize = 16;
constexpr std::size_t titleLimit = 200;
constexpr std::size_t helpLimit = 500;

}  // namespace

SearchSourceRow::SearchSourceRow(const SearchAnswer::Source& source, SiteIcons icons,
                                 const std::function<void(const Url&)>& open)
    : line_(Gtk::Orientation::HORIZONTAL, spacing),
      number_(std::to_string(source.id)),
      icon_(icons, iconSize),
      column_(Gtk::Orientation::VERTICAL),
      title_(oneLine(source.title, titleLimit)),
      site_(displayHost(SearchAnswerCard::site(source))) {
    add_css_class("answer-source");
    number_.add_css_class("answer-number");
    number_.set_size_request(numberWidth, -1);
    line_.append(number_);
    icon_.setHost(SearchAnswerCard::host(source));
    icon_.set_valign(Gtk::Align::CENTER);
    line_.append(icon_);
    title_.add_css_class("answer-source-title");
    site_.add_css_class("answer-source-site");
    for (auto* const label : {&title_, &site_}) {
        cutText(*label);
        column_.append(*label);
    }
    column_.set_hexpand(true);
    line_.append(column_);
    hideFromAccessibility(line_);  // the button is one element
    set_child(line_);
    set_tooltip_text(oneLine(source.url.absoluteString(), helpLimit));
    setAccessibleLabel(*this, oneLine(SearchAnswerCard::accessibleName(source), helpLimit));
    signal_clicked().connect([open, url = source.url] { open(url); });
}

}  // namespace orvu

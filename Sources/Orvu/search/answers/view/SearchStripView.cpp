#include "search/answers/view/SearchStripView.h"

#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "site/icons/view/SiteIcon.h"

#include <gtkmm/eventcontrollermotion.h>

namespace orvu {
namespace {

constexpr int spacing = 4;
constexpr int chipSpacing = 6;
constexpr int iconSize = 14;
constexpr double faceDot = 1.2;
constexpr double faceGap = 0.7;

}  // namespace

SearchStripView::SearchStripView(SearchResults& results, SiteIcons icons)
    : Gtk::Box(Gtk::Orientation::HORIZONTAL, spacing),
      results_(results),
      icons_(icons),
      row_(Gtk::Orientation::HORIZONTAL, spacing),
      answerLine_(Gtk::Orientation::HORIZONTAL, chipSpacing),
      answerTitle_(std::string{SearchStrip::answerTitle}),
      face_(faceDot, faceGap),
      refresh_(*this, [this] { refresh(); }) {
    add_css_class("search-strip");
    set_size_request(-1, height);
    set_hexpand(true);
    property_accessible_role() = Gtk::Accessible::Role::GROUP;
    setAccessibleLabel(*this, std::string{SearchStrip::sameSearch});
    scroller_.set_policy(Gtk::PolicyType::EXTERNAL, Gtk::PolicyType::NEVER);
    scroller_.set_hexpand(true);
    scroller_.set_child(row_);
    nameScrollBars(scroller_);
    append(scroller_);
    addAnswerButton();
    results_.connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

void SearchStripView::addAnswerButton() {
    answer_.add_css_class("search-answer");
    answer_.set_valign(Gtk::Align::CENTER);
    auto* const tile = Gtk::make_managed<Gtk::Box>();
    tile->add_css_class("kesto-tile");
    tile->set_valign(Gtk::Align::CENTER);
    tile->append(face_);
    answerLine_.append(*tile);
    answerLine_.append(answerTitle_);
    hideFromAccessibility(answerLine_);  // the button is one element
    answer_.set_child(answerLine_);
    const std::string help = SearchStrip::answerHelp;
    answer_.set_tooltip_text(help);
    setAccessibleLabel(answer_, help);
    answer_.signal_clicked().connect([this] { results_.setAnswerOpen(true); });
    // It stands over every page of results: alive all the time it would keep the computer awake.
    face_.setAlive(false);
    const auto motion = Gtk::EventControllerMotion::create();
    motion->signal_enter().connect([this](double, double) { face_.setAlive(true); });
    motion->signal_leave().connect([this] { face_.setAlive(false); });
    answer_.add_controller(motion);
    append(answer_);
}

/// The links of an engine's pages are the same for every search, but for where they lead. So the
/// buttons stay with the engine, and the keyboard with the button.
void SearchStripView::build() {
    while (Gtk::Widget* const child = row_.get_first_child()) row_.remove(*child);
    kinds_.clear();
    addLinks([this] { return results_.strip()->kinds(results_.page()); }, true);
    for (auto* child = row_.get_first_child(); child; child = child->get_next_sibling()) {
        kinds_.push_back(dynamic_cast<Gtk::Button*>(child));
    }
    addLinks(
        [this] {
            const auto maps = results_.strip()->maps();
            return maps ? std::vector{*maps} : std::vector<SearchStrip::Link>{};
        },
        true);
    auto* const caption = Gtk::make_managed<Gtk::Label>(std::string{SearchStrip::sameSearch});
    caption->add_css_class("search-strip-caption");
    row_.append(*caption);
    addLinks([this] { return results_.strip()->engines(); }, true);
    addLinks([this] { return results_.strip()->sites(); }, false);
}

void SearchStripView::addLinks(const Links& links, bool hasText) {
    const auto now = links();
    for (std::size_t index = 0; index < now.size(); ++index) {
        Gtk::Button* const button = makeButton(now[index], hasText);
        button->signal_clicked().connect([this, links, index] {
            if (!results_.strip()) return;  // it goes with the next frame
            const auto present = links();
            if (index < present.size()) results_.open(present[index].url);
        });
        row_.append(*button);
    }
}

Gtk::Button* SearchStripView::makeButton(const SearchStrip::Link& link, bool hasText) {
    auto* const button = Gtk::make_managed<Gtk::Button>();
    button->add_css_class(hasText ? "search-chip" : "search-site");
    button->set_valign(Gtk::Align::CENTER);
    auto* const line = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, chipSpacing);
    line->set_halign(Gtk::Align::CENTER);
    if (!link.iconHost.empty()) {
        auto* const icon = Gtk::make_managed<SiteIcon>(icons_, iconSize);
        icon->setHost(link.iconHost);
        icon->set_valign(Gtk::Align::CENTER);
        line->append(*icon);
    }
    if (hasText) line->append(*Gtk::make_managed<Gtk::Label>(link.name));
    hideFromAccessibility(*line);  // the button is one element
    button->set_child(*line);
    if (!link.help.empty()) button->set_tooltip_text(link.help);
    setAccessibleLabel(*button, link.help.empty() ? link.name : link.help);
    return button;
}

void SearchStripView::refresh() {
    if (!results_.strip()) return;  // it goes with the next frame
    if (engine_ != results_.strip()->engine) {
        engine_ = results_.strip()->engine;
        build();
    }
    const auto kinds = results_.strip()->kinds(results_.page());
    for (std::size_t index = 0; index < kinds_.size() && index < kinds.size(); ++index) {
        setCssClass(*kinds_[index], "current", kinds[index].isCurrent);
        setAccessibleSelected(*kinds_[index], kinds[index].isCurrent);
    }
    answer_.set_visible(results_.canShowAnswer() && !results_.showAnswer());
}

}  // namespace orvu

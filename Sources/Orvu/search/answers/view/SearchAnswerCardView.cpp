#include "search/answers/view/SearchAnswerCardView.h"

#include "assistant/view/KestoText.h"
#include "look/view/Accessible.h"
#include "look/view/Children.h"
#include "look/view/CssClass.h"
#include "look/view/SymbolImage.h"
#include "search/answers/view/CitedText.h"
#include "search/answers/view/SearchSourceRow.h"

#include <array>

namespace orvu {
namespace {

using Kind = SearchAnswer::Phase::Kind;

constexpr int spacing = 14;
constexpr int headerSpacing = 10;
constexpr int shimmerSpacing = 8;
constexpr int sourcesSpacing = 4;
constexpr int followUpsSpacing = 8;
constexpr double faceDot = 1.6;
constexpr double faceGap = 0.8;
constexpr int crossSize = 10;
constexpr int arrowSize = 10;
constexpr BlurFade answerBlur{10};
constexpr std::array shimmerFractions{1.0, 0.92, 0.75};

void setText(Gtk::Label& label, const std::string& text) {
    if (label.get_text().raw() != text) label.set_text(text);
}

void clear(Gtk::Box& box) {
    while (Gtk::Widget* const child = box.get_first_child()) box.remove(*child);
}

Gtk::Button* followUpButton(const std::string& text) {
    auto* const line = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, followUpsSpacing);
    auto* const arrow = Gtk::make_managed<Gtk::Image>();
    setSymbol(*arrow, "arrow.turn.down.right", arrowSize);
    line->append(*arrow);
    auto* const label = Gtk::make_managed<Gtk::Label>(text);
    wrapText(*label);
    line->append(*label);
    hideFromAccessibility(*line);  // the button is one element
    auto* const button = Gtk::make_managed<Gtk::Button>();
    button->add_css_class("answer-follow-up");
    button->set_child(*line);
    setAccessibleLabel(*button, text);
    return button;
}

}  // namespace

SearchAnswerCardView::SearchAnswerCardView(SearchResults& results, SiteIcons icons)
    : EnteringBox(Gtk::Orientation::VERTICAL, spacing, {}),
      results_(results),
      icons_(icons),
      header_(Gtk::Orientation::HORIZONTAL, headerSpacing),
      face_(faceDot, faceGap),
      names_(Gtk::Orientation::VERTICAL),
      name_(std::string{SearchAnswerCard::name}),
      lines_(Gtk::Orientation::VERTICAL, spacing),
      shimmer_(Gtk::Orientation::VERTICAL, shimmerSpacing),
      answerPlace_(Gtk::Orientation::VERTICAL, 0, {.blur = answerBlur}),
      sources_(Gtk::Orientation::VERTICAL, sourcesSpacing),
      next_(std::string{SearchAnswerCard::askNext}),
      followUps_(Gtk::Orientation::VERTICAL, followUpsSpacing),
      refresh_(*this, [this] { refresh(); }) {
    add_css_class("answer-card");
    set_hexpand(false);
    set_overflow(Gtk::Overflow::HIDDEN);
    property_accessible_role() = Gtk::Accessible::Role::GROUP;
    setAccessibleLabel(*this, std::string{SearchStrip::answerTitle});
    addHeader();
    addContent();
    answer().connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

void SearchAnswerCardView::addHeader() {
    tile_.add_css_class("answer-tile");
    tile_.set_valign(Gtk::Align::CENTER);
    tile_.append(face_);
    header_.append(tile_);
    name_.add_css_class("answer-name");
    status_.add_css_class("answer-status");
    status_.property_accessible_role() = Gtk::Accessible::Role::STATUS;
    for (auto* const label : {&name_, &status_}) {
        cutText(*label);
        names_.append(*label);
    }
    names_.set_hexpand(true);
    names_.set_valign(Gtk::Align::CENTER);
    header_.append(names_);
    setSymbol(cross_, "xmark", crossSize);
    close_.set_child(cross_);
    close_.add_css_class("answer-close");
    close_.set_valign(Gtk::Align::CENTER);
    close_.set_tooltip_text(std::string{SearchAnswerCard::closeHelp});
    setAccessibleLabel(close_, std::string{SearchAnswerCard::closeHelp});
    close_.signal_clicked().connect([this] { results_.setAnswerOpen(false); });
    header_.append(close_);
    append(header_);
}

void SearchAnswerCardView::addContent() {
    for (auto* const label : {&question_, &answer_, &message_}) wrapText(*label);
    question_.add_css_class("answer-question");
    message_.property_accessible_role() = Gtk::Accessible::Role::ALERT;
    answer_.add_css_class("answer-text");
    answer_.set_selectable(true);
    answerPlace_.append(answer_);
    for (const double fraction : shimmerFractions) {
        shimmer_.append(*Gtk::make_managed<ShimmerLine>(fraction));
    }
    next_.add_css_class("answer-heading");
    next_.set_xalign(0);
    scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroller_.set_vexpand(true);
    scroller_.set_child(lines_);
    nameScrollBars(scroller_);
    append(scroller_);
}

void SearchAnswerCardView::refresh() {
    const auto& phase = answer().phase();
    face_.setMood(SearchAnswerCard::isThinking(phase) ? Mood::thinking : Mood::idle);
    face_.set_tooltip_text(answer().modelName());
    setText(status_, SearchAnswerCard::status(phase, answer().sources().size()));
    setText(question_, answer().question());
    setText(message_, phase.message);
    setCssClass(message_, "answer-failed", phase.kind == Kind::failed);
    setCssClass(message_, "answer-unavailable", phase.kind == Kind::unavailable);
    refreshAnswer();
    refreshSources();
    refreshFollowUps();
    setChildren(lines_, content());
}

void SearchAnswerCardView::refreshAnswer() {
    if (answer().answer() == shownAnswer_) return;
    shownAnswer_ = answer().answer();
    setCitedText(answer_, SearchAnswerCard::cited(shownAnswer_));
    answerPlace_.enter();
}

void SearchAnswerCardView::refreshSources() {
    const auto listed = SearchAnswerCard::listed(answer());
    std::vector<SearchAnswer::Source> sources{listed.begin(), listed.end()};
    if (sources == shownSources_) return;
    shownSources_ = std::move(sources);
    clear(sources_);
    for (const auto& each : shownSources_) {
        sources_.append(*Gtk::make_managed<SearchSourceRow>(
            each, icons_, [this](const Url& url) { results_.open(url); }));
    }
}

void SearchAnswerCardView::refreshFollowUps() {
    if (answer().followUps() == shownFollowUps_) return;
    shownFollowUps_ = answer().followUps();
    clear(followUps_);
    for (const std::string& text : shownFollowUps_) {
        Gtk::Button* const button = followUpButton(text);
        button->signal_clicked().connect([this, text] { answer().ask(text); });
        followUps_.append(*button);
    }
}

std::vector<Gtk::Widget*> SearchAnswerCardView::content() {
    const bool isAsked = !answer().question().empty();
    switch (answer().phase().kind) {
        case Kind::reading:
            return {&shimmer_, &sources_};
        case Kind::thinking:
            if (isAsked) return {&question_, &shimmer_, &sources_};
            return {&shimmer_, &sources_};
        case Kind::done:
            if (shownFollowUps_.empty()) return {&question_, &answerPlace_, &sources_};
            return {&question_, &answerPlace_, &sources_, &next_, &followUps_};
        case Kind::unavailable:
            return {&sources_, &message_};
        case Kind::failed:
            return {&message_, &sources_};
    }
    return {};
}

}  // namespace orvu

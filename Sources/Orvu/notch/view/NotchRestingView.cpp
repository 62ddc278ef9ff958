#include "notch/view/NotchRestingView.h"

#include "look/text/OneLine.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/SymbolImage.h"

#include <gtkmm/gestureclick.h>

#include <utility>

namespace orvu {
namespace {

constexpr std::size_t labelLimit = 300;
constexpr int symbolSize = 12;

}  // namespace

NotchRestingView::NotchRestingView(BrowserStore& store, Gtk::Widget& badge,
                                   std::function<void(const std::string&)> opened)
    : store_(store), opened_(std::move(opened)), badge_(badge) {
    add_css_class("notch-resting");
    row_.add_css_class("notch-resting-row");
    row_.set_size_request(-1, height);
    row_.append(badge_);
    addLabel();
    addTool(reader_, book_, "win.toggleReader");
    addTool(bookmark_, star_, "win.toggleBookmark");
    set_child(row_);
    dots_.set_valign(Gtk::Align::END);
    dots_.set_margin_start(10);
    dots_.set_margin_end(10);
    dots_.set_margin_bottom(4);
    add_overlay(dots_);
    // What is left between the buttons opens the notch as well.
    const auto click = Gtk::GestureClick::create();
    click->signal_released().connect([this](int, double, double) { opened_(shown_.address); });
    row_.add_controller(click);
}

NotchRestingView::~NotchRestingView() { row_.remove(badge_); }

void NotchRestingView::addLabel() {
    site_.add_css_class("notch-site");
    quiet_.add_css_class("notch-quiet");
    // An address is cut in its path, and where the host alone is too long, at its head: the end
    // tells whose it is.
    site_.set_ellipsize(Pango::EllipsizeMode::START);
    quiet_.set_ellipsize(Pango::EllipsizeMode::END);
    for (auto* const label : {&site_, &quiet_}) label->set_xalign(0);
    hideFromAccessibility(label_);  // the button says it all
    open_.add_css_class("notch-open");
    open_.set_hexpand(true);
    open_.set_focus_on_click(false);
    open_.set_child(label_);
    open_.signal_clicked().connect([this] { opened_(shown_.address); });
    row_.append(open_);
}

void NotchRestingView::addTool(Gtk::Button& button, Gtk::Image& symbol, const char* action) {
    button.add_css_class("notch-tool");
    button.set_valign(Gtk::Align::CENTER);
    button.set_focus_on_click(false);
    button.set_child(symbol);
    button.set_action_name(action);
    row_.append(button);
}

void NotchRestingView::refresh(const BrowserTab& tab) {
    const NotchResting resting = NotchResting::of(tab);
    if (resting != shown_) {
        shown_ = resting;
        site_.set_text(oneLine(shown_.site, labelLimit));
        site_.set_visible(!shown_.site.empty());
        quiet_.set_text(oneLine(shown_.quiet, labelLimit));
        setAccessibleLabel(open_, shown_.name);
    }
    dots_.set_visible(tab.isLoading());
    dots_.setProgress(tab.progress());
    refreshReader(tab);
    refreshBookmark(tab);
}

void NotchRestingView::refreshReader(const BrowserTab& tab) {
    reader_.set_visible(!tab.isNewTab());
    const auto state = NotchReader::of(store_.readerArticle(tab) != nullptr);
    if (state == shownReader_) return;
    shownReader_ = state;
    setSymbol(book_, state.symbol, symbolSize);
    reader_.set_tooltip_text(std::string{state.help});
    setAccessibleLabel(reader_, std::string{state.label});
    setCssClass(reader_, "on", state.isOn);
}

void NotchRestingView::refreshBookmark(const BrowserTab& tab) {
    bookmark_.set_visible(!tab.isNewTab() && !store_.isPrivate());
    const auto state = NotchBookmark::of(store_.bookmarks().contains(tab.url()));
    if (state == shownBookmark_) return;
    shownBookmark_ = state;
    setSymbol(star_, state.symbol, symbolSize);
    bookmark_.set_tooltip_text(std::string{state.help});
    setAccessibleLabel(bookmark_, std::string{state.label});
    setCssClass(bookmark_, "on", state.isOn);
}

}  // namespace orvu

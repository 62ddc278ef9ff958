#include "shell/column/view/BrowserTabColumn.h"

#include "foundation/text/Translation.h"
#include "look/text/PlatformText.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/SymbolImage.h"
#include "look/layout/view/ScrollTo.h"

namespace orvu {

BrowserTabColumn::BrowserTabColumn(BrowserView& view)
    : Gtk::Box(Gtk::Orientation::VERTICAL),
      view_(view),
      menu_(*this),
      tiles_(view.store(), menu_),
      list_(view.store(), menu_),
      refresh_(*this, [this] { refresh(); }) {
    add_css_class("tab-column");
    set_hexpand(false);
    addNewTabButton();
    addTiles();
    today_.add_css_class("column-heading");
    today_.set_xalign(0);
    append(today_);
    append(list_);
    addFoot();
    view_.store().connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    view_.narrow.connectChanged(sigc::mem_fun(*this, &BrowserTabColumn::showWidth));
    showWidth();
    refresh();
}

void BrowserTabColumn::addNewTabButton() {
    setSymbol(plus_, "plus", 12);
    plus_.add_css_class("plus-tile");
    plus_.set_valign(Gtk::Align::CENTER);
    newTabTitle_.set_hexpand(true);
    newTabTitle_.set_xalign(0);
    newTabKeys_.set_text(platformText("⌘T"));
    newTabKeys_.add_css_class("key-hint");
    hideFromAccessibility(newTabLine_);
    newTabLine_.append(plus_);
    newTabLine_.append(newTabTitle_);
    newTabLine_.append(newTabKeys_);
    newTab_.set_child(newTabLine_);
    newTab_.add_css_class("new-tab");
    newTab_.set_focus_on_click(false);
    newTab_.set_tooltip_text(phrase("New tab (⌘T)").c_str());
    setAccessibleLabel(newTab_, phrase("New tab"));
    newTab_.signal_clicked().connect(sigc::mem_fun(*this, &BrowserTabColumn::newTab));
    append(newTab_);
}

void BrowserTabColumn::addTiles() {
    // Many tiles scroll: they must not push the list out of the window.
    constexpr int maxRows = 5;
    tileScroll_.set_child(tiles_);
    tileScroll_.add_css_class("tile-scroll");
    tileScroll_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::EXTERNAL);
    nameScrollBars(tileScroll_);
    tileScroll_.set_propagate_natural_height(true);
    tileScroll_.set_max_content_height(maxRows *
                                       (BrowserPinnedTile::height + PinnedTiles::spacing));
    append(tileScroll_);
}

void BrowserTabColumn::addFoot() {
    setSymbol(sidebar_, "sidebar.left", 15);
    hideFromAccessibility(widthLine_);
    widthLine_.append(sidebar_);
    widthLine_.append(widthTitle_);
    width_.set_child(widthLine_);
    width_.add_css_class("width-switch");
    width_.set_focus_on_click(false);
    width_.set_hexpand(true);
    width_.signal_clicked().connect([this] { view_.narrow.set(!view_.narrow.get()); });
    foot_.add_css_class("column-foot");
    if (ProfileSwitcher* const switcher = view_.profileSwitcher()) {
        profiles_ = std::make_unique<ProfileSwitcherView>(*switcher, menu_);
        foot_.append(*profiles_);
        foot_.add_css_class("with-profiles");
        switcher->profiles().connectChanged(sigc::mem_fun(*this, &BrowserTabColumn::showFoot));
    }
    foot_.append(width_);
    append(foot_);
}

void BrowserTabColumn::newTab() { view_.store().newTab(std::nullopt, BrowserStore::Select::yes); }

bool BrowserTabColumn::takeFocusClaim() {
    const bool list = list_.takeFocusClaim();
    const bool tiles = tiles_.takeFocusClaim();
    return list || tiles;
}

void BrowserTabColumn::refresh() {
    if (BrowserPinnedTile* const tile = tiles_.update()) scrollTo(tileScroll_, *tile);
    tileScroll_.set_visible(!tiles_.empty());
    list_.update();
}

void BrowserTabColumn::showWidth() {
    const bool narrow = view_.narrow.get();
    const Narrow value = narrow ? Narrow::yes : Narrow::no;
    set_size_request(view_.columnWidth(), -1);
    setCssClass(*this, "narrow", narrow);
    newTabTitle_.set_visible(!narrow);
    newTabKeys_.set_visible(!narrow);
    newTabLine_.set_halign(narrow ? Gtk::Align::CENTER : Gtk::Align::FILL);
    today_.set_visible(!narrow);
    showFoot();
    width_.set_halign(narrow ? Gtk::Align::CENTER : Gtk::Align::END);
    width_.set_tooltip_text(
        (narrow ? phrase("Show tab titles") : phrase("Show icons only")).c_str());
    setAccessibleLabel(width_, narrow ? phrase("Show tab titles") : phrase("Narrow tabs"));
    tiles_.setNarrow(value);
    list_.setNarrow(value);
}

/// Beside more than one profile there is no room for the words of the switch.
void BrowserTabColumn::showFoot() {
    const bool narrow = view_.narrow.get();
    const bool hasRoom = !profiles_ || view_.profileSwitcher()->profiles().profiles().size() < 2;
    widthTitle_.set_visible(!narrow && hasRoom);
    foot_.set_orientation(narrow ? Gtk::Orientation::VERTICAL : Gtk::Orientation::HORIZONTAL);
    if (profiles_) profiles_->setNarrow(narrow);
}

}  // namespace orvu

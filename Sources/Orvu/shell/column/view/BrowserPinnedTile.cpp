#include "shell/column/view/BrowserPinnedTile.h"

#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "shell/TabCloser.h"
#include "shell/column/ShownTitle.h"

namespace orvu {

BrowserPinnedTile::BrowserPinnedTile(BrowserStore& store, const std::shared_ptr<BrowserTab>& tab)
    : store_(store),
      tab_(tab),
      badge_(store.icons(), badgeSize),
      refresh_(*this, [this] { refresh(); }) {
    Gtk::Widget::add_css_class("pinned-tile");
    property_accessible_role() = Gtk::Accessible::Role::LIST_ITEM;
    select_.set_child(badge_);
    select_.set_focus_on_click(false);  // a click leaves the keyboard where it is
    select_.signal_clicked().connect(sigc::mem_fun(*this, &BrowserPinnedTile::select));
    set_child(select_);
    dot_.set_halign(Gtk::Align::END);
    dot_.set_valign(Gtk::Align::START);
    add_overlay(dot_);
    dot_.connectKeyboardFree([this] { takeFocus(); });
    dot_.watch({tab});
    tab->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

void BrowserPinnedTile::setActive(bool active) {
    setCssClass(*this, "active", active);
    setAccessibleSelected(*this, active);
}

std::vector<MenuEntry> BrowserPinnedTile::contextMenu() {
    const auto tab = tab_.lock();
    return tab ? tabMenu(store_, tab) : std::vector<MenuEntry>{};
}

void BrowserPinnedTile::select() {
    if (const auto tab = tab_.lock()) store_.select(*tab);
}

void BrowserPinnedTile::remove() {
    if (const auto tab = tab_.lock()) TabCloser{store_}.close(*tab);
}

void BrowserPinnedTile::refresh() {
    const auto tab = tab_.lock();
    if (!tab) return;
    badge_.set(tab->host(), tab->favicon());
    std::string title = shownTitle(*tab);
    if (title == shownTitle_) return;
    select_.set_tooltip_text(title);
    setAccessibleLabel(*this, title);
    setAccessibleLabel(select_, title);
    shownTitle_ = std::move(title);
}

}  // namespace orvu

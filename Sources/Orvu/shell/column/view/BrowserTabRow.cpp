#include "shell/column/view/BrowserTabRow.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/SymbolImage.h"
#include "shell/TabCloser.h"
#include "shell/column/ShownTitle.h"

#include <glibmm/main.h>

namespace orvu {

BrowserTabRow::BrowserTabRow(BrowserStore& store, const std::shared_ptr<BrowserTab>& tab)
    : store_(store), tab_(tab), icon_(store), refresh_(*this, [this] { refresh(); }) {
    Gtk::Widget::add_css_class("tab-row");
    property_accessible_role() = Gtk::Accessible::Role::LIST_ITEM;
    title_.set_ellipsize(Pango::EllipsizeMode::END);
    title_.set_single_line_mode(true);
    title_.set_hexpand(true);
    title_.set_xalign(0);
    hideFromAccessibility(content_);  // the button says it all
    content_.append(icon_);
    content_.append(title_);
    select_.add_css_class("tab-select");
    select_.set_child(content_);
    select_.set_focus_on_click(false);  // a click leaves the keyboard where it is
    select_.signal_clicked().connect(sigc::mem_fun(*this, &BrowserTabRow::select));
    set_child(select_);
    dot_.set_halign(Gtk::Align::END);
    add_overlay(dot_);
    dot_.connectKeyboardFree([this] { takeFocus(); });
    setSymbol(cross_, "xmark", 11);
    close_.add_css_class("tab-close");
    close_.set_child(cross_);
    close_.set_focus_on_click(false);
    close_.set_halign(Gtk::Align::END);
    close_.set_valign(Gtk::Align::CENTER);
    close_.signal_clicked().connect(sigc::mem_fun(*this, &BrowserTabRow::remove));
    add_overlay(close_);
    setTabStop(TabStop::no);
    dot_.watch({tab});
    tab->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

void BrowserTabRow::setActive(bool active) {
    setCssClass(*this, "active", active);
    setAccessibleSelected(*this, active);
}

void BrowserTabRow::lightUp() {
    constexpr unsigned lightingTime = 1500;  // milliseconds; longer than its animation
    add_css_class("lit");
    Glib::signal_timeout().connect_once(
        sigc::track_object([this] { remove_css_class("lit"); }, *this), lightingTime);
}

void BrowserTabRow::setTabStop(TabStop stop) {
    select_.set_focusable(stop == TabStop::yes);
    dot_.set_focusable(stop == TabStop::yes);
    close_.set_focusable(stop == TabStop::yes);
}

void BrowserTabRow::setNarrow(Narrow narrow) {
    const bool wide = narrow == Narrow::no;
    title_.set_visible(wide);
    close_.set_visible(wide);
    // Beside the title, or on the corner of the icon.
    dot_.set_valign(wide ? Gtk::Align::CENTER : Gtk::Align::START);
    content_.set_halign(wide ? Gtk::Align::FILL : Gtk::Align::CENTER);
}

std::vector<MenuEntry> BrowserTabRow::contextMenu() {
    const auto tab = tab_.lock();
    return tab ? tabMenu(store_, tab) : std::vector<MenuEntry>{};
}

void BrowserTabRow::select() {
    if (const auto tab = tab_.lock()) store_.select(*tab);
}

void BrowserTabRow::remove() {
    if (const auto tab = tab_.lock()) TabCloser{store_}.close(*tab);
}

void BrowserTabRow::refresh() {
    const auto tab = tab_.lock();
    if (!tab) return;
    icon_.show(*tab);
    std::string title = shownTitle(*tab);
    if (title == shownTitle_) return;
    title_.set_text(title);
    select_.set_tooltip_text(title);
    setAccessibleLabel(*this, title);
    setAccessibleLabel(select_, title);
    setAccessibleLabel(close_, tr("Close {1}", title));
    shownTitle_ = std::move(title);
}

}  // namespace orvu

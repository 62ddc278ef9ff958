#include "shell/siteinfo/view/SiteInfoHead.h"

namespace orvu {

SiteInfoHead::SiteInfoHead(BrowserView& window) : window_(window), badge_(window) {
    add_css_class("site-head");
    set_hexpand(false);
    set_child(badge_);
    dot_.set_halign(Gtk::Align::END);
    dot_.set_valign(Gtk::Align::START);
    add_overlay(dot_);
    dot_.connectKeyboardFree([this] { badge_.grab_focus(); });
    window_.store().connectChanged(sigc::mem_fun(*this, &SiteInfoHead::follow));
    follow();
}

void SiteInfoHead::follow() {
    const auto tab = window_.store().active();
    dot_.watch(tab ? BrowserStore::TabList{tab} : BrowserStore::TabList{});
}

}  // namespace orvu

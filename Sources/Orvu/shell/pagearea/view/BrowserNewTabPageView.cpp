#include "shell/pagearea/view/BrowserNewTabPageView.h"

#include "look/view/Accessible.h"
#include "look/view/SymbolImage.h"
#include "shell/pagearea/BrowserNewTabPage.h"
#include "site/icons/view/SiteIcon.h"

#include <gtkmm/button.h>
#include <gtkmm/centerbox.h>
#include <gtkmm/label.h>

#include <string>

namespace orvu {
namespace {

constexpr int siteIconSize = 30;

/// A button that leads to a site.
Gtk::Button& makeTile(const BrowserStore& store, const Url& site) {
    const std::string name = siteName(site);
    auto& box = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 8);
    auto& square = *Gtk::make_managed<Gtk::CenterBox>();
    square.add_css_class("site-tile");
    square.set_halign(Gtk::Align::CENTER);
    auto& icon = *Gtk::make_managed<SiteIcon>(store.icons(), siteIconSize);
    icon.set_valign(Gtk::Align::CENTER);
    icon.setHost(site.host().value_or(""));
    square.set_center_widget(icon);
    box.append(square);
    auto& label = *Gtk::make_managed<Gtk::Label>(name);
    label.add_css_class("site-name");
    label.set_ellipsize(Pango::EllipsizeMode::END);
    label.set_max_width_chars(1);
    box.append(label);
    auto& tile = *Gtk::make_managed<Gtk::Button>();
    tile.add_css_class("site");
    tile.set_child(box);
    tile.set_tooltip_text(name);
    setAccessibleLabel(tile, name);
    return tile;
}

}  // namespace

BrowserNewTabPageView::BrowserNewTabPageView(std::shared_ptr<BrowserStore> store,
                                             std::function<void(const std::string&)> ask)
    : store_(std::move(store)), ask_(std::move(ask)), refresh_(*this, [this] { refresh(); }) {
    add_css_class("new-tab-page");
    column_.set_valign(Gtk::Align::CENTER);
    column_.set_margin(padding);
    addFace();
    addField();
    sites_.set_halign(Gtk::Align::FILL);
    column_.append(sites_);
    scroll_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroll_.set_child(column_);
    nameScrollBars(scroll_);
    set_child(paper_);
    add_overlay(scroll_);
    store_->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

void BrowserNewTabPageView::addFace() {
    // The face's dots are light: on the white tile they have a dark screen of their own.
    faceScreen_.add_css_class("face-screen");
    faceScreen_.append(face_);
    faceTile_.add_css_class("face-tile");
    faceTile_.set_halign(Gtk::Align::CENTER);
    faceTile_.append(faceScreen_);
    column_.append(faceTile_);
}

void BrowserNewTabPageView::addField() {
    field_.add_css_class("new-tab-field");
    setSymbol(magnifier_, "magnifyingglass", 18);
    field_.append(magnifier_);
    const std::string prompt{BrowserNewTabPage::prompt};
    text_.set_placeholder_text(prompt);
    text_.set_hexpand(true);
    setAccessibleLabel(text_, prompt);
    text_.signal_activate().connect(
        [this] { store_->open(text_.get_text().raw(), BrowserStore::NewTab::no); });
    field_.append(text_);
    askButton_.set_label(std::string{BrowserNewTabPage::askTitle});
    askButton_.add_css_class("pill");
    askButton_.add_css_class("ask-kesto");
    askButton_.set_valign(Gtk::Align::CENTER);
    askButton_.set_sensitive(false);
    text_.signal_changed().connect(
        [this] { askButton_.set_sensitive(text_.get_text_length() > 0); });
    askButton_.signal_clicked().connect([this] { ask_(text_.get_text().raw()); });
    field_.append(askButton_);
    column_.append(fieldPlace_);
}

void BrowserNewTabPageView::refresh() {
    const auto sites = BrowserNewTabPage::recentSites(store_->visits());
    if (sites != shownSites_) showSites(sites);
    sites_.set_visible(!sites.empty());
}

void BrowserNewTabPageView::showSites(const std::vector<Visit>& sites) {
    sites_.clear();
    shownSites_ = sites;
    for (const Visit& site : sites) {
        Gtk::Button& tile = makeTile(*store_, site.url);
        tile.signal_clicked().connect([this, address = site.url.absoluteString()] {
            store_->open(address, BrowserStore::NewTab::no);
        });
        sites_.append(tile);
    }
}

}  // namespace orvu

#include "shell/pagearea/view/PagePane.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/SymbolImage.h"
#include "shell/column/ShownTitle.h"

#include <gtkmm/gestureclick.h>

namespace orvu {

PagePane::PagePane(BrowserView& view, Place place)
    : Gtk::Box(Gtk::Orientation::VERTICAL),
      store_(view.sharedStore()),
      icon_(store_->icons(), iconSize),
      content_(view),
      refresh_(*this, [this] { refresh(); }) {
    add_css_class("page-pane");
    addHeader(place);
    append(content_);
    store_->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
}

void PagePane::addHeader(Place place) {
    header_.add_css_class("pane-header");
    icon_.set_valign(Gtk::Align::CENTER);
    header_.append(icon_);
    title_.set_ellipsize(Pango::EllipsizeMode::END);
    title_.set_xalign(0);
    titleButton_.add_css_class("pane-title");
    titleButton_.set_child(title_);
    titleButton_.set_hexpand(true);
    titleButton_.signal_clicked().connect(sigc::mem_fun(*this, &PagePane::select));
    header_.append(titleButton_);
    header_.append(dot_);
    dot_.connectKeyboardFree([this] { titleButton_.grab_focus(); });
    if (place == Place::second) {
        close_.add_css_class("pane-close");
        setSymbol(cross_, "xmark", 9);
        close_.set_child(cross_);
        close_.set_valign(Gtk::Align::CENTER);
        close_.set_tooltip_text(phrase("Back to one page (⌥⌘S)").c_str());
        setAccessibleLabel(close_, phrase("Close side by side"));
        close_.signal_clicked().connect([this] { store_->endSideBySide(); });
        header_.append(close_);
    }
    // Beside the buttons, which take their clicks for themselves, it is the header's.
    const auto click = Gtk::GestureClick::create();
    click->signal_released().connect([this](int, double, double) { select(); });
    header_.add_controller(click);
    append(header_);
}

bool PagePane::show(const std::shared_ptr<BrowserTab>& tab) {
    if (tab != tab_.lock()) {
        tab_ = tab;
        dot_.watch(tab ? BrowserStore::TabList{tab} : BrowserStore::TabList{});
        tabChanged_ = tab ? tab->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark))
                          : sigc::connection{};
    }
    refresh();
    return content_.show(tab);
}

void PagePane::refresh() {
    const auto tab = tab_.lock();
    if (!tab) return;
    icon_.set(tab->host(), tab->favicon());
    const std::string title = shownTitle(*tab);
    if (title_.get_text().raw() != title) {
        title_.set_text(title);
        titleButton_.set_tooltip_text(title);
        setAccessibleLabel(titleButton_, title);
    }
    setCssClass(header_, "active", store_->activeID() == tab->id());
}

void PagePane::select() {
    const auto tab = tab_.lock();
    if (!tab) return;
    store_->select(*tab);
    content_.focusContent();
}

}  // namespace orvu

#include "shell/view/TopBar.h"

#include "look/PlatformText.h"
#include "look/view/Accessible.h"

namespace orvu {

TopBar::TopBar(std::shared_ptr<BrowserStore> store)
    : store_(std::move(store)), shelf_(store_), refresh_(*this, [this] { refresh(); }) {
    add_css_class("top-bar");
    append(controls_);
    // Not as the buttons' own actions: these would switch them on whatever the tab can do.
    addButton(back_, "go-previous-symbolic", "Back (⌘[)",
              [this] { activate_action("win.goBack"); });
    addButton(forward_, "go-next-symbolic", "Forward (⌘])",
              [this] { activate_action("win.goForward"); });
    addButton(reload_, "view-refresh-symbolic", "Reload (⌘R)",
              [this] { activate_action(showsStop_ ? "win.stopLoading" : "win.reload"); });
    back_.set_margin_start(16);
    setAccessibleLabel(back_, "Back");
    setAccessibleLabel(forward_, "Forward");
    setAccessibleLabel(reload_, "Reload");

    address_.add_css_class("address");
    address_.set_hexpand(true);
    address_.set_valign(Gtk::Align::CENTER);
    address_.set_placeholder_text("Search or type a site");
    setAccessibleLabel(address_, "Address");
    address_.signal_activate().connect(sigc::mem_fun(*this, &TopBar::open));
    append(address_);

    private_.add_css_class("private-mark");
    private_.set_valign(Gtk::Align::CENTER);
    private_.set_visible(store_->isPrivate());
    append(private_);
    append(shelf_);

    store_->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

void TopBar::addButton(Gtk::Button& button, const char* icon, const char* help,
                       const sigc::slot<void()>& press) {
    button.add_css_class("chrome-button");
    button.set_icon_name(icon);
    button.set_valign(Gtk::Align::CENTER);
    button.signal_clicked().connect(press);
    setHelp(button, help);
    append(button);
}

void TopBar::setHelp(Gtk::Button& button, const std::string& help) {
    button.set_tooltip_text(platformText(help));
}

void TopBar::editAddress(const std::string& text) {
    address_.set_text(text);
    address_.grab_focus();  // selects all
}

void TopBar::editActiveAddress() {
    if (const auto tab = store_->active()) editAddress(shownAddress(tab));
}

std::string TopBar::shownAddress(const std::shared_ptr<BrowserTab>& tab) const {
    if (tab->url()) return tab->url()->absoluteString();
    return typedIn_.lock() == tab ? typed_ : "";
}

bool TopBar::endEditing() {
    if (!isEditing()) return false;
    if (onEditingEnded) onEditingEnded();
    refresh_.mark();
    return true;
}

void TopBar::open() {
    typed_ = address_.get_text();
    typedIn_ = store_->active();
    store_->open(typed_, BrowserStore::NewTab::no);
    endEditing();
}

void TopBar::refresh() {
    watchActive();
    const auto tab = store_->active();
    if (!tab) return;
    back_.set_sensitive(tab->canGoBack());
    forward_.set_sensitive(tab->canGoForward());
    reload_.set_sensitive(!tab->isNewTab());
    if (showsStop_ != tab->isLoading()) {
        showsStop_ = tab->isLoading();
        reload_.set_icon_name(showsStop_ ? "process-stop-symbolic" : "view-refresh-symbolic");
        setHelp(reload_, showsStop_ ? "Stop" : "Reload (⌘R)");
        setAccessibleLabel(reload_, showsStop_ ? "Stop" : "Reload");
    }
    const Glib::ustring text = shownAddress(tab);
    if (isEditing()) return;
    if (address_.get_text() != text) address_.set_text(text);
    // A long address shows its head: the host tells where one is.
    if (address_.get_position() != 0) address_.set_position(0);
}

void TopBar::watchActive() {
    const auto tab = store_->active();
    if (tab == watched_.lock()) return;
    watched_ = tab;
    tabChanged_ = tab ? tab->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark))
                      : sigc::connection{};
}

bool TopBar::isEditing() const {
    return gtk_widget_is_focus(
        GTK_WIDGET(gtk_editable_get_delegate(GTK_EDITABLE(address_.gobj()))));
}

}  // namespace orvu

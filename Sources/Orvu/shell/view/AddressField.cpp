#include "shell/view/AddressField.h"

#include "look/view/Accessible.h"

#include <gtkmm/eventcontrollerfocus.h>

namespace orvu {

AddressField::AddressField(std::shared_ptr<BrowserStore> store)
    : store_(std::move(store)),
      refresh_(*this, [this] { refresh(); }),
      watch_(*store_, [this] { refresh_.mark(); }) {
    add_css_class("address");
    set_valign(Gtk::Align::CENTER);
    set_placeholder_text("Search or type a site");
    setAccessibleLabel(*this, "Address");
    const auto focus = Gtk::EventControllerFocus::create();
    // A selection would look as if the field still had the keyboard.
    focus->signal_leave().connect([this] { select_region(0, 0); });
    add_controller(focus);
    signal_activate().connect(sigc::mem_fun(*this, &AddressField::open));
    refresh();
}

void AddressField::edit(const std::string& text) {
    set_text(text);
    grab_focus();  // selects all
}

bool AddressField::endEditing() {
    if (!isEditing()) return false;
    if (onEditingEnded) onEditingEnded();
    refresh_.mark();
    return true;
}

bool AddressField::isEditing() const {
    auto* const editable = GTK_EDITABLE(const_cast<GtkEntry*>(gobj()));
    return gtk_widget_is_focus(GTK_WIDGET(gtk_editable_get_delegate(editable)));
}

void AddressField::open() {
    typed_ = get_text();
    typedIn_ = store_->active();
    store_->open(typed_, BrowserStore::NewTab::no);
    endEditing();
}

std::string AddressField::shownAddress(const std::shared_ptr<BrowserTab>& tab) const {
    if (tab->url()) return tab->url()->absoluteString();
    return typedIn_.lock() == tab ? typed_ : "";
}

void AddressField::refresh() {
    const auto tab = store_->active();
    if (!tab || isEditing()) return;
    const Glib::ustring text = shownAddress(tab);
    if (get_text() != text) set_text(text);
    // A long address shows its head: the host tells where one is.
    if (get_position() != 0) set_position(0);
}

}  // namespace orvu

#include "shell/topbar/view/BrowserMenuButton.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/Keyboard.h"
#include "look/view/SymbolImage.h"
#include "look/view/Tooltips.h"
#include "shell/menus/BrowserMenu.h"
#include "shell/menus/KeySigns.h"
#include "look/controls/view/BrowserChromeButton.h"

#include <giomm/menuitem.h>

namespace orvu {
namespace {

/// Puts items into `menu`, a section for each run between separators.
void addSections(const Glib::RefPtr<Gio::Menu>& menu, const std::vector<MenuItem>& items) {
    auto section = Gio::Menu::create();
    for (const MenuItem& item : items) {
        if (item.isSeparator()) {
            menu->append_section({}, section);
            section = Gio::Menu::create();
            continue;
        }
        const auto entry = Gio::MenuItem::create(std::string{item.title}, std::string{item.action});
        if (!item.keys.empty()) {
            entry->set_attribute_value(
                "accel", Glib::Variant<Glib::ustring>::create(shortcutTrigger(item.keys)));
        }
        section->append_item(entry);
    }
    menu->append_section({}, section);
}

}  // namespace

BrowserMenuButton::BrowserMenuButton(std::shared_ptr<BrowserStore> store)
    : store_(std::move(store)) {
    add_css_class("chrome-menu");
    set_valign(Gtk::Align::CENTER);
    setSymbol(ellipsis_, "ellipsis", BrowserChromeButton::symbolSize);
    set_child(ellipsis_);
    set_tooltip_text(phrase("More").c_str());
    setAccessibleLabel(*this, phrase("More"));
    popover_.set_has_arrow(false);
    setAccessibleLabel(popover_, phrase("More"));
    popover_.set_halign(Gtk::Align::END);  // the window ends here
    set_popover(popover_);
    hideTooltipWhileOpen(*this, popover_);
    set_focus_on_click(false);
    gtk_menu_button_set_create_popup_func(Gtk::MenuButton::gobj(), &BrowserMenuButton::opens, this,
                                          nullptr);
    popover_.signal_show().connect(sigc::mem_fun(*this, &BrowserMenuButton::fill));
    popover_.signal_closed().connect(sigc::mem_fun(*this, &BrowserMenuButton::closed));
    fill();
}

BrowserMenuButton::~BrowserMenuButton() { g_clear_weak_pointer(&focusBefore_); }

/// Before the menu takes the keyboard.
void BrowserMenuButton::opens(GtkMenuButton*, gpointer self) {
    auto& button = *static_cast<BrowserMenuButton*>(self);
    auto* const focus = focusOf(button);
    g_set_weak_pointer(&button.focusBefore_, focus ? focus->gobj() : nullptr);
}

void BrowserMenuButton::closed() {
    if (focusBefore_ && gtk_widget_get_root(focusBefore_)) gtk_widget_grab_focus(focusBefore_);
    g_clear_weak_pointer(&focusBefore_);
}

void BrowserMenuButton::fill() {
    menu_->remove_all();
    addSections(menu_, browserMenu(*store_));
    const auto mainMenu = Gio::Menu::create();
    for (const Menu& menu : makeMenu()) {
        const auto submenu = Gio::Menu::create();
        addSections(submenu, menu.items);
        mainMenu->append_submenu(std::string{menu.title}, submenu);
    }
    menu_->append_section({}, mainMenu);
    nameScrollBars(popover_);
}

}  // namespace orvu

#include "shell/menus/view/ContextMenu.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"
#include "look/view/Accessible.h"
#include "look/view/Keyboard.h"

#include <gtkmm/root.h>

#include <utility>

namespace orvu {
namespace {

constexpr std::size_t titleLimit = 48;  // names of groups may be longer than any menu

std::string menuLabel(const std::string& title) {
    return replacingAll(oneLine(title, titleLimit), "_", "__");  // one would mark a key
}

}  // namespace

ContextMenu::ContextMenu(Gtk::Widget& parent)
    : parent_(parent), popover_(Glib::RefPtr<Gio::MenuModel>{}, Gtk::PopoverMenu::Flags::NESTED) {
    popover_.set_parent(parent_);
    popover_.set_has_arrow(false);
    setAccessibleLabel(popover_, phrase("Menu"));
    popover_.set_halign(Gtk::Align::START);
    popover_.set_offset(-8, -8);  // its corner stands beside the pointer, not its shadow's edge
    popover_.signal_closed().connect(sigc::mem_fun(*this, &ContextMenu::closed));
}

ContextMenu::~ContextMenu() {
    notify_callbacks();
    g_clear_weak_pointer(&focusBefore_);
    popover_.unparent();
}

void ContextMenu::show(const std::vector<MenuEntry>& entries, Gtk::Widget& widget,
                       const Gdk::Rectangle& place) {
    double x = 0;
    double y = 0;
    if (entries.empty() ||
        !widget.translate_coordinates(parent_, place.get_x(), place.get_y(), x, y)) {
        return;
    }
    actions_ = Gio::SimpleActionGroup::create();
    actionCount_ = 0;
    chosen_ = {};
    popover_.set_menu_model(model(entries));
    nameScrollBars(popover_);
    popover_.insert_action_group("context", actions_);
    popover_.set_pointing_to(
        {static_cast<int>(x), static_cast<int>(y), place.get_width(), place.get_height()});
    auto* const focus = focusOf(parent_);
    g_set_weak_pointer(&focusBefore_, focus ? focus->gobj() : nullptr);
    popover_.popup();
}

Glib::RefPtr<Gio::Menu> ContextMenu::model(const std::vector<MenuEntry>& entries) {
    auto whole = Gio::Menu::create();
    auto section = Gio::Menu::create();
    for (const auto& entry : entries) {
        if (entry.kind == MenuEntry::Kind::separator) {
            whole->append_section(section);
            section = Gio::Menu::create();
        } else {
            section->append_item(item(entry));
        }
    }
    whole->append_section(section);
    return whole;
}

Glib::RefPtr<Gio::MenuItem> ContextMenu::item(const MenuEntry& entry) {
    const std::string label = menuLabel(entry.title);
    if (entry.kind == MenuEntry::Kind::submenu && entry.enabled) {
        return Gio::MenuItem::create(label, model(entry.entries));
    }
    const std::string name = "line" + std::to_string(actionCount_++);
    const auto action = actions_->add_action(name, [this, run = entry.run] { choose(run); });
    action->set_enabled(entry.enabled);
    return Gio::MenuItem::create(label, "context." + name);
}

void ContextMenu::choose(const std::function<void()>& run) {
    if (popover_.get_visible()) {
        chosen_ = run;
    } else if (run) {
        run();
    }
}

void ContextMenu::closed() {
    // The keyboard goes back before the chosen line acts, which may lead it elsewhere.
    if (focusBefore_ && gtk_widget_get_root(focusBefore_)) gtk_widget_grab_focus(focusBefore_);
    g_clear_weak_pointer(&focusBefore_);
    if (const auto run = std::exchange(chosen_, {})) run();
}

}  // namespace orvu

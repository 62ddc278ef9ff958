#include "shell/view/ToolWindow.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "shell/menus/Commands.h"
#include "shell/menus/KeySigns.h"

#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>

namespace orvu {

ToolWindow::ToolWindow(const Traits& traits) {
    set_title(traits.title);
    add_css_class("orvu");
    add_css_class("tool-window");
    add_css_class(traits.cssClass);
    invisibleTitlebar_.set_visible(false);
    set_titlebar(invisibleTitlebar_);  // edges and shadow, but no bar of the toolkit's
    set_default_size(traits.width, traits.height);
    set_resizable(false);
    set_hide_on_close(true);
    column_.set_size_request(traits.width, traits.height);
    addBar(traits);
    if (traits.movesByBackground) {
        ground_.set_child(column_);
        set_child(ground_);
    } else {
        set_child(column_);
    }
    addKeys();
}

void ToolWindow::setContent(Gtk::Widget& content) {
    if (content_) column_.remove(*content_);
    content_ = &content;
    content.set_vexpand(true);
    column_.append(content);
}

void ToolWindow::addBar(const Traits& traits) {
    barLine_.add_css_class("tool-window-bar");
    close_.add_css_class("control");
    close_.add_css_class("control-close");
    close_.add_css_class("tool-window-close");
    close_.set_valign(Gtk::Align::CENTER);
    close_.set_focusable(false);
    setAccessibleLabel(close_, phrase("Close"));
    close_.signal_clicked().connect([this] { close(); });
    barLine_.set_start_widget(close_);
    if (traits.showsTitle) {
        title_.set_text(traits.title);
        title_.add_css_class("tool-window-title");
        barLine_.set_center_widget(title_);
    }
    bar_.set_child(barLine_);
    column_.append(bar_);
}

/// The keys that belong to the whole program, and those that close a window.
void ToolWindow::addKeys() {
    const auto keys = Gtk::ShortcutController::create();
    const auto add = [&](const std::string& trigger, const Glib::RefPtr<Gtk::ShortcutAction>& act) {
        keys->add_shortcut(Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string(trigger), act));
    };
    for (const Command& command : commands()) {
        if (!command.isForApplication()) continue;
        for (const std::string& key : command.keys) {
            add(shortcutTrigger(key), Gtk::NamedAction::create(command.action()));
        }
    }
    const auto closes = Gtk::CallbackAction::create([this](Gtk::Widget&, const Glib::VariantBase&) {
        close();
        return true;
    });
    for (const char* const trigger : {"<Control>w", "<Control><Shift>w", "Escape"}) {
        add(trigger, closes);
    }
    add_controller(keys);
}

}  // namespace orvu

#include "shell/settings/view/SettingsWindowView.h"

#include "look/view/Accessible.h"
#include "shell/menus/Commands.h"
#include "shell/menus/KeySigns.h"

#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>

#include <string>

namespace orvu {

void SettingsWindowView::show(const sigc::slot<void()>& makeDefault) {
    if (!window_) {
        window_ = std::make_unique<Window>(services_, skills_, makeDefault);
        application_.add_window(*window_);
    }
    window_->present();
}

SettingsWindowView::Window::Window(AppServices& services, SkillStore& skills,
                                   const sigc::slot<void()>& makeDefault)
    : settings_(services, skills, makeDefault), form_(settings_) {
    set_title(std::string{SettingsView::title});
    add_css_class("orvu");
    add_css_class("settings");
    invisibleTitlebar_.set_visible(false);
    set_titlebar(invisibleTitlebar_);  // edges and shadow, but no bar of the toolkit's
    set_default_size(SettingsView::width, SettingsView::height);
    set_resizable(false);
    set_hide_on_close(true);
    column_.set_size_request(SettingsView::width, SettingsView::height);
    addBar();
    scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroller_.set_vexpand(true);
    scroller_.set_child(form_);
    nameScrollBars(scroller_);
    column_.append(scroller_);
    set_child(column_);
    addKeys();
}

void SettingsWindowView::Window::addBar() {
    barLine_.add_css_class("settings-bar");
    close_.add_css_class("control");
    close_.add_css_class("control-close");
    close_.add_css_class("settings-close");
    close_.set_valign(Gtk::Align::CENTER);
    close_.set_focusable(false);
    setAccessibleLabel(close_, "Close");
    close_.signal_clicked().connect([this] { close(); });
    barLine_.set_start_widget(close_);
    title_.add_css_class("settings-title");
    barLine_.set_center_widget(title_);
    bar_.set_child(barLine_);
    column_.append(bar_);
}

/// The keys that belong to the whole program, and those that close a window.
void SettingsWindowView::Window::addKeys() {
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

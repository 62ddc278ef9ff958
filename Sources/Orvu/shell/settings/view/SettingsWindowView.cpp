#include "shell/settings/view/SettingsWindowView.h"

#include "look/view/Accessible.h"

#include <string>

namespace orvu {

void SettingsWindowView::show(const Actions& actions) {
    if (!window_) {
        window_ = std::make_unique<Window>(subjects_, actions);
        application_.add_window(*window_);
    }
    window_->present();
}

SettingsWindowView::Window::Window(const SettingsView::Subjects& subjects, const Actions& actions)
    : ToolWindow({.title = std::string{SettingsView::title},
                  .width = SettingsView::width,
                  .height = SettingsView::height,
                  .cssClass = "settings"}),
      settings_(subjects, actions),
      form_(settings_) {
    scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroller_.set_child(form_);
    nameScrollBars(scroller_);
    setContent(scroller_);
}

}  // namespace orvu

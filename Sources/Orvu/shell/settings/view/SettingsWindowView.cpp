#include "shell/settings/view/SettingsWindowView.h"

#include "look/view/Accessible.h"

#include <string>

namespace orvu {

void SettingsWindowView::show(const sigc::slot<void()>& makeDefault) {
    if (!window_) {
        window_ = std::make_unique<Window>(*this, makeDefault);
        application_.add_window(*window_);
    }
    window_->present();
}

SettingsWindowView::Window::Window(const SettingsWindowView& view,
                                   const sigc::slot<void()>& makeDefault)
    : ToolWindow({.title = std::string{SettingsView::title},
                  .width = SettingsView::width,
                  .height = SettingsView::height,
                  .cssClass = "settings"}),
      settings_(view.services_, view.skills_, view.import_, makeDefault),
      form_(settings_) {
    scroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroller_.set_child(form_);
    nameScrollBars(scroller_);
    setContent(scroller_);
}

}  // namespace orvu

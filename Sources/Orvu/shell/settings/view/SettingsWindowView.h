#pragma once

#include "profiles/settings/SettingsView.h"
#include "profiles/settings/SettingsWindow.h"
#include "shell/settings/view/SettingsForm.h"

#include <gtkmm/application.h>
#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/centerbox.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/window.h>
#include <gtkmm/windowhandle.h>

#include <memory>

namespace orvu {

/// The window of the settings on this desktop. It is made when it is shown first, and hidden when
/// it is closed.
class SettingsWindowView : public SettingsWindow {
public:
    /// All arguments must outlive the window.
    SettingsWindowView(Gtk::Application& application, AppServices& services, SkillStore& skills)
        : application_(application), services_(services), skills_(skills) {}

    void show(const sigc::slot<void()>& makeDefault) override;

private:
    class Window : public Gtk::Window {
    public:
        Window(AppServices& services, SkillStore& skills, const sigc::slot<void()>& makeDefault);

    private:
        void addBar();
        void addKeys();

        SettingsView settings_;
        SettingsForm form_;
        Gtk::Box invisibleTitlebar_;
        Gtk::Box column_{Gtk::Orientation::VERTICAL};
        Gtk::WindowHandle bar_;
        Gtk::CenterBox barLine_;
        Gtk::Button close_;
        Gtk::Label title_{std::string{SettingsView::title}};
        Gtk::ScrolledWindow scroller_;
    };

    Gtk::Application& application_;
    AppServices& services_;
    SkillStore& skills_;
    std::unique_ptr<Window> window_;
};

}  // namespace orvu

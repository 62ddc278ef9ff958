#pragma once

#include "profiles/settings/SettingsView.h"
#include "profiles/settings/SettingsWindow.h"
#include "shell/settings/view/SettingsForm.h"
#include "shell/view/ToolWindow.h"

#include <gtkmm/application.h>
#include <gtkmm/scrolledwindow.h>

#include <memory>

namespace orvu {

/// The window of the settings on this desktop. It is made when it is shown first, and hidden when
/// it is closed.
class SettingsWindowView : public SettingsWindow {
public:
    /// All arguments must outlive the window.
    SettingsWindowView(Gtk::Application& application, AppServices& services, SkillStore& skills,
                       ImportWindow& import)
        : application_(application), services_(services), skills_(skills), import_(import) {}

    void show(const sigc::slot<void()>& makeDefault) override;

private:
    class Window : public ToolWindow {
    public:
        Window(const SettingsWindowView& view, const sigc::slot<void()>& makeDefault);

    private:
        SettingsView settings_;
        SettingsForm form_;
        Gtk::ScrolledWindow scroller_;
    };

    Gtk::Application& application_;
    AppServices& services_;
    SkillStore& skills_;
    ImportWindow& import_;
    std::unique_ptr<Window> window_;
};

}  // namespace orvu

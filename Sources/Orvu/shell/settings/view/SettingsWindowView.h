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
    SettingsWindowView(Gtk::Application& application, SettingsView::Subjects subjects)
        : application_(application), subjects_(subjects) {}

    void show(const Actions& actions) override;

private:
    class Window : public ToolWindow {
    public:
        Window(const SettingsView::Subjects& subjects, const Actions& actions);

    private:
        SettingsView settings_;
        SettingsForm form_;
        Gtk::ScrolledWindow scroller_;
    };

    Gtk::Application& application_;
    const SettingsView::Subjects subjects_;
    std::unique_ptr<Window> window_;
};

}  // namespace orvu

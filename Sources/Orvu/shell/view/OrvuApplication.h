#pragma once

#include "platform/linux/desktop/SandboxProbe.h"
#include "shell/OrvuApp.h"

#include <gtkmm/aboutdialog.h>
#include <gtkmm/application.h>
#include <gtkmm/messagedialog.h>

#include <functional>
#include <memory>
#include <string>

namespace orvu {

/// Everything that the running program is made of; its members' order is that of their making.
class AppWorld {
public:
    virtual ~AppWorld() = default;
    [[nodiscard]] virtual AppDelegate& delegate() = 0;
    [[nodiscard]] virtual const Settings& settings() = 0;
};

/// The program on this desktop's message bus: one process, which is handed the arguments of
/// every further start.
class OrvuApplication : public Gtk::Application, public ApplicationHost {
public:
    /// Makes the program's parts, in the process that turns out to be the one.
    using MakeWorld = std::function<std::unique_ptr<AppWorld>(OrvuApplication&)>;

    explicit OrvuApplication(MakeWorld makeWorld);

    void terminate() override { quit(); }
    [[nodiscard]] Future<bool> mayTerminate(const std::string& reason) override;
    void orderFrontStandardAboutPanel() override;

protected:
    void on_startup() override;
    void on_shutdown() override;
    void on_window_added(Gtk::Window* window) override;
    int on_command_line(const Glib::RefPtr<Gio::ApplicationCommandLine>& commandLine) override;

private:
    void addActions();
    void refuse();

    MakeWorld makeWorld_;
    std::unique_ptr<SandboxProbe> probe_;
    std::unique_ptr<AppWorld> world_;
    std::unique_ptr<Gtk::MessageDialog> refusal_;
    std::unique_ptr<Gtk::AboutDialog> about_;
    std::unique_ptr<Gtk::MessageDialog> quitting_;
};

}  // namespace orvu

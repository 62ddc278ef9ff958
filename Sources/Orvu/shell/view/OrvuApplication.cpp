#include "shell/view/OrvuApplication.h"

#include "look/view/Fonts.h"
#include "look/view/Style.h"
#include "pagetools/view/ReaderThemeRules.h"
#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/files/LinuxSystemPaths.h"
#include "shell/column/view/GroupColorRules.h"
#include "shell/menus/Commands.h"

#include <filesystem>
#include <iostream>
#include <vector>

namespace orvu {
namespace {

constexpr const char* noSandbox =
    "Orvu can't open pages here, because this system doesn't let it shut them into a sandbox.";

/// What a start of the program was given to open.
std::vector<Url> urlsOf(const Glib::RefPtr<Gio::ApplicationCommandLine>& commandLine,
                        const Settings& settings) {
    int count = 0;
    char** const arguments = commandLine->get_arguments(count);
    std::vector<Url> urls;
    for (int i = 1; i < count; ++i) {
        const std::filesystem::path folder{std::string{commandLine->get_cwd()}};
        if (const auto url = urlFromArgument(arguments[i], folder, settings)) urls.push_back(*url);
    }
    g_strfreev(arguments);
    return urls;
}

}  // namespace

OrvuApplication::OrvuApplication(MakeWorld makeWorld)
    : Gtk::Application(applicationId, Gio::Application::Flags::HANDLES_COMMAND_LINE),
      makeWorld_(std::move(makeWorld)) {}

void OrvuApplication::on_startup() {
    probe_ = std::make_unique<SandboxProbe>();  // runs beside the toolkit's own start
    Gtk::Application::on_startup();
    installFonts(linuxSystemPaths().caches);
    installStyle({groupColorRules(), readerThemeRules()});
    addActions();
    world_ = makeWorld_(*this);
    // Windows may all be closed and the program stays, ready for the next one.
    if (!world_->delegate().applicationShouldTerminateAfterLastWindowClosed()) hold();
}

void OrvuApplication::on_shutdown() {
    about_.reset();
    refusal_.reset();
    world_.reset();
    Gtk::Application::on_shutdown();
}

int OrvuApplication::on_command_line(const Glib::RefPtr<Gio::ApplicationCommandLine>& commandLine) {
    if (!probe_->canStartPages()) {
        refuse();
        return 1;
    }
    AppDelegate& delegate = world_->delegate();
    const auto urls = urlsOf(commandLine, world_->settings());
    if (!delegate.launched()) {
        delegate.open(urls);
        delegate.applicationDidFinishLaunching();
    } else if (urls.empty()) {
        delegate.applicationShouldHandleReopen();
    } else {
        delegate.open(urls);
    }
    return 0;
}

void OrvuApplication::refuse() {
    std::cerr << noSandbox << '\n';
    refusal_ = std::make_unique<Gtk::MessageDialog>(noSandbox);
    refusal_->set_title("Orvu");
    refusal_->signal_response().connect([this](int) { quit(); });
    refusal_->present();
}

void OrvuApplication::addActions() {
    for (const Command& command : commands()) {
        if (const auto* const run = std::get_if<Command::ForApplication>(&command.run)) {
            add_action(command.name, [this, run] { (*run)(world_->delegate()); });
        }
    }
}

void OrvuApplication::orderFrontStandardAboutPanel() {
    if (!about_) {
        about_ = std::make_unique<Gtk::AboutDialog>();
        about_->set_program_name("Orvu");
        about_->set_version(ORVU_VERSION);
        about_->set_comments("A small desktop browser");
        about_->set_logo_icon_name(applicationId);
        about_->set_hide_on_close(true);
    }
    auto* const window = get_active_window();
    if (window && window != about_.get()) about_->set_transient_for(*window);
    about_->present();
}

}  // namespace orvu

#include "shell/view/OrvuApplication.h"

#include "foundation/text/Translation.h"
#include "look/view/Fonts.h"
#include "look/view/Style.h"
#include "pagetools/view/ReaderThemeRules.h"
#include "platform/linux/desktop/ActivationToken.h"
#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/files/LinuxSystemPaths.h"
#include "shell/column/view/GroupColorRules.h"
#include "shell/CommandLine.h"
#include "shell/menus/Commands.h"
#include "shell/profiles/view/ProfileColorRules.h"

#include <gtkmm/button.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace orvu {
namespace {

constexpr Phrase noSandbox = phrase(
    "Orvu can't open pages here, because this system doesn't let it shut them into a sandbox.");

using StartCall = Glib::RefPtr<Gio::ApplicationCommandLine>;

std::vector<std::string> argumentsOf(const StartCall& call) {
    int count = 0;
    char** const words = call->get_arguments(count);
    std::vector<std::string> arguments{words + std::min(count, 1), words + count};
    g_strfreev(words);
    return arguments;
}

/// What a start of the program was given to open. What can't be opened is said where it was
/// started.
std::vector<Url> urlsOf(const StartCall& call, const std::vector<std::string>& addresses,
                        const Settings& settings, Start start) {
    const std::filesystem::path folder{std::string{call->get_cwd()}};
    std::vector<Url> urls;
    for (const std::string& address : addresses) {
        if (const auto url = urlFromArgument(address, folder, settings, start)) {
            urls.push_back(*url);
        } else {
            call->printerr(CommandLine::refusal(address));
        }
    }
    return urls;
}

}  // namespace

OrvuApplication::OrvuApplication(MakeWorld makeWorld)
    : Gtk::Application(applicationId, Gio::Application::Flags::HANDLES_COMMAND_LINE),
      makeWorld_(std::move(makeWorld)) {
    passOnActivationToken(G_APPLICATION(gobj()));
}

void OrvuApplication::on_startup() {
    probe_ = std::make_unique<SandboxProbe>();  // runs beside the toolkit's own start
    Gtk::Application::on_startup();
    installFonts(linuxSystemPaths().caches);
    installStyle({groupColorRules(), profileColorRules(), readerThemeRules()});
    addActions();
    world_ = makeWorld_(*this);
    const auto notes = lookup_action(command("showWhatsNew").name);
    g_simple_action_set_enabled(G_SIMPLE_ACTION(notes->gobj()), world_->delegate().hasWhatsNew());
    // Windows may all be closed and the program stays, ready for the next one.
    if (!world_->delegate().applicationShouldTerminateAfterLastWindowClosed()) hold();
}

void OrvuApplication::on_shutdown() {
    if (world_) world_->delegate().applicationWillTerminate();
    about_.reset();
    refusal_.reset();
    quitting_.reset();
    world_.reset();
    Gtk::Application::on_shutdown();
}

void OrvuApplication::on_window_added(Gtk::Window* window) {
    Gtk::Application::on_window_added(window);
    window->signal_map().connect([this] {
        if (world_) world_->delegate().windowDidShow();
    });
}

int OrvuApplication::on_command_line(const Glib::RefPtr<Gio::ApplicationCommandLine>& commandLine) {
    if (!probe_->canStartPages()) {
        refuse();
        return 1;
    }
    AppDelegate& delegate = world_->delegate();
    const auto start = delegate.launched() ? Start::again : Start::first;
    const auto addresses = CommandLine::parse(argumentsOf(commandLine)).addresses;
    const auto urls = urlsOf(commandLine, addresses, world_->settings(), start);
    if (urls.empty() && !addresses.empty()) {
        if (start == Start::first) quit();
    } else if (start == Start::first) {
        delegate.open(urls);
        delegate.applicationDidFinishLaunching();
    } else if (urls.empty()) {
        delegate.applicationShouldHandleReopen();
    } else {
        delegate.open(urls);
    }
    return urls.size() == addresses.size() ? 0 : CommandLine::refusedStatus;
}

void OrvuApplication::refuse() {
    std::cerr << noSandbox.c_str() << '\n';
    refusal_ = std::make_unique<Gtk::MessageDialog>(noSandbox.c_str());
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

Future<bool> OrvuApplication::mayTerminate(const std::string& reason) {
    quitting_ = std::make_unique<Gtk::MessageDialog>(phrase("Quit Orvu?").c_str(), false,
                                                     Gtk::MessageType::QUESTION,
                                                     Gtk::ButtonsType::NONE, true);
    quitting_->set_secondary_text(reason);
    quitting_->set_title("Orvu");
    // A button of the dialog's own making has its name twice for assistive technology.
    quitting_->add_action_widget(*Gtk::make_managed<Gtk::Button>(phrase("Cancel").c_str()),
                                 Gtk::ResponseType::CANCEL);
    quitting_->add_action_widget(*Gtk::make_managed<Gtk::Button>(phrase("Quit").c_str()),
                                 Gtk::ResponseType::OK);
    quitting_->set_default_response(Gtk::ResponseType::OK);
    quitting_->set_hide_on_close(true);
    if (auto* const window = get_active_window()) quitting_->set_transient_for(*window);
    const Promise<bool> promise;
    promise.onAbandoned([this] {
        if (quitting_) quitting_->set_visible(false);
    });
    quitting_->signal_response().connect([this, promise](int response) {
        quitting_->set_visible(false);
        promise.resolve(response == Gtk::ResponseType::OK);
    });
    quitting_->present();
    return promise.future();
}

void OrvuApplication::orderFrontStandardAboutPanel() {
    if (!about_) {
        about_ = std::make_unique<Gtk::AboutDialog>();
        about_->set_program_name("Orvu");
        about_->set_version(ORVU_VERSION);
        about_->set_comments(phrase("A small desktop browser").c_str());
        about_->set_logo_icon_name(applicationId);
        about_->set_hide_on_close(true);
    }
    auto* const window = get_active_window();
    if (window && window != about_.get()) about_->set_transient_for(*window);
    about_->present();
}

}  // namespace orvu

#include "core/AppServices.h"
#include "foundation/text/Translation.h"
#include "import/PersonFolders.h"
#include "look/motion/view/Moving.h"
#include "look/text/PlatformText.h"
#include "platform/linux/Desktop.h"
#include "platform/linux/desktop/PortalAppearance.h"
#include "platform/linux/desktop/Renderer.h"
#include "platform/linux/desktop/WaylandSocket.h"
#include "platform/linux/update/LinuxUpdateInstaller.h"
#include "platform/linux/update/SoupUpdateTransport.h"
#include "platform/linux/Worker.h"
#include "search/SearchSuggester.h"
#include "shell/BrowserWindowController.h"
#include "shell/CommandLine.h"
#include "shell/import/view/ImportWindowView.h"
#include "shell/onboarding/view/OnboardingWindowView.h"
#include "shell/OrvuApp.h"
#include "shell/settings/view/SettingsWindowView.h"
#include "shell/view/BrowserWindowView.h"
#include "shell/view/OrvuApplication.h"

#include <algorithm>
#include <chrono>
#include <clocale>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace {

using namespace orvu;

/// The file that runs, without links; empty where the system doesn't tell.
std::filesystem::path ownProgram() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored);
}

/// What keeps this copy of the program current.
class Updates {
public:
    Updates(const Platform& platform, Settings& settings)
        : staging_(platform.loop, Worker::AtEnd::forget, {}),
          updater_({platform.defaults, settings, platform.loop, transport_, installer_},
                   UpdateServer::configured(), running()) {}

    [[nodiscard]] Updater& updater() { return updater_; }

private:
    /// The version of a copy that doesn't say it in a file is the one that was built.
    [[nodiscard]] ApplicationFacts running() const {
        ApplicationFacts facts = copy_.facts;
        if (copy_.application.empty()) facts.version = ORVU_VERSION;
        return facts;
    }

    const LinuxUpdateInstaller::Copy copy_ = LinuxUpdateInstaller::copyOf(ownProgram());
    Worker staging_;
    SoupUpdateTransport transport_;
    LinuxUpdateInstaller installer_{staging_, copy_, UpdateKey::configured(),
                                    UpdateServer::configured()};
    Updater updater_;
};

/// The running program: the desktop, what all windows share on it, and the windows.
class Program : public AppWorld {
public:
    explicit Program(OrvuApplication& application)
        : windows_(services_,
                   [this, &application](const BrowserWindowTraits& traits,
                                        std::function<void()> closed) {
                       return std::make_unique<BrowserWindowView>(
                           application,
                           BrowserView::Shared{services_, windows_.assistant(), updates_.updater()},
                           windows_, traits, std::move(closed));
                   }),
          importWindow_(application, services_, {desktop_.foreignFiles(), personFolders()}),
          settingsWindow_(application, {services_, windows_.assistant().skills, updates_.updater(),
                                        importWindow_}),
          onboardingWindow_(application, services_.settings(), importWindow_),
          delegate_(services_, {windows_, settingsWindow_, importWindow_, onboardingWindow_},
                    updates_.updater(), application),
          tidyUp_(services_.platform().loop.after(std::chrono::seconds{10},
                                                  [this] { removeOrphans(); })) {}

    [[nodiscard]] AppDelegate& delegate() override { return delegate_; }
    [[nodiscard]] const Settings& settings() override { return services_.settings(); }

private:
    void removeOrphans() {
        std::vector<Uuid> known;
        std::ranges::transform(services_.profiles().profiles(), std::back_inserter(known),
                               &Profile::id);
        desktop_.removeOrphans(known);
    }

    static StorageOptions storage() {
        StorageOptions options;
        for (const auto& key : passingDocuments) options.passing.emplace_back(key.name);
        return options;
    }

    Desktop desktop_{FaviconStore::httpOptions, SearchSuggester::httpOptions, storage()};
    PortalAppearance appearance_;
    AppServices services_{desktop_.platform()};
    Updates updates_{services_.platform(), services_.settings()};
    BrowserWindowController windows_;
    ImportWindowView importWindow_;
    SettingsWindowView settingsWindow_;
    OnboardingWindowView onboardingWindow_;
    AppDelegate delegate_;
    Scheduled tidyUp_;
    ScopedConnection movingWatch_ =
        Moving::connectChanged([this] { desktop_.platform().activity.setMoving(Moving::any()); });
};

/// Answers what needs no window: the exit status, or nothing if the program is to start.
std::optional<int> answerAtOnce(const CommandLine& commandLine) {
    for (const std::string& option : commandLine.unknownOptions) {
        std::cerr << CommandLine::refusal(option);
    }
    if (!commandLine.unknownOptions.empty()) return CommandLine::refusedStatus;
    if (commandLine.wantsHelp) {
        std::cout << CommandLine::help();
    } else if (commandLine.wantsVersion) {
        std::cout << "Orvu " ORVU_VERSION "\n";
    } else {
        return std::nullopt;
    }
    return 0;
}

/// Texts are in the person's language from now on, where this copy of the program has it.
void speakTheirLanguage() {
    std::setlocale(LC_ALL, "");
    useTranslations(ownProgram().parent_path().parent_path() / "share/locale");
    useWording(platformText);
}

}  // namespace

int main(int argc, char** argv) {
    speakTheirLanguage();
    const std::vector<std::string> arguments{argv + std::min(argc, 1), argv + argc};
    if (const auto status = answerAtOnce(CommandLine::parse(arguments))) return *status;
    UpdateFolder::keepRunLock();
    chooseRenderer();
    nameWaylandSocket();
    const auto application = Glib::make_refptr_for_instance(new OrvuApplication(
        [](OrvuApplication& running) { return std::make_unique<Program>(running); }));
    return application->run(argc, argv);
}

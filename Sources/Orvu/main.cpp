#include "core/AppServices.h"
#include "import/PersonFolders.h"
#include "look/motion/view/Moving.h"
#include "platform/linux/Desktop.h"
#include "platform/linux/desktop/Renderer.h"
#include "platform/linux/desktop/WaylandSocket.h"
#include "search/SearchSuggester.h"
#include "shell/BrowserWindowController.h"
#include "shell/CommandLine.h"
#include "shell/import/view/ImportWindowView.h"
#include "shell/OrvuApp.h"
#include "shell/settings/view/SettingsWindowView.h"
#include "shell/view/BrowserWindowView.h"
#include "shell/view/OrvuApplication.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace orvu;

/// The running program: the desktop, what all windows share on it, and the windows.
class Program : public AppWorld {
public:
    explicit Program(OrvuApplication& application)
        : windows_(services_,
                   [this, &application](const BrowserWindowTraits& traits,
                                        std::function<void()> closed) {
                       return std::make_unique<BrowserWindowView>(application, services_, windows_,
                                                                  traits, std::move(closed));
                   }),
          importWindow_(application, services_, {desktop_.foreignFiles(), personFolders()}),
          settingsWindow_(application, services_, windows_.assistant().skills, importWindow_),
          delegate_(services_, windows_, settingsWindow_, importWindow_, application),
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
    AppServices services_{desktop_.platform()};
    BrowserWindowController windows_;
    ImportWindowView importWindow_;
    SettingsWindowView settingsWindow_;
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

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments{argv + std::min(argc, 1), argv + argc};
    if (const auto status = answerAtOnce(CommandLine::parse(arguments))) return *status;
    chooseRenderer();
    nameWaylandSocket();
    const auto application = Glib::make_refptr_for_instance(new OrvuApplication(
        [](OrvuApplication& running) { return std::make_unique<Program>(running); }));
    return application->run(argc, argv);
}

#include "core/Bookmarks.h"
#include "core/TrackerBlocker.h"
#include "foundation/NotificationCenter.h"
#include "pagetools/ReaderLook.h"
#include "platform/linux/desktop/GdkPasteboard.h"
#include "platform/linux/desktop/GdkSystemSound.h"
#include "platform/linux/GlibMainLoop.h"
#include "platform/linux/files/LinuxDownloadFolder.h"
#include "platform/linux/files/LinuxFileIO.h"
#include "platform/linux/files/LinuxSystemPaths.h"
#include "platform/linux/desktop/LinuxWorkspace.h"
#include "platform/linux/PixbufImageCodec.h"
#include "platform/linux/desktop/Renderer.h"
#include "platform/linux/SoupHttpSession.h"
#include "platform/linux/defaults/SqliteUserDefaults.h"
#include "platform/linux/web/WebKitContentRules.h"
#include "platform/linux/web/WebKitEngine.h"
#include "platform/linux/Worker.h"
#include "profiles/Preferences.h"
#include "profiles/Profiles.h"
#include "search/SearchSuggester.h"
#include "shell/BrowserWindowController.h"
#include "shell/OrvuApp.h"
#include "shell/view/BrowserWindowView.h"
#include "shell/view/OrvuApplication.h"
#include "site/Downloads.h"
#include "site/Favicons.h"
#include "site/permissions/SitePermissions.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace {

using namespace orvu;

/// The program's parts: the real things, handed to whatever needs them.
class World : public AppWorld {
public:
    explicit World(OrvuApplication& application)
        : defaults_(paths_.configuration / "UserDefaults.sqlite"),
          engine_(paths_, loop_),
          profiles_(defaults_, [this](const Uuid& id) { engine_.removeDataStore(id); }),
          bookmarks_(defaults_, loop_),
          favicons_(iconRequests_, images_, files_, paths_.data / "Favicons"),
          windows_({defaults_, notifications_, loop_, engine_, bookmarks_, favicons_, permissions_,
                    trackers_, sound_, readerLook_},
                   profiles_, makeWindows(application)),
          delegate_(defaults_, workspace_, windows_, application),
          tidyUp_(loop_.after(std::chrono::seconds{10}, [this] { removeOrphans(); })) {
        engine_.onDownload = [this](std::unique_ptr<Download> download) {
            downloads_.add(std::move(download));
        };
        // Long before the first page asks for anything.
        if (Prefs::boolean(defaults_, "blockTrackers", true)) trackers_.prepare();
    }

    [[nodiscard]] AppDelegate& delegate() override { return delegate_; }
    [[nodiscard]] UserDefaults& defaults() override { return defaults_; }

private:
    BrowserWindowFactory makeWindows(OrvuApplication& application) {
        const WindowEnvironment environment{
            application,
            defaults_,
            loop_,
            pasteboard_,
            workspace_,
            profiles_,
            downloads_,
            suggestions_,
            [this](const BrowserStore& store, const Profile& profile) {
                windows_.switchProfile(store, profile);
            }};
        return [environment](const BrowserWindowTraits& traits, std::function<void()> closed) {
            return std::make_unique<BrowserWindowView>(environment, traits, std::move(closed));
        };
    }

    /// Website data of profiles that are gone: the engine writes some of it again after a removal.
    /// And what a killed program left of its downloads.
    void removeOrphans() {
        static_cast<void>(tidying_.run<bool>(
            [folder = downloadFolder_.path()] {
                LinuxDownloadFolder::removeLeftovers(folder);
                return true;
            },
            false));
        std::vector<Uuid> known;
        std::ranges::transform(profiles_.profiles(), std::back_inserter(known), &Profile::id);
        engine_.removeDataStoresExcept(known);
    }

    const SystemPaths paths_ = linuxSystemPaths();
    GlibMainLoop loop_;
    NotificationCenter notifications_;
    SqliteUserDefaults defaults_;
    WebKitEngine engine_;
    WebKitRuleListStore ruleLists_{paths_.caches / "ContentRules"};
    LinuxWorkspace workspace_;
    LinuxDownloadFolder downloadFolder_{downloadsFolder()};
    DownloadStore downloads_{downloadFolder_, workspace_};
    GdkPasteboard pasteboard_;
    GdkSystemSound sound_;
    ReaderLook readerLook_{defaults_};
    ProfileStore profiles_;
    BookmarkStores bookmarks_;
    SoupHttpSession iconRequests_{FaviconStore::httpOptions};
    PixbufImageCodec images_{loop_};
    LinuxFileIO files_{loop_};
    FaviconStore favicons_;
    SitePermissions permissions_{defaults_};
    TrackerBlocker trackers_{ruleLists_};
    SoupHttpSession suggestions_{SearchSuggester::httpOptions};
    BrowserWindowController windows_;
    AppDelegate delegate_;
    Worker tidying_{loop_, Worker::AtEnd::forget, {}};
    Scheduled tidyUp_;
};

}  // namespace

int main(int argc, char** argv) {
    chooseRenderer();
    const auto application = Glib::make_refptr_for_instance(new OrvuApplication(
        [](OrvuApplication& running) { return std::make_unique<World>(running); }));
    return application->run(argc, argv);
}

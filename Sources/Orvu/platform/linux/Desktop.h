#pragma once

#include "platform/Platform.h"
#include "platform/linux/GlibMainLoop.h"
#include "platform/linux/Worker.h"
#include "platform/linux/defaults/SqliteUserDefaults.h"
#include "platform/linux/desktop/GdkPasteboard.h"
#include "platform/linux/desktop/GdkSystemSound.h"
#include "platform/linux/desktop/GioNetworkMonitor.h"
#include "platform/linux/desktop/LinuxWorkspace.h"
#include "platform/linux/files/LinuxDownloadFolder.h"
#include "platform/linux/files/LinuxFileIO.h"
#include "platform/linux/files/LinuxSystemPaths.h"
#include "platform/linux/foreign/LinuxForeignFiles.h"
#include "platform/linux/http/SoupHttpSession.h"
#include "platform/linux/http/SoupPageReads.h"
#include "platform/linux/images/SandboxedImageCodec.h"
#include "platform/linux/model/DesktopModel.h"
#include "platform/linux/web/WebKitContentRules.h"
#include "platform/linux/web/WebKitEngine.h"

#include <memory>
#include <vector>

namespace orvu {

/// This desktop as the program sees it: makes the whole seam, once in a process.
class Desktop {
public:
    /// Takes what is common to the two kinds of requests, and how values are kept.
    Desktop(const HttpOptions& iconRequests, const HttpOptions& suggestionRequests,
            StorageOptions storage);
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// All that it refers to lives as long as the desktop.
    [[nodiscard]] Platform platform();
    /// Files of other programs, for threads too that outlive the desktop.
    [[nodiscard]] std::shared_ptr<const ForeignFiles> foreignFiles() const { return foreign_; }

    /// Removes what is left of earlier runs: the website data of profiles that are not in
    /// `profiles`, of which the engine writes some again after a removal, and what a killed
    /// program left of its downloads and of its copies of other programs' files.
    void removeOrphans(const std::vector<Uuid>& profiles);

private:
    const SystemPaths paths_ = linuxSystemPaths();
    const Locale locale_ = Locale::current();
    const Calendar calendar_ = Calendar::current();
    GlibMainLoop loop_;
    Activity activity_;
    SqliteUserDefaults defaults_;
    GioNetworkMonitor network_{loop_};
    WebKitEngine engine_{paths_, loop_, activity_, network_};
    WebKitRuleListStore ruleLists_{paths_.caches / "ContentRules"};
    SoupHttpSession iconRequests_;
    SoupHttpSession suggestionRequests_;
    SoupPageReads pageReads_{loop_};
    Worker background_{loop_, Worker::AtEnd::forget, {}};
    SandboxedImageCodec images_{loop_};
    LinuxFileIO files_{loop_};
    LocalModel modelServers_{loop_};
    FileModel modelFiles_{loop_,
                          files_,
                          {.places = ModelPlaces::usual(paths_.data / "models"),
                           .folder = paths_.data / "models",
                           .memory = paths_.caches / "Models.json"}};
    DesktopModel model_{modelServers_, modelFiles_};
    LinuxDownloadFolder downloadFolder_{downloadsFolder()};
    LinuxWorkspace workspace_;
    GdkPasteboard pasteboard_;
    GdkSystemSound sound_;
    const std::shared_ptr<const ForeignFiles> foreign_ =
        std::make_shared<LinuxForeignFiles>(paths_.caches);
    Worker tidying_{loop_, Worker::AtEnd::forget, {}};
};

}  // namespace orvu

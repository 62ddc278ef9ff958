#pragma once

#include "foundation/text/Translation.h"
#include "foundation/Uuid.h"
#include "platform/Download.h"
#include "platform/DownloadFolder.h"
#include "platform/Workspace.h"

#include <sigc++/sigc++.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvu {

/// What a download needs around it. All of it outlives the download.
struct DownloadContext {
    DownloadFolder& folder;
    Workspace& workspace;
    /// Whether another download that runs will have this name.
    std::function<bool(const std::filesystem::path&)> isPromised;
};

/// One download. The file is written in a place of its own and gets its name when it is whole, so
/// half a file never bears it.
class DownloadItem : public DownloadDelegate, public std::enable_shared_from_this<DownloadItem> {
public:
    enum class State { running, done, failed, cancelled };

    DownloadItem(std::unique_ptr<Download> download, DownloadContext context);
    DownloadItem(const DownloadItem&) = delete;
    DownloadItem& operator=(const DownloadItem&) = delete;
    ~DownloadItem() override;

    [[nodiscard]] const Uuid& id() const { return id_; }
    [[nodiscard]] const std::string& name() const { return name_; }
    /// From 0 to 1.
    [[nodiscard]] double fraction() const { return fraction_; }
    [[nodiscard]] State state() const { return state_; }
    /// Where the file will be or is, once its name is decided. It changes once more if the name
    /// was taken by the time the file was whole.
    [[nodiscard]] const std::optional<std::filesystem::path>& fileURL() const { return file_; }

    /// Ends a running download for good, whatever the engine tells later.
    void cancel();
    /// Shows the file in the desktop's file manager, if it has a name.
    void showInFinder() const;

    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

    [[nodiscard]] std::optional<std::filesystem::path> decideDestination(
        std::string_view suggestedName) override;
    void progressed() override;
    void didFinish() override;
    void didFail() override;

private:
    void chooseName();
    [[nodiscard]] bool giveName();
    void end(State state);

    const DownloadContext context_;
    const Uuid id_ = Uuid::random();
    std::string name_ = phrase("Download");
    std::string wantedName_;
    std::vector<std::filesystem::path> refused_;  ///< names that turned out to be taken
    double fraction_ = 0;
    State state_ = State::running;
    std::optional<std::filesystem::path> file_;
    sigc::signal<void()> changed_;
    std::unique_ptr<PartialFile> place_;
    std::unique_ptr<Download> download_;  // last: its end comes before that of its place
};

}  // namespace orvu

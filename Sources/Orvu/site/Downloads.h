#pragma once

#include "site/downloads/DownloadItem.h"

#include <memory>
#include <vector>

namespace orvu {

/// The downloads of this run, of all windows and profiles. A download goes on when the tab or the
/// window it came from is closed; nothing of the list is written to disk.
class DownloadStore {
public:
    using Items = std::vector<std::shared_ptr<DownloadItem>>;

    /// Both must outlive the store.
    DownloadStore(DownloadFolder& folder, Workspace& workspace)
        : folder_(folder), workspace_(workspace) {}
    DownloadStore(const DownloadStore&) = delete;
    DownloadStore& operator=(const DownloadStore&) = delete;

    /// The newest first.
    [[nodiscard]] const Items& items() const { return items_; }
    /// The first one in the list that runs, or null.
    [[nodiscard]] std::shared_ptr<DownloadItem> running() const;

    /// Follows a download from now on.
    void add(std::unique_ptr<Download> download);
    /// Takes all that don't run out of the list. Files are not touched.
    void clearFinished();

    /// Calls `slot` after the list, or anything of a download in it, changed.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    [[nodiscard]] bool isPromised(const std::filesystem::path& file) const;

    DownloadFolder& folder_;
    Workspace& workspace_;
    Items items_;
    sigc::signal<void()> changed_;
};

}  // namespace orvu

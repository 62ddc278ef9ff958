#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace orvu {

/// Hears of a download's steps. All calls come on the main thread, and none from within a call
/// to the download.
class DownloadDelegate {
public:
    virtual ~DownloadDelegate() = default;

    /// Where to write, in a folder that is there; nothing stands under that name. Without a place
    /// the download fails. Asked at most once.
    [[nodiscard]] virtual std::optional<std::filesystem::path> decideDestination(
        std::string_view suggestedName) = 0;
    /// `Download::fractionCompleted` changed.
    virtual void progressed() = 0;
    /// The whole file is in its place. The last call.
    virtual void didFinish() = 0;
    /// It ended early, by `Download::cancel` too. The last call; the delegate may end the
    /// download in it.
    virtual void didFail() = 0;
};

/// A file on its way from the web to the disk. Ending this cancels what still runs.
class Download {
public:
    virtual ~Download() = default;

    /// `delegate` must outlive the download or be taken back with null.
    virtual void setDelegate(DownloadDelegate* delegate) = 0;
    /// From 0 to 1; 0 as long as nobody knows how long the file is.
    [[nodiscard]] virtual double fractionCompleted() const = 0;
    /// Asks for an early end, which `DownloadDelegate::didFail` then tells. What was written goes.
    virtual void cancel() = 0;
};

}  // namespace orvu

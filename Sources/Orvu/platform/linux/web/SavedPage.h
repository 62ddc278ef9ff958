#pragma once

#include "platform/Download.h"
#include "platform/linux/GObjectPointer.h"

#include <webkit/webkit.h>

#include <memory>
#include <optional>
#include <string>

namespace orvu {

/// A page that is written to the disk in one file (MHTML, RFC 2557), with its pictures and styles
/// as they are shown. It begins once it has a delegate.
class SavedPage : public Download {
public:
    /// Whether the page in `view` is a document with parts; all else is a file of its own.
    [[nodiscard]] static bool canSave(WebKitWebView* view);

    /// The file's name is made of `title` or, without one, of `host`.
    SavedPage(WebKitWebView* view, const std::string& title,
              const std::optional<std::string>& host);
    SavedPage(const SavedPage&) = delete;
    SavedPage& operator=(const SavedPage&) = delete;
    ~SavedPage() override;

    void setDelegate(DownloadDelegate* delegate) override;
    [[nodiscard]] double fractionCompleted() const override { return 0; }
    void cancel() override { g_cancellable_cancel(cancellable_.get()); }

private:
    void begin();
    void ended(bool saved);

    const GObjectPointer<WebKitWebView> view_;  ///< stays while it is being written
    const GObjectPointer<GCancellable> cancellable_;
    const std::string name_;
    DownloadDelegate* delegate_ = nullptr;
    guint starter_ = 0;  ///< the source that begins
    bool hasBegun_ = false;
    /// Lets the engine's answer find out whether this still lives.
    std::shared_ptr<SavedPage*> self_ = std::make_shared<SavedPage*>(this);
};

}  // namespace orvu

#pragma once

#include "platform/Download.h"
#include "platform/linux/desktop/ChildWatch.h"
#include "platform/linux/GObjectPointer.h"

#include <webkit/webkit.h>

#include <optional>
#include <string>

namespace orvu {

/// A download of the engine. As long as it has no delegate it waits with what it has to tell.
class OrvuDownload : public Download {
public:
    explicit OrvuDownload(WebKitDownload* download);
    OrvuDownload(const OrvuDownload&) = delete;
    OrvuDownload& operator=(const OrvuDownload&) = delete;
    ~OrvuDownload() override;

    void setDelegate(DownloadDelegate* delegate) override;
    [[nodiscard]] double fractionCompleted() const override {
        return webkit_download_get_estimated_progress(download_.get());
    }
    void cancel() override { webkit_download_cancel(download_.get()); }

private:
    static gboolean decideDestination(WebKitDownload* download, const char* name, gpointer data);
    static void progressed(WebKitDownload*, GParamSpec*, gpointer data);
    static void failed(WebKitDownload*, GError*, gpointer data);
    static void finished(WebKitDownload* download, gpointer data);
    void decide(const std::string& name);
    void stopListening();
    void end();
    void tellDelegate();

    const GObjectPointer<WebKitDownload> download_;
    DownloadDelegate* delegate_ = nullptr;
    std::optional<std::string> suggestedName_;  ///< while nobody has decided
    guint telling_ = 0;                         ///< the source that tells a new delegate
    bool failed_ = false;
    bool ended_ = false;
    ChildWatch engine_;
};

}  // namespace orvu

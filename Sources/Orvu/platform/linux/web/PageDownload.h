#pragma once

#include "platform/DownloadRequest.h"
#include "platform/linux/web/WebKitSession.h"

#include <webkit/webkit.h>

#include <memory>
#include <optional>
#include <string>

namespace orvu {

/// A download that the engine began for a page, and that waits to be taken.
class PageDownload : public DownloadRequest {
public:
    /// `page` is the address of the page in `view`. What begins goes to `taker`.
    PageDownload(std::unique_ptr<Download> download, WebKitDownload* engineDownload,
                 WebKitWebView* view, const std::optional<Url>& page, DownloadCause cause,
                 std::shared_ptr<const DownloadTaker> taker);
    PageDownload(const PageDownload&) = delete;
    PageDownload& operator=(const PageDownload&) = delete;
    ~PageDownload() override;

    [[nodiscard]] DownloadCause cause() const override { return cause_; }
    [[nodiscard]] const std::string& host() const override { return host_; }
    [[nodiscard]] bool holdsConnection() const override { return download_ && isOfTheWeb_; }
    [[nodiscard]] bool setAside() override;
    void begin() override;

private:
    std::unique_ptr<Download> download_;  ///< until it began or was set aside
    std::string url_;                     ///< empty if it can't be asked for anew
    const DownloadCause cause_;
    std::string host_;
    bool isOfTheWeb_ = false;
    bool canBeAskedAnew_ = false;
    GWeakRef view_;
    const std::shared_ptr<const DownloadTaker> taker_;
};

}  // namespace orvu

#include "platform/linux/web/OrvuDownload.h"

#include <libsoup/soup.h>

namespace orvu {
namespace {

/// The engine's process that fetches and writes files, "WebKitNetworkProcess" cut by the kernel.
constexpr std::string_view networkProcess = "WebKitNetworkPr";

/// Whether less came than the server said. The engine takes some connections that break off for
/// the end of the file. Of a body that is packed on its way only the packed length is known.
bool isShort(WebKitDownload* download) {
    WebKitURIResponse* const response = webkit_download_get_response(download);
    if (!response) return false;
    SoupMessageHeaders* const headers = webkit_uri_response_get_http_headers(response);
    if (!headers || soup_message_headers_get_one(headers, "Content-Encoding")) return false;
    return webkit_download_get_received_data_length(download) <
           webkit_uri_response_get_content_length(response);
}

OrvuDownload& self(gpointer data) { return *static_cast<OrvuDownload*>(data); }

}  // namespace

OrvuDownload::OrvuDownload(WebKitDownload* download)
    : download_(GObjectPointer<WebKitDownload>::retain(download)) {
    const auto on = [&](const char* signal, auto handler) {
        g_signal_connect(download, signal, G_CALLBACK(handler), this);
    };
    on("decide-destination", decideDestination);
    on("notify::estimated-progress", progressed);
    on("failed", failed);
    on("finished", finished);
}

OrvuDownload::~OrvuDownload() {
    stopListening();
    if (!ended_) webkit_download_cancel(download_.get());
}

gboolean OrvuDownload::decideDestination(WebKitDownload* download, const char* name,
                                         gpointer data) {
    auto& self = orvu::self(data);
    const auto file = self.delegate_ ? self.delegate_->decideDestination(name) : std::nullopt;
    if (!file) {
        webkit_download_cancel(download);
        return TRUE;
    }
    webkit_download_set_destination(download, file->c_str());
    // The engine doesn't tell when this process goes: its downloads would run for ever.
    self.engine_.start(networkProcess, [&self] {
        self.failed_ = true;
        self.end();
    });
    return TRUE;
}

void OrvuDownload::progressed(WebKitDownload*, GParamSpec*, gpointer data) {
    if (DownloadDelegate* const delegate = self(data).delegate_) delegate->progressed();
}

void OrvuDownload::failed(WebKitDownload*, GError*, gpointer data) { self(data).failed_ = true; }

// Comes after "failed" too.
void OrvuDownload::finished(WebKitDownload* download, gpointer data) {
    auto& self = orvu::self(data);
    self.failed_ = self.failed_ || isShort(download);
    self.end();
}

void OrvuDownload::stopListening() {
    g_signal_handlers_disconnect_by_data(download_.get(), this);
    engine_.stop();
}

void OrvuDownload::end() {
    ended_ = true;
    stopListening();
    if (!delegate_) return;
    // The delegate may end this.
    if (failed_) return delegate_->didFail();
    delegate_->didFinish();
}

}  // namespace orvu

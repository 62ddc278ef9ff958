#include "platform/linux/web/OrvuDownload.h"

#include <libsoup/soup.h>

#include <utility>

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
    if (telling_ != 0) g_source_remove(telling_);
    stopListening();
    if (!ended_) webkit_download_cancel(download_.get());
}

gboolean OrvuDownload::decideDestination(WebKitDownload*, const char* name, gpointer data) {
    auto& self = orvu::self(data);
    // The engine doesn't tell when this process goes: its downloads would run for ever.
    self.engine_.start(networkProcess, [&self] {
        self.failed_ = true;
        self.end();
    });
    if (self.delegate_) {
        self.decide(name);
    } else {
        self.suggestedName_ = name;
    }
    return TRUE;  // the engine waits until somebody decides
}

void OrvuDownload::decide(const std::string& name) {
    const auto file = delegate_->decideDestination(name);
    if (file) {
        webkit_download_set_destination(download_.get(), file->c_str());
    } else {
        webkit_download_cancel(download_.get());
    }
}

void OrvuDownload::setDelegate(DownloadDelegate* delegate) {
    delegate_ = delegate;
    if (!delegate || telling_ != 0 || (!ended_ && !suggestedName_)) return;
    const auto tell = +[](gpointer data) -> gboolean {
        auto& self = orvu::self(data);
        self.telling_ = 0;
        self.tellDelegate();
        return G_SOURCE_REMOVE;
    };
    telling_ = g_idle_add(tell, this);
}

void OrvuDownload::tellDelegate() {
    if (!delegate_) return;
    const auto name = std::exchange(suggestedName_, std::nullopt);
    if (ended_) return end();
    if (name) decide(*name);
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

#include "platform/linux/OrvuDownload.h"

namespace orvu {
namespace {

/// The engine's process that fetches and writes files, "WebKitNetworkProcess" cut by the kernel.
constexpr std::string_view networkProcess = "WebKitNetworkPr";

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
void OrvuDownload::finished(WebKitDownload*, gpointer data) { self(data).end(); }

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

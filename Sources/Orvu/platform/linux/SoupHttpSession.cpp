#include "platform/linux/SoupHttpSession.h"

#include <chrono>
#include <memory>
#include <optional>

namespace orvu {
namespace {

constexpr gsize pieceSize = 32768;  // bytes

/// Cancels a request when its time is up, unless the request was faster.
class Deadline {
public:
    /// `cancellable` must outlive this.
    Deadline(GCancellable* cancellable, std::chrono::milliseconds limit)
        : cancellable_(cancellable),
          source_(g_timeout_add(static_cast<guint>(limit.count()), expire, this)) {}
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
    ~Deadline() {
        if (source_ != 0) g_source_remove(source_);
    }

private:
    static gboolean expire(gpointer data) {
        auto& self = *static_cast<Deadline*>(data);
        self.source_ = 0;
        g_cancellable_cancel(self.cancellable_);
        return G_SOURCE_REMOVE;
    }

    GCancellable* const cancellable_;
    guint source_;
};

/// One request under way. Each step hands it to the next one's callback.
struct Transfer {
    Promise<std::optional<HttpResponse>> promise;
    GObjectPointer<GCancellable> cancellable;
    std::optional<Deadline> deadline;
    GObjectPointer<SoupMessage> message;
    GObjectPointer<GInputStream> stream;
    HttpResponse response;
    std::size_t bodyLimit = 0;
};
using TransferPointer = std::unique_ptr<Transfer>;

/// Resolves after all of the transfer is gone: who hears of it may end the session.
void finish(TransferPointer transfer, bool whole) {
    const auto promise = transfer->promise;
    std::optional<HttpResponse> result;
    if (whole) result = std::move(transfer->response);
    transfer.reset();
    promise.resolve(std::move(result));
}

void readPiece(TransferPointer transfer);

void pieceCame(GObject* source, GAsyncResult* result, gpointer data) {
    TransferPointer transfer{static_cast<Transfer*>(data)};
    GBytes* const bytes = g_input_stream_read_bytes_finish(G_INPUT_STREAM(source), result, nullptr);
    if (!bytes) return finish(std::move(transfer), false);
    gsize size = 0;
    const auto* const content = static_cast<const char*>(g_bytes_get_data(bytes, &size));
    if (size > 0) transfer->response.body.append(content, size);
    g_bytes_unref(bytes);
    if (size == 0) return finish(std::move(transfer), true);
    if (transfer->response.body.size() >= transfer->bodyLimit) {
        return finish(std::move(transfer), false);
    }
    readPiece(std::move(transfer));
}

void readPiece(TransferPointer transfer) {
    Transfer& next = *transfer.release();
    g_input_stream_read_bytes_async(next.stream.get(), pieceSize, G_PRIORITY_DEFAULT,
                                    next.cancellable.get(), pieceCame, &next);
}

void headersCame(GObject* source, GAsyncResult* result, gpointer data) {
    TransferPointer transfer{static_cast<Transfer*>(data)};
    transfer->stream = GObjectPointer<GInputStream>::adopt(
        soup_session_send_finish(SOUP_SESSION(source), result, nullptr));
    if (!transfer->stream) return finish(std::move(transfer), false);
    transfer->response.status = static_cast<int>(soup_message_get_status(transfer->message.get()));
    char* const address =
        g_uri_to_string_partial(soup_message_get_uri(transfer->message.get()), G_URI_HIDE_PASSWORD);
    transfer->response.url = address;
    g_free(address);
    readPiece(std::move(transfer));
}

}  // namespace

SoupHttpSession::~SoupHttpSession() {
    if (session_) soup_session_abort(session_.get());
}

SoupSession* SoupHttpSession::session() {
    if (session_) return session_.get();
    session_ = GObjectPointer<SoupSession>::adopt(soup_session_new_with_options(
        "max-conns", options_.connections, "max-conns-per-host", options_.connectionsPerHost,
        "timeout", static_cast<guint>(options_.timeout.count()), nullptr));
    // Cookies and caches are features that a session has only if they are added; passwords are one
    // that it has unless it is taken away.
    soup_session_remove_feature_by_type(session_.get(), SOUP_TYPE_AUTH_MANAGER);
    return session_.get();
}

Future<std::optional<HttpResponse>> SoupHttpSession::get(const Url& url, const Headers& headers) {
    auto transfer = std::make_unique<Transfer>();
    auto future = transfer->promise.future();
    if (isWebUrl(url)) {
        transfer->message = GObjectPointer<SoupMessage>::adopt(
            soup_message_new(SOUP_METHOD_GET, url.absoluteString().c_str()));
    }
    if (!transfer->message) {
        finish(std::move(transfer), false);
        return future;
    }
    for (const auto& [name, value] : headers) {
        soup_message_headers_append(soup_message_get_request_headers(transfer->message.get()),
                                    name.c_str(), value.c_str());
    }
    transfer->bodyLimit = options_.bodyLimit;
    transfer->cancellable = GObjectPointer<GCancellable>::adopt(g_cancellable_new());
    auto* const cancellable = transfer->cancellable.get();
    if (options_.totalTimeout.count() > 0)
        transfer->deadline.emplace(cancellable, options_.totalTimeout);
    // The callback runs at most once, while the transfer, which holds the cancellable, lives.
    transfer->promise.onAbandoned([cancellable] { g_cancellable_cancel(cancellable); });
    Transfer& started = *transfer.release();
    soup_session_send_async(session(), started.message.get(), G_PRIORITY_DEFAULT, cancellable,
                            headersCame, &started);
    return future;
}

}  // namespace orvu

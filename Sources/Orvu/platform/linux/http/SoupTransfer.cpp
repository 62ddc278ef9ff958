#include "platform/linux/http/SoupTransfer.h"

#include <memory>
#include <string>
#include <utility>

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
    SoupTransferLimits limits;
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
    std::string& body = transfer->response.body;
    if (size > 0) body.append(content, size);
    g_bytes_unref(bytes);
    if (size == 0) return finish(std::move(transfer), true);
    const auto& limits = transfer->limits;
    if (body.size() < limits.body) return readPiece(std::move(transfer));
    if (limits.cutsBody) body.resize(limits.body);
    finish(std::move(transfer), limits.cutsBody);
}

void readPiece(TransferPointer transfer) {
    Transfer& next = *transfer.release();
    g_input_stream_read_bytes_async(next.stream.get(), pieceSize, G_PRIORITY_DEFAULT,
                                    next.cancellable.get(), pieceCame, &next);
}

std::string addressOf(SoupMessage* message) {
    char* const address =
        g_uri_to_string_partial(soup_message_get_uri(message), G_URI_HIDE_PASSWORD);
    std::string result{address};
    g_free(address);
    return result;
}

std::string mimeTypeIn(SoupMessageHeaders* headers) {
    const char* const type = soup_message_headers_get_content_type(headers, nullptr);
    if (!type) return {};
    char* const lower = g_ascii_strdown(type, -1);
    std::string result{lower};
    g_free(lower);
    return result;
}

void headersCame(GObject* source, GAsyncResult* result, gpointer data) {
    TransferPointer transfer{static_cast<Transfer*>(data)};
    transfer->stream = GObjectPointer<GInputStream>::adopt(
        soup_session_send_finish(SOUP_SESSION(source), result, nullptr));
    if (!transfer->stream) return finish(std::move(transfer), false);
    SoupMessage* const message = transfer->message.get();
    HttpResponse& response = transfer->response;
    response.status = static_cast<int>(soup_message_get_status(message));
    response.url = addressOf(message);
    response.mimeType = mimeTypeIn(soup_message_get_response_headers(message));
    readPiece(std::move(transfer));
}

}  // namespace

GObjectPointer<SoupMessage> webRequest(const Url& url) {
    if (!isWebUrl(url) || !url.host()) return {};
    return GObjectPointer<SoupMessage>::adopt(
        soup_message_new(SOUP_METHOD_GET, url.absoluteString().c_str()));
}

Future<std::optional<HttpResponse>> transfer(SoupSession& session,
                                             GObjectPointer<SoupMessage> message,
                                             const SoupTransferLimits& limits) {
    auto started = std::make_unique<Transfer>();
    auto future = started->promise.future();
    started->message = std::move(message);
    started->limits = limits;
    started->cancellable = GObjectPointer<GCancellable>::adopt(g_cancellable_new());
    auto* const cancellable = started->cancellable.get();
    if (limits.total.count() > 0) started->deadline.emplace(cancellable, limits.total);
    // The callback runs at most once, while the transfer, which holds the cancellable, lives.
    started->promise.onAbandoned([cancellable] { g_cancellable_cancel(cancellable); });
    Transfer& next = *started.release();
    soup_session_send_async(&session, next.message.get(), G_PRIORITY_DEFAULT, cancellable,
                            headersCame, &next);
    return future;
}

}  // namespace orvu

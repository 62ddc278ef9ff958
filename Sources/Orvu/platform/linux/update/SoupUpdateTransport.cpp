#include "platform/linux/update/SoupUpdateTransport.h"

#include "foundation/text/Translation.h"
#include "platform/linux/files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

namespace orvu {
namespace {

using Reply = UpdateTransport::Reply;

constexpr gsize pieceSize = 65536;  // bytes
/// What tells nothing about who asks.
constexpr const char* userAgent = "Orvu";

/// One request under way. Each step hands it to the next one's callback.
struct Exchange {
    Promise<Reply> promise;
    GObjectPointer<GCancellable> cancellable;
    GObjectPointer<SoupSession> session;
    GObjectPointer<SoupMessage> message;
    GObjectPointer<GInputStream> stream;
    UpdateTransport::Limits limits;
    UpdateTransport::Progress progress;
    std::uint64_t received = 0;
    bool goesToFile = false;
    FileDescriptor file;
    Reply reply;
};
using ExchangePointer = std::unique_ptr<Exchange>;

/// Resolves after all of the exchange is gone.
void finish(ExchangePointer exchange, std::string failure) {
    Reply reply = std::move(exchange->reply);
    reply.failure = std::move(failure);
    const auto promise = exchange->promise;
    exchange.reset();
    promise.resolve(std::move(reply));
}

std::string takeMessage(GError* error) {
    std::string text = error ? error->message : "";
    if (text.empty()) text = phrase("There was no answer.");
    g_clear_error(&error);
    return text;
}

std::string systemMessage() { return std::generic_category().message(errno); }

/// Keeps a piece. Gives what went wrong.
std::string keep(Exchange& exchange, const char* bytes, gsize size) {
    exchange.received += size;
    if (exchange.received > exchange.limits.bytes) return phrase("It is larger than it may be.");
    if (!exchange.goesToFile) exchange.reply.body.append(bytes, size);
    while (exchange.goesToFile && size > 0) {
        const ssize_t written = write(exchange.file.get(), bytes, size);
        if (written < 0) return systemMessage();
        bytes += written;
        size -= static_cast<gsize>(written);
    }
    return {};
}

void readPiece(ExchangePointer exchange);

void pieceCame(GObject* source, GAsyncResult* result, gpointer data) {
    ExchangePointer exchange{static_cast<Exchange*>(data)};
    GError* error = nullptr;
    GBytes* const piece = g_input_stream_read_bytes_finish(G_INPUT_STREAM(source), result, &error);
    if (!piece) return finish(std::move(exchange), takeMessage(error));
    gsize size = 0;
    const auto* const bytes = static_cast<const char*>(g_bytes_get_data(piece, &size));
    std::string failure = size > 0 ? keep(*exchange, bytes, size) : std::string{};
    g_bytes_unref(piece);
    if (size == 0 || !failure.empty()) return finish(std::move(exchange), std::move(failure));
    const auto progress = exchange->progress;
    const auto received = exchange->received;
    const auto promise = exchange->promise;
    if (progress && promise.isWanted()) progress(received);
    readPiece(std::move(exchange));
}

void readPiece(ExchangePointer exchange) {
    Exchange& next = *exchange.release();
    g_input_stream_read_bytes_async(next.stream.get(), pieceSize, G_PRIORITY_DEFAULT,
                                    next.cancellable.get(), pieceCame, &next);
}

void headersCame(GObject* source, GAsyncResult* result, gpointer data) {
    ExchangePointer exchange{static_cast<Exchange*>(data)};
    GError* error = nullptr;
    exchange->stream = GObjectPointer<GInputStream>::adopt(
        soup_session_send_finish(SOUP_SESSION(source), result, &error));
    if (!exchange->stream) return finish(std::move(exchange), takeMessage(error));
    readPiece(std::move(exchange));
}

GObjectPointer<SoupSession> session(std::chrono::seconds timeout) {
    auto made = GObjectPointer<SoupSession>::adopt(
        soup_session_new_with_options("timeout", static_cast<guint>(timeout.count()), "user-agent",
                                      userAgent, "accept-language", nullptr, nullptr));
    soup_session_remove_feature_by_type(made.get(), SOUP_TYPE_AUTH_MANAGER);
    return made;
}

GObjectPointer<SoupMessage> request(const Url& url) {
    if (url.scheme() != "https" || !url.host()) return {};
    auto message = GObjectPointer<SoupMessage>::adopt(
        soup_message_new(SOUP_METHOD_GET, url.absoluteString().c_str()));
    if (!message) return message;
    soup_message_add_flags(message.get(), SOUP_MESSAGE_NO_REDIRECT);
    soup_message_headers_replace(soup_message_get_request_headers(message.get()), "Cache-Control",
                                 "no-cache");
    // An archive is compressed already, and a file is kept as it was hashed.
    soup_message_disable_feature(message.get(), SOUP_TYPE_CONTENT_DECODER);
    return message;
}

Future<Reply> start(ExchangePointer exchange, const Url& url) {
    auto future = exchange->promise.future();
    exchange->message = request(url);
    if (!exchange->message) {
        finish(std::move(exchange), phrase("The address is none of the web."));
        return future;
    }
    exchange->session = session(exchange->limits.timeout);
    exchange->cancellable = GObjectPointer<GCancellable>::adopt(g_cancellable_new());
    auto* const cancellable = exchange->cancellable.get();
    exchange->promise.onAbandoned([cancellable] { g_cancellable_cancel(cancellable); });
    Exchange& next = *exchange.release();
    soup_session_send_async(next.session.get(), next.message.get(), G_PRIORITY_DEFAULT, cancellable,
                            headersCame, &next);
    return future;
}

}  // namespace

Future<Reply> SoupUpdateTransport::text(const Url& url, Limits limits) {
    auto exchange = std::make_unique<Exchange>();
    exchange->limits = limits;
    return start(std::move(exchange), url);
}

Future<Reply> SoupUpdateTransport::file(const Url& url, std::filesystem::path place, Limits limits,
                                        Progress progress) {
    auto exchange = std::make_unique<Exchange>();
    exchange->limits = limits;
    exchange->progress = std::move(progress);
    exchange->goesToFile = true;
    exchange->file.reset(open(place.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                              S_IRUSR | S_IWUSR));
    if (exchange->file) return start(std::move(exchange), url);
    auto future = exchange->promise.future();
    finish(std::move(exchange), systemMessage());
    return future;
}

}  // namespace orvu

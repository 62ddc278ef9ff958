#include "platform/linux/model/LoopbackExchange.h"

#include <utility>

namespace orvu {
namespace {

constexpr gsize pieceSize = 32768;                            // bytes
constexpr std::size_t smallLimit = std::size_t{1024} * 1024;  // bytes

Task<LoopbackAnswer> smallAnswer(std::unique_ptr<LoopbackExchange> exchange) {
    const auto status = co_await exchange->send();
    LoopbackAnswer answer{exchange->failure(), status.value_or(0), {}};
    if (!status) co_return answer;
    answer.body = co_await exchange->rest(smallLimit);
    answer.failure = exchange->failure();
    if (answer.body.size() > smallLimit) answer.failure = LoopbackExchange::Failure::broken;
    co_return answer;
}

}  // namespace

/// What the callbacks of the library share with the exchange, which may be gone before they come.
struct LoopbackExchange::Transfer {
    using Pointer = std::shared_ptr<Transfer>;

    Transfer(LoopbackClient& usedClient, Request whole)
        : client(&usedClient),
          request(std::move(whole)),
          cancellable(GObjectPointer<GCancellable>::adopt(g_cancellable_new())) {}
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;
    ~Transfer() {
        if (message) g_signal_handlers_disconnect_by_data(message.get(), this);
    }

    void fail(Failure reason) {
        if (failure == Failure::none) failure = reason;
        g_cancellable_cancel(cancellable.get());
    }
    void awaitByte() {
        silence = client->loop().after(request.silence, [this] { fail(Failure::silent); });
    }
    /// The end of the exchange itself.
    void drop() {
        client = nullptr;
        silence.cancel();
        total.cancel();
        g_cancellable_cancel(cancellable.get());
    }

    static void networkEvent(SoupMessage*, GSocketClientEvent event, GIOStream* stream,
                             gpointer data);
    static void headCame(GObject* source, GAsyncResult* result, gpointer data);
    static void pieceCame(GObject* source, GAsyncResult* result, gpointer data);

    LoopbackClient* client;  ///< null once the exchange is gone
    const Request request;
    GObjectPointer<GCancellable> cancellable;
    GObjectPointer<SoupMessage> message;
    GObjectPointer<GInputStream> stream;
    Promise<std::optional<int>> head;
    Promise<std::string> piece;
    Failure failure = Failure::none;
    bool isTrusted = false;
    Scheduled silence;
    Scheduled total;
};

LoopbackExchange::LoopbackExchange(LoopbackClient& client, const Request& request)
    : transfer_(std::make_shared<Transfer>(client, request)) {}

LoopbackExchange::~LoopbackExchange() { transfer_->drop(); }

LoopbackExchange::Failure LoopbackExchange::failure() const { return transfer_->failure; }

/// Comes while nothing has been sent. A request that is cancelled here is never written.
void LoopbackExchange::Transfer::networkEvent(SoupMessage*, GSocketClientEvent event,
                                              GIOStream* stream, gpointer data) {
    auto& self = *static_cast<Transfer*>(data);
    if (event != G_SOCKET_CLIENT_CONNECTED || !self.client) return;
    const auto owner = G_IS_SOCKET_CONNECTION(stream)
                           ? self.client->ownerOf(G_SOCKET_CONNECTION(stream))
                           : ServerOwner::unknown;
    self.isTrusted = owner == ServerOwner::trusted;
    if (owner == ServerOwner::anotherPerson) self.fail(Failure::anotherPerson);
    if (owner == ServerOwner::unknown) self.fail(Failure::unknownOwner);
}

Future<std::optional<int>> LoopbackExchange::send() {
    Transfer& transfer = *transfer_;
    const Request& request = transfer.request;
    transfer.message = GObjectPointer<SoupMessage>::adopt(
        soup_message_new(request.body ? SOUP_METHOD_POST : SOUP_METHOD_GET,
                         request.address.url(request.path).c_str()));
    SoupMessage* const message = transfer.message.get();
    soup_message_add_flags(message, static_cast<SoupMessageFlags>(SOUP_MESSAGE_NO_REDIRECT |
                                                                  SOUP_MESSAGE_NEW_CONNECTION));
    auto* const headers = soup_message_get_request_headers(message);
    soup_message_headers_append(headers, "Connection", "close");
    if (request.body) {
        GBytes* const bytes = g_bytes_new(request.body->data(), request.body->size());
        soup_message_set_request_body_from_bytes(message, "application/json", bytes);
        g_bytes_unref(bytes);
    }
    g_signal_connect(message, "network-event", G_CALLBACK(Transfer::networkEvent), &transfer);
    transfer.total =
        transfer.client->loop().after(request.total, [&transfer] { transfer.fail(Failure::slow); });
    transfer.awaitByte();
    soup_session_send_async(transfer.client->session(), message, G_PRIORITY_DEFAULT,
                            transfer.cancellable.get(), Transfer::headCame,
                            new Transfer::Pointer{transfer_});
    return transfer.head.future();
}

void LoopbackExchange::Transfer::headCame(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Pointer> self{static_cast<Pointer*>(data)};
    Transfer& transfer = **self;
    transfer.silence.cancel();
    transfer.stream = GObjectPointer<GInputStream>::adopt(
        soup_session_send_finish(SOUP_SESSION(source), result, nullptr));
    if (!transfer.client) return;
    if (!transfer.stream || !transfer.isTrusted) {
        transfer.fail(transfer.isTrusted ? Failure::broken : Failure::unreachable);
        return transfer.head.resolve(std::nullopt);
    }
    transfer.head.resolve(static_cast<int>(soup_message_get_status(transfer.message.get())));
}

Future<std::string> LoopbackExchange::next() {
    Transfer& transfer = *transfer_;
    transfer.piece = {};
    if (!transfer.stream || transfer.failure != Failure::none) {
        transfer.piece.resolve("");
        return transfer.piece.future();
    }
    transfer.awaitByte();
    g_input_stream_read_bytes_async(transfer.stream.get(), pieceSize, G_PRIORITY_DEFAULT,
                                    transfer.cancellable.get(), Transfer::pieceCame,
                                    new Transfer::Pointer{transfer_});
    return transfer.piece.future();
}

void LoopbackExchange::Transfer::pieceCame(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Pointer> self{static_cast<Pointer*>(data)};
    Transfer& transfer = **self;
    transfer.silence.cancel();
    GBytes* const bytes = g_input_stream_read_bytes_finish(G_INPUT_STREAM(source), result, nullptr);
    std::string piece;
    if (bytes) {
        gsize size = 0;
        const auto* const content = static_cast<const char*>(g_bytes_get_data(bytes, &size));
        if (size > 0) piece.assign(content, size);
        g_bytes_unref(bytes);
    }
    if (!transfer.client) return;
    if (!bytes) transfer.fail(Failure::broken);
    const auto promise = transfer.piece;  // the next wait has another one
    promise.resolve(std::move(piece));
}

Task<std::string> LoopbackExchange::rest(std::size_t limit) {
    std::string body;
    while (body.size() <= limit) {
        const std::string piece = co_await next();
        if (piece.empty()) break;
        body += piece;
    }
    co_return body;
}

Task<LoopbackAnswer> getSmall(LoopbackClient& client, LoopbackAddress address, std::string path,
                              std::chrono::milliseconds total) {
    const LoopbackExchange::Request request{
        .address = address, .path = std::move(path), .silence = total, .total = total};
    return smallAnswer(std::make_unique<LoopbackExchange>(client, request));
}

}  // namespace orvu

#include "engine/PlayedServer.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace orvu {

/// One connection, which is read from and written to as far as that goes without waiting.
struct PlayedServer::Connection {
    Connection(PlayedServer& its, GSocketConnection* connection)
        : server(its), stream(G_SOCKET_CONNECTION(g_object_ref(connection))) {
        GSocket* const socket = g_socket_connection_get_socket(stream);
        g_socket_set_blocking(socket, FALSE);
        incoming = g_socket_create_source(socket, G_IO_IN, nullptr);
        g_source_set_callback(incoming, G_SOURCE_FUNC(readable), this, nullptr);
        g_source_attach(incoming, nullptr);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        g_source_destroy(incoming);
        g_source_unref(incoming);
        if (timer != 0) g_source_remove(timer);
        g_io_stream_close(G_IO_STREAM(stream), nullptr, nullptr);
        g_object_unref(stream);
    }

    static gboolean readable(GSocket* socket, GIOCondition, gpointer data) {
        auto& self = *static_cast<Connection*>(data);
        std::array<char, 65536> buffer{};
        const auto count = g_socket_receive(socket, buffer.data(), buffer.size(), nullptr, nullptr);
        if (count <= 0) {
            self.server.remove(self);  // the other side hung up
            return G_SOURCE_CONTINUE;
        }
        self.request.append(buffer.data(), static_cast<std::size_t>(count));
        self.server.bytes_ += static_cast<std::size_t>(count);
        if (!self.isAnswered && self.isWhole()) self.server.answer(self);
        return G_SOURCE_CONTINUE;
    }
    [[nodiscard]] bool isWhole() const {
        const auto end = request.find("\r\n\r\n");
        if (end == std::string::npos) return false;
        const auto length = request.find("Content-Length: ");
        const auto size = length < end ? std::stoul(request.substr(length + 16)) : 0;
        return request.size() >= end + 4 + size;
    }
    static gboolean writeOn(gpointer data) {
        auto& self = *static_cast<Connection*>(data);
        GSocket* const socket = g_socket_connection_get_socket(self.stream);
        if (self.unsent.empty()) self.unsent = self.plan.again;
        const auto count =
            g_socket_send(socket, self.unsent.data(), self.unsent.size(), nullptr, nullptr);
        if (count > 0) self.unsent.erase(0, static_cast<std::size_t>(count));
        if (!self.unsent.empty() || self.plan.then == Answer::Then::repeat) return self.again();
        self.timer = 0;
        if (self.plan.then == Answer::Then::close) self.server.remove(self);
        return G_SOURCE_REMOVE;
    }
    /// Goes on a moment later, when others had their turn.
    gboolean again() {
        timer = g_timeout_add(1, writeOn, this);
        return G_SOURCE_REMOVE;
    }

    PlayedServer& server;
    GSocketConnection* stream;
    GSource* incoming;
    guint timer = 0;
    std::string request;
    bool isAnswered = false;
    Answer plan;
    std::string unsent;
};

PlayedServer::PlayedServer(Family family) : family_(family) { start(); }

PlayedServer::~PlayedServer() { kill(); }

void PlayedServer::start() {
    service_ = g_socket_service_new();
    GInetAddress* const host = g_inet_address_new_loopback(
        family_ == Family::ipv4 ? G_SOCKET_FAMILY_IPV4 : G_SOCKET_FAMILY_IPV6);
    GSocketAddress* const wanted = g_inet_socket_address_new(host, port_);
    GSocketAddress* bound = nullptr;
    const bool isListening =
        g_socket_listener_add_address(G_SOCKET_LISTENER(service_), wanted, G_SOCKET_TYPE_STREAM,
                                      G_SOCKET_PROTOCOL_TCP, nullptr, &bound, nullptr);
    g_object_unref(wanted);
    g_object_unref(host);
    if (!isListening) throw std::runtime_error("no port for the played server");
    port_ = g_inet_socket_address_get_port(G_INET_SOCKET_ADDRESS(bound));
    g_object_unref(bound);
    g_signal_connect(service_, "incoming", G_CALLBACK(incoming), this);
}

void PlayedServer::kill() {
    if (!service_) return;
    g_socket_service_stop(service_);
    g_socket_listener_close(G_SOCKET_LISTENER(service_));
    g_clear_object(&service_);
    open_.clear();
}

PlayedServer::Answer PlayedServer::json(const std::string& body, int status) {
    return {"HTTP/1.1 " + std::to_string(status) +
            " X\r\nContent-Type: application/json\r\nContent-Length: " +
            std::to_string(body.size()) + "\r\n\r\n" + body};
}

PlayedServer::Answer PlayedServer::stream(const std::string& body, Answer::Then then) {
    return {"HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\n\r\n" + body, then};
}

int PlayedServer::requests(const std::string& path) const {
    return static_cast<int>(std::ranges::count(paths_, path));
}

gboolean PlayedServer::incoming(GSocketService*, GSocketConnection* connection, GObject*,
                                gpointer data) {
    auto& self = *static_cast<PlayedServer*>(data);
    ++self.connections_;
    self.open_.emplace_back(self, connection);
    return TRUE;
}

void PlayedServer::answer(Connection& connection) {
    connection.isAnswered = true;
    const auto begin = connection.request.find(' ') + 1;
    const std::string path =
        connection.request.substr(begin, connection.request.find(' ', begin) - begin);
    const auto end = connection.request.find("\r\n\r\n");
    paths_.push_back(path);
    heads_[path] = connection.request.substr(0, end + 2);
    bodies_[path] = connection.request.substr(end + 4);
    const auto found = answers_.find(path);
    connection.plan = found != answers_.end() ? found->second : json("{}", 404);
    connection.unsent = connection.plan.bytes;
    if (connection.unsent.empty() && connection.plan.then == Answer::Then::hold) return;
    connection.timer =
        g_timeout_add(static_cast<guint>(connection.plan.delay), Connection::writeOn, &connection);
}

void PlayedServer::remove(Connection& connection) {
    open_.remove_if([&](const Connection& each) { return &each == &connection; });
}

}  // namespace orvu

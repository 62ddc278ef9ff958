#include "engine/LoopbackServer.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace orvu {

/// A body that goes on until its reader or the server is gone.
struct LoopbackServer::Drip {
    Drip(SoupServerMessage* to, unsigned pause) : message(SOUP_SERVER_MESSAGE(g_object_ref(to))) {
        finished = g_signal_connect(message, "finished", G_CALLBACK(end), this);
        source = g_timeout_add(pause, fall, this);
    }
    Drip(const Drip&) = delete;
    Drip& operator=(const Drip&) = delete;
    ~Drip() {
        g_signal_handler_disconnect(message, finished);
        if (source != 0) g_source_remove(source);
        g_object_unref(message);
    }

    static gboolean fall(gpointer data) {
        auto* const message = static_cast<Drip*>(data)->message;
        soup_message_body_append(soup_server_message_get_response_body(message), SOUP_MEMORY_STATIC,
                                 " ", 1);
        soup_server_message_unpause(message);
        return G_SOURCE_CONTINUE;
    }
    void stop() {
        if (const guint running = std::exchange(source, 0)) g_source_remove(running);
    }
    static void end(SoupServerMessage*, gpointer data) { static_cast<Drip*>(data)->stop(); }

    SoupServerMessage* message;
    gulong finished = 0;
    guint source = 0;
};

LoopbackServer::LoopbackServer() : server_(soup_server_new(nullptr, nullptr)) {
    soup_server_add_handler(server_, nullptr, handle, this, nullptr);
    if (!soup_server_listen_local(server_, 0, SOUP_SERVER_LISTEN_IPV4_ONLY, nullptr)) {
        throw std::runtime_error("no port for the test server");
    }
    GSList* const uris = soup_server_get_uris(server_);
    port_ = g_uri_get_port(static_cast<GUri*>(uris->data));
    g_slist_free_full(uris, [](gpointer uri) { g_uri_unref(static_cast<GUri*>(uri)); });
}

LoopbackServer::~LoopbackServer() {
    soup_server_disconnect(server_);
    g_object_unref(server_);
}

std::string LoopbackServer::url(const std::string& path, const std::string& host) const {
    return "http://" + host + ":" + std::to_string(port_) + path;
}

Url LoopbackServer::deadUrl(const std::string& path) {
    // Below the ports that the system gives to servers without one of their own.
    return *Url::parse("http://127.0.0.1:29999" + path);
}

int LoopbackServer::requests(const std::string& path) const {
    const auto found = requests_.find(path);
    return found != requests_.end() ? found->second : 0;
}

std::string LoopbackServer::query(const std::string& path) const {
    const auto found = queries_.find(path);
    return found != queries_.end() ? found->second : "";
}

std::string LoopbackServer::header(const std::string& path, const std::string& name) const {
    const auto asked = headers_.find(path);
    if (asked == headers_.end()) return "";
    const auto found = asked->second.find(name);
    return found != asked->second.end() ? found->second : "";
}

int LoopbackServer::dripping() const {
    return static_cast<int>(
        std::ranges::count_if(drips_, [](const Drip& each) { return each.source != 0; }));
}

void LoopbackServer::completeDrips() {
    for (Drip& drip : drips_) {
        if (drip.source == 0) continue;
        drip.stop();
        soup_message_body_complete(soup_server_message_get_response_body(drip.message));
        soup_server_message_unpause(drip.message);
    }
}

void LoopbackServer::breakDrips() {
    for (Drip& drip : drips_) {
        if (drip.source == 0) continue;
        drip.stop();
        g_socket_shutdown(soup_server_message_get_socket(drip.message), TRUE, TRUE, nullptr);
    }
}

/// Writes the answer past the server, which would not tell a lie, and hangs up.
void LoopbackServer::breakOff(SoupServerMessage* message, const Answer& answer) {
    std::string head = "HTTP/1.1 200 OK\r\nContent-Type: " + answer.type +
                       "\r\nContent-Length: " + std::to_string(answer.declaredLength);
    for (const auto& [name, value] : answer.headers) head += "\r\n" + name + ": " + value;
    const std::string text = head + "\r\n\r\n" + answer.body;
    GIOStream* const connection = soup_server_message_steal_connection(message);
    g_output_stream_write_all(g_io_stream_get_output_stream(connection), text.data(), text.size(),
                              nullptr, nullptr, nullptr);
    g_io_stream_close(connection, nullptr, nullptr);
    g_object_unref(connection);
}

void LoopbackServer::beginDripping(SoupServerMessage* message, const Answer& answer) {
    auto* const headers = soup_server_message_get_response_headers(message);
    soup_message_headers_set_encoding(headers, SOUP_ENCODING_CHUNKED);
    soup_message_headers_set_content_type(headers, answer.type.c_str(), nullptr);
    soup_message_body_append(soup_server_message_get_response_body(message), SOUP_MEMORY_COPY,
                             answer.body.data(), answer.body.size());
    drips_.emplace_back(message, answer.dripPause);
}

void LoopbackServer::handle(SoupServer*, SoupServerMessage* message, const char* path, GHashTable*,
                            gpointer data) {
    auto& self = *static_cast<LoopbackServer*>(data);
    ++self.requests_[path];
    const char* const query = g_uri_get_query(soup_server_message_get_uri(message));
    self.queries_[path] = query ? query : "";
    soup_message_headers_foreach(
        soup_server_message_get_request_headers(message),
        [](const char* name, const char* value, gpointer headers) {
            (*static_cast<std::map<std::string, std::string>*>(headers))[name] = value;
        },
        &self.headers_[path]);
    const auto found = self.answers_.find(path);
    if (found == self.answers_.end()) {
        soup_server_message_set_status(message, 404, nullptr);
        return;
    }
    const Answer& answer = found->second;
    if (answer.held) {
        soup_server_message_pause(message);
        return;
    }
    if (answer.declaredLength > 0) return breakOff(message, answer);
    soup_server_message_set_status(message, static_cast<guint>(answer.status), nullptr);
    for (const auto& [name, value] : answer.headers) {
        soup_message_headers_append(soup_server_message_get_response_headers(message), name.c_str(),
                                    value.c_str());
    }
    if (answer.drips) return self.beginDripping(message, answer);
    soup_server_message_set_response(message, answer.type.c_str(), SOUP_MEMORY_COPY,
                                     answer.body.data(), answer.body.size());
}

}  // namespace orvu

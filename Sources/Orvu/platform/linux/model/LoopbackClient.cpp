#include "platform/linux/model/LoopbackClient.h"

#include "platform/linux/files/FileText.h"

#include <gio/gio.h>
#include <unistd.h>

#include <algorithm>
#include <optional>

namespace orvu {
namespace {

/// Some 28,000 sockets. What stands behind them counts as not there.
constexpr std::size_t tableLimit = std::size_t{4} * 1024 * 1024;

std::string tableText(const char* path) { return fileText(path, tableLimit).value_or(""); }

std::optional<SocketAddress> socketAddress(GSocketAddress* address) {
    const auto holder = GObjectPointer<GSocketAddress>::adopt(address);
    if (!address || !G_IS_INET_SOCKET_ADDRESS(address)) return std::nullopt;
    auto* const internet = G_INET_SOCKET_ADDRESS(address);
    GInetAddress* const host = g_inet_socket_address_get_address(internet);
    SocketAddress result;
    result.port = g_inet_socket_address_get_port(internet);
    const std::size_t size = g_inet_address_get_native_size(host);
    if (size > result.bytes.size()) return std::nullopt;
    const std::size_t head = result.bytes.size() - size;
    std::copy_n(g_inet_address_to_bytes(host), size, result.bytes.begin() + head);
    if (size == 4) result.bytes[10] = result.bytes[11] = 0xFF;
    return result;
}

}  // namespace

std::string LoopbackAddress::url(const std::string& path) const {
    const char* const host = family == Family::ipv4 ? "127.0.0.1" : "[::1]";
    return std::string{"http://"} + host + ":" + std::to_string(port) + path;
}

ServerOwner ownerOfConnection(GSocketConnection* connection) {
    const auto client = socketAddress(g_socket_connection_get_local_address(connection, nullptr));
    const auto server = socketAddress(g_socket_connection_get_remote_address(connection, nullptr));
    if (!client || !server) return ServerOwner::unknown;
    const SocketTables tables{tableText("/proc/net/tcp"), tableText("/proc/net/tcp6")};
    return serverOwner(tables, *client, *server, getuid());
}

LoopbackClient::~LoopbackClient() {
    if (session_) soup_session_abort(session_.get());
}

SoupSession* LoopbackClient::session() {
    if (session_) return session_.get();
    const auto direct =
        GObjectPointer<GProxyResolver>::adopt(g_simple_proxy_resolver_new(nullptr, nullptr));
    session_ = GObjectPointer<SoupSession>::adopt(
        soup_session_new_with_options("max-conns", 64, "max-conns-per-host", 64, "timeout", 0U,
                                      "proxy-resolver", direct.get(), nullptr));
    // Cookies and caches are features that a session has only if they are added; these two are there
    // unless they are taken away. What comes compressed though nobody asked for it stays so.
    soup_session_remove_feature_by_type(session_.get(), SOUP_TYPE_AUTH_MANAGER);
    soup_session_remove_feature_by_type(session_.get(), SOUP_TYPE_CONTENT_DECODER);
    return session_.get();
}

}  // namespace orvu

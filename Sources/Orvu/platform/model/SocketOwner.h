#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace orvu {

/// One end of a TCP connection.
struct SocketAddress {
    std::array<std::uint8_t, 16> bytes{};  ///< as IPv6; an IPv4 address is mapped: ::ffff:127.0.0.1
    std::uint16_t port = 0;

    friend bool operator==(const SocketAddress&, const SocketAddress&) = default;
};

/// Whose server is at the other end of a connection.
enum class ServerOwner {
    trusted,        ///< this person's, or an account of the system
    anotherPerson,  ///< somebody else's who uses this computer
    unknown,
};

/// The kernel's tables of TCP sockets: the texts of /proc/net/tcp and /proc/net/tcp6.
struct SocketTables {
    std::string tcp;
    std::string tcp6;
};

/// User ids below this one belong to accounts of the system.
inline constexpr std::uint32_t firstPersonalUserId = 1000;

/// Finds the server's end of the connection from `client` to `server`, and tells whether it belongs
/// to the user id `person` or to the system. While the server has not accepted the connection yet,
/// whoever listens there counts.
[[nodiscard]] ServerOwner serverOwner(const SocketTables& tables, const SocketAddress& client,
                                      const SocketAddress& server, std::uint32_t person);

}  // namespace orvu

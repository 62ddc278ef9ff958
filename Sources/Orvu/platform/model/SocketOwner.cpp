#include "platform/model/SocketOwner.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <optional>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

using Bytes = std::array<std::uint8_t, 16>;
constexpr Bytes anyIpv6{};
constexpr Bytes anyIpv4{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};

/// A line of a table.
struct Socket {
    SocketAddress local;
    SocketAddress remote;
    bool listens = false;
    std::uint32_t user = 0;
    std::uint64_t inode = 0;  ///< 0 while no process holds the socket; its user is then 0 as well
};

template <class Number>
std::optional<Number> number(std::string_view digits, int base) {
    Number value = 0;
    const auto* const begin = digits.data();
    const auto* const end = begin + digits.size();
    const auto [stop, error] = std::from_chars(begin, end, value, base);
    return error == std::errc{} && stop == end ? std::optional{value} : std::nullopt;
}

/// "0100007F:2CAA": words of 32 bits in the computer's own order of bytes, and the port.
std::optional<SocketAddress> address(std::string_view text) {
    const auto colon = text.find(':');
    if (colon != 8 && colon != 32) return std::nullopt;
    const auto port = number<std::uint16_t>(text.substr(colon + 1), 16);
    if (!port) return std::nullopt;
    SocketAddress result{anyIpv4, *port};
    std::size_t at = colon == 8 ? 12 : 0;
    for (std::size_t digit = 0; digit < colon; digit += 8, at += 4) {
        const auto word = number<std::uint32_t>(text.substr(digit, 8), 16);
        if (!word) return std::nullopt;
        const auto bytes = std::bit_cast<std::array<std::uint8_t, 4>>(*word);
        std::ranges::copy(bytes, result.bytes.begin() + static_cast<std::ptrdiff_t>(at));
    }
    return result;
}

std::vector<std::string_view> words(std::string_view line) {
    std::vector<std::string_view> result;
    while (true) {
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        if (line.empty()) return result;
        const auto end = std::min(line.find(' '), line.size());
        result.push_back(line.substr(0, end));
        line.remove_prefix(end);
    }
}

/// The columns: number, local, remote, state, queues, timer, retransmissions, user, timeout, inode.
std::optional<Socket> socket(std::string_view line) {
    const auto columns = words(line);
    if (columns.size() < 10) return std::nullopt;
    const auto local = address(columns[1]);
    const auto remote = address(columns[2]);
    const auto user = number<std::uint32_t>(columns[7], 10);
    const auto inode = number<std::uint64_t>(columns[9], 10);
    if (!local || !remote || !user || !inode) return std::nullopt;
    return Socket{*local, *remote, columns[3] == "0A", *user, *inode};
}

/// The sockets that belong to a server's port.
void appendSockets(std::vector<Socket>& sockets, std::string_view table, std::uint16_t port) {
    while (!table.empty()) {
        const auto end = table.find('\n');
        if (end == std::string_view::npos) return;  // half a line
        const auto found = socket(table.substr(0, end));
        if (found && found->local.port == port) sockets.push_back(*found);
        table.remove_prefix(end + 1);
    }
}

bool isAnyAddressOf(const SocketAddress& listener, const SocketAddress& server) {
    const bool isIpv4 = std::equal(anyIpv4.begin(), anyIpv4.begin() + 12, server.bytes.begin());
    return listener.bytes == anyIpv6 || (isIpv4 && listener.bytes == anyIpv4);
}

/// Whose the listeners are; all of them must be trusted, since any of them may accept.
template <class Belongs>
ServerOwner ownerOfListeners(const std::vector<Socket>& sockets, std::uint32_t person,
                             Belongs belongs) {
    auto owner = ServerOwner::unknown;
    for (const Socket& each : sockets) {
        if (!each.listens || !belongs(each.local)) continue;
        const bool isTrusted = each.user == person || each.user < firstPersonalUserId;
        if (!isTrusted) return ServerOwner::anotherPerson;
        owner = ServerOwner::trusted;
    }
    return owner;
}

}  // namespace

ServerOwner serverOwner(const SocketTables& tables, const SocketAddress& client,
                        const SocketAddress& server, std::uint32_t person) {
    std::vector<Socket> sockets;
    appendSockets(sockets, tables.tcp, server.port);
    appendSockets(sockets, tables.tcp6, server.port);
    const auto accepted = std::ranges::find_if(sockets, [&](const Socket& each) {
        return !each.listens && each.inode != 0 && each.local == server && each.remote == client;
    });
    if (accepted != sockets.end()) {
        const bool isTrusted = accepted->user == person || accepted->user < firstPersonalUserId;
        return isTrusted ? ServerOwner::trusted : ServerOwner::anotherPerson;
    }
    // The kernel prefers who listens at the very address to who listens at all of them.
    const auto owner =
        ownerOfListeners(sockets, person, [&](const auto& local) { return local == server; });
    if (owner != ServerOwner::unknown) return owner;
    return ownerOfListeners(sockets, person,
                            [&](const auto& local) { return isAnyAddressOf(local, server); });
}

}  // namespace orvu

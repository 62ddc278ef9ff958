#pragma once

#include "platform/MainLoop.h"
#include "platform/linux/GObjectPointer.h"
#include "platform/model/SocketOwner.h"

#include <libsoup/soup.h>

#include <functional>
#include <string>

namespace orvu {

/// Where a server of this computer is asked: always at a loopback address in digits.
struct LoopbackAddress {
    enum class Family { ipv4, ipv6 };
    Family family = Family::ipv4;
    std::uint16_t port = 0;

    [[nodiscard]] std::string url(const std::string& path) const;
    friend bool operator==(const LoopbackAddress&, const LoopbackAddress&) = default;
};

/// Tells whose server is at the other end of a connection.
using OwnerLookup = std::function<ServerOwner(GSocketConnection* connection)>;

/// After the kernel's tables; unknown if they can't be read.
[[nodiscard]] ServerOwner ownerOfConnection(GSocketConnection* connection);

/// What all requests to servers of this computer have in common: no proxy, no password, no cookie,
/// no cache, no compression, and never two requests over one connection.
class LoopbackClient {
public:
    /// `loop` must outlive this. The session is made at the first request.
    LoopbackClient(MainLoop& loop, OwnerLookup owner) : loop_(loop), owner_(std::move(owner)) {}
    LoopbackClient(const LoopbackClient&) = delete;
    LoopbackClient& operator=(const LoopbackClient&) = delete;
    ~LoopbackClient();

    [[nodiscard]] MainLoop& loop() const { return loop_; }
    [[nodiscard]] SoupSession* session();
    [[nodiscard]] ServerOwner ownerOf(GSocketConnection* connection) const {
        return owner_(connection);
    }

private:
    MainLoop& loop_;
    const OwnerLookup owner_;
    GObjectPointer<SoupSession> session_;
};

}  // namespace orvu

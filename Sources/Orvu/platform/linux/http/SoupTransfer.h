#pragma once

#include "platform/HttpSession.h"
#include "platform/linux/GObjectPointer.h"

#include <libsoup/soup.h>

#include <chrono>
#include <cstddef>
#include <optional>

namespace orvu {

/// How much a transfer takes.
struct SoupTransferLimits {
    std::chrono::milliseconds total{0};  ///< for the whole of it; 0 is no limit
    std::size_t body = 0;                ///< bytes
    bool cutsBody = false;               ///< a longer body ends there; otherwise it is a failure
};

/// A request for what stands at a web address; nothing for another address, or one without a host.
[[nodiscard]] GObjectPointer<SoupMessage> webRequest(const Url& url);

/// Makes one request; dropping the future ends it. Nothing without an answer, or when a limit is
/// reached. The session must not end before the future is resolved or dropped.
[[nodiscard]] Future<std::optional<HttpResponse>> transfer(SoupSession& session,
                                                           GObjectPointer<SoupMessage> message,
                                                           const SoupTransferLimits& limits);

}  // namespace orvu

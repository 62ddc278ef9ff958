#pragma once

#include "foundation/async/Future.h"
#include "foundation/async/Task.h"
#include "platform/linux/model/LoopbackClient.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace orvu {

/// One request to a server of this computer, and its answer while it comes. The server's owner is
/// looked up once the connection stands, before any byte is sent. Dropping it closes the connection.
class LoopbackExchange {
public:
    struct Request {
        LoopbackAddress address;
        std::string path;
        std::optional<std::string> body = {};  ///< JSON to post; nothing for a GET
        std::chrono::milliseconds silence;     ///< how long the server may send nothing
        std::chrono::milliseconds total;       ///< how long the whole may take
    };
    /// Why it can't go on.
    enum class Failure { none, unreachable, anotherPerson, unknownOwner, silent, slow, broken };

    /// `client` must outlive this.
    LoopbackExchange(LoopbackClient& client, const Request& request);
    LoopbackExchange(const LoopbackExchange&) = delete;
    LoopbackExchange& operator=(const LoopbackExchange&) = delete;
    ~LoopbackExchange();

    /// Sends the request, once, and waits until the head of an answer is there: its HTTP status, or
    /// nothing after a failure.
    [[nodiscard]] Future<std::optional<int>> send();
    /// The next bytes of the answer; none at its end, and after a failure.
    [[nodiscard]] Future<std::string> next();
    /// All bytes that are still to come, or as many as it took to be more than `limit`.
    [[nodiscard]] Task<std::string> rest(std::size_t limit);
    [[nodiscard]] Failure failure() const;

private:
    struct Transfer;
    const std::shared_ptr<Transfer> transfer_;
};

/// An answer that is read whole.
struct LoopbackAnswer {
    LoopbackExchange::Failure failure = LoopbackExchange::Failure::none;
    int status = 0;
    std::string body;

    [[nodiscard]] bool isSuccess() const {
        return failure == LoopbackExchange::Failure::none && status == 200;
    }
};

/// Asks for something small, within the time given.
[[nodiscard]] Task<LoopbackAnswer> getSmall(LoopbackClient& client, LoopbackAddress address,
                                            std::string path, std::chrono::milliseconds total);

}  // namespace orvu

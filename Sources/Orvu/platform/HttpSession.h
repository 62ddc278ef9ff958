#pragma once

#include "foundation/async/Future.h"
#include "foundation/Url.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// What all requests of one session have in common.
struct HttpOptions {
    std::chrono::seconds timeout{60};      ///< how long a server may be silent
    std::chrono::seconds totalTimeout{0};  ///< for a whole request from its asking; 0 is no limit
    std::size_t bodyLimit = 0;             ///< a body of this many bytes or more is a failure
    int connections = 10;                  ///< at a time, in all
    int connectionsPerHost = 6;
};

/// The end of a request, whatever its status.
struct HttpResponse {
    int status = 0;
    std::string body;        ///< as the server meant it: any compression is undone
    std::string url;         ///< where redirects led
    std::string mimeType{};  ///< in lower case; empty if the server doesn't tell it

    friend bool operator==(const HttpResponse&, const HttpResponse&) = default;
};

/// Web requests that the program makes by itself, beside the engine. They carry and keep no
/// cookies, no passwords and no cache. Redirects are followed.
class HttpSession {
public:
    using Headers = std::vector<std::pair<std::string, std::string>>;

    virtual ~HttpSession() = default;

    /// Nothing if the address is no web address, if there is no answer, or if a limit is reached.
    /// Dropping the future ends the request.
    [[nodiscard]] virtual Future<std::optional<HttpResponse>> get(const Url& url,
                                                                  const Headers& headers) = 0;
};

}  // namespace orvu

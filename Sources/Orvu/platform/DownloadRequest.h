#pragma once

#include <string>

namespace orvu {

/// Who began a download.
enum class DownloadCause {
    person,   ///< a click on its link, a menu, or a load of the program's own
    gesture,  ///< a script, in answer to something that the person just did
    page,     ///< the page, unasked
};

/// A page waits to have something downloaded. Whoever holds the request begins it; the end of one
/// that was not begun drops it.
class DownloadRequest {
public:
    virtual ~DownloadRequest() = default;

    [[nodiscard]] virtual DownloadCause cause() const = 0;
    /// That of the page which asks; empty if it has none.
    [[nodiscard]] virtual const std::string& host() const = 0;
    /// Whether it keeps one of the few connections to a server busy while it waits.
    [[nodiscard]] virtual bool holdsConnection() const = 0;
    /// Ends that: `begin` asks the server anew. False if that would not be the same request.
    [[nodiscard]] virtual bool setAside() = 0;
    /// Only the first call counts.
    virtual void begin() = 0;
};

}  // namespace orvu

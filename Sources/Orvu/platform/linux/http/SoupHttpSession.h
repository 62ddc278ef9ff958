#pragma once

#include "platform/HttpSession.h"
#include "platform/linux/GObjectPointer.h"

#include <libsoup/soup.h>

namespace orvu {

/// Web requests over libsoup, on the main loop. The session is made at the first request.
class SoupHttpSession : public HttpSession {
public:
    explicit SoupHttpSession(const HttpOptions& options) : options_(options) {}
    SoupHttpSession(const SoupHttpSession&) = delete;
    SoupHttpSession& operator=(const SoupHttpSession&) = delete;
    ~SoupHttpSession() override;

    [[nodiscard]] Future<std::optional<HttpResponse>> get(const Url& url,
                                                          const Headers& headers) override;

private:
    [[nodiscard]] SoupSession* session();

    const HttpOptions options_;
    GObjectPointer<SoupSession> session_;
};

}  // namespace orvu

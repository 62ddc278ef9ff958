#include "platform/linux/http/SoupHttpSession.h"

#include "platform/linux/http/SoupTransfer.h"

#include <utility>

namespace orvu {

namespace {

Future<std::optional<HttpResponse>> noResponse() {
    const Promise<std::optional<HttpResponse>> promise;
    promise.resolve(std::nullopt);
    return promise.future();
}

}  // namespace

SoupHttpSession::~SoupHttpSession() {
    if (session_) soup_session_abort(session_.get());
}

SoupSession* SoupHttpSession::session() {
    if (session_) return session_.get();
    session_ = GObjectPointer<SoupSession>::adopt(soup_session_new_with_options(
        "max-conns", options_.connections, "max-conns-per-host", options_.connectionsPerHost,
        "timeout", static_cast<guint>(options_.timeout.count()), nullptr));
    // Cookies and caches are features that a session has only if they are added; passwords are one
    // that it has unless it is taken away.
    soup_session_remove_feature_by_type(session_.get(), SOUP_TYPE_AUTH_MANAGER);
    return session_.get();
}

Future<std::optional<HttpResponse>> SoupHttpSession::get(const Url& url, const Headers& headers) {
    auto message = webRequest(url);
    if (!message) return noResponse();
    for (const auto& [name, value] : headers) {
        soup_message_headers_append(soup_message_get_request_headers(message.get()), name.c_str(),
                                    value.c_str());
    }
    return transfer(*session(), std::move(message),
                    {.total = options_.totalTimeout, .body = options_.bodyLimit});
}

}  // namespace orvu

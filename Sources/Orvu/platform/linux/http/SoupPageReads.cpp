#include "platform/linux/http/SoupPageReads.h"

#include "platform/PublicAddress.h"
#include "platform/Within.h"
#include "platform/linux/http/GuardedAddress.h"
#include "platform/linux/http/HostLookup.h"
#include "platform/linux/http/SoupTransfer.h"

#include <string>
#include <utility>

namespace orvu {
namespace {

/// How hosts of a request are to be reached.
enum class Reach {
    anywhere,
    world,  ///< addresses of the world alone
    proxy,  ///< through one, which looks hosts up itself
};

std::string hostOf(const Url& url) { return url.host().value_or(""); }

bool isAddressOrLocal(const char* host) {
    return g_hostname_is_ip_address(host) || namesThisComputer(host);
}

/// The request, or nothing if it is for no web address or must not be made.
GObjectPointer<SoupMessage> messageFor(const Url& url, const std::string& userAgent, Reach reach) {
    auto message = webRequest(url);
    if (!message) return message;
    const char* const host = g_uri_get_host(soup_message_get_uri(message.get()));
    if (reach == Reach::proxy && isAddressOrLocal(host)) return {};
    soup_message_add_flags(message.get(), SOUP_MESSAGE_NO_REDIRECT);
    soup_message_headers_replace(soup_message_get_request_headers(message.get()), "User-Agent",
                                 userAgent.c_str());
    return message;
}

/// A session for one message: its proxy, or none, and where it may connect to, are its own.
GObjectPointer<SoupSession> sessionFor(SoupMessage* message, Reach reach) {
    GUri* const uri = soup_message_get_uri(message);
    const auto guarded =
        reach == Reach::world
            ? guardedAddress(g_uri_get_host(uri), static_cast<guint16>(g_uri_get_port(uri)))
            : GObjectPointer<GSocketConnectable>{};
    auto session = GObjectPointer<SoupSession>::adopt(
        soup_session_new_with_options("timeout", static_cast<guint>(PageReads::timeout.count()),
                                      "remote-connectable", guarded.get(), nullptr));
    if (reach != Reach::proxy) soup_session_set_proxy_resolver(session.get(), nullptr);
    // Cookies and caches are features that a session has only if they are added; passwords are one
    // that it has unless it is taken away.
    soup_session_remove_feature_by_type(session.get(), SOUP_TYPE_AUTH_MANAGER);
    return session;
}

/// Where an answer leads elsewhere; nothing for one that doesn't.
std::optional<std::string> redirectOf(SoupMessage* message) {
    if (!SOUP_STATUS_IS_REDIRECTION(soup_message_get_status(message))) return std::nullopt;
    const char* const location =
        soup_message_headers_get_one(soup_message_get_response_headers(message), "Location");
    if (!location) return std::nullopt;
    GUri* const target = g_uri_parse_relative(soup_message_get_uri(message), location,
                                              static_cast<GUriFlags>(SOUP_HTTP_URI_FLAGS), nullptr);
    if (!target) return std::string{};
    char* const text = g_uri_to_string(target);
    std::string result{text};
    g_free(text);
    g_uri_unref(target);
    return result;
}

}  // namespace

Future<std::optional<PageDocument>> SoupPageReads::read(PageRequest request) {
    return reads_.start(within(&loop_, total_, follow(std::move(request)), Document{}));
}

Task<SoupPageReads::Document> SoupPageReads::follow(PageRequest request) {
    for (int hop = 0; hop <= maxRedirects; ++hop) {
        Reach reach = Reach::proxy;
        const bool hasProxy = co_await isBehindProxy(request.url.absoluteString());
        if (!hasProxy) {
            const bool isLocal = co_await hasLocalAddress(hostOf(request.listing));
            reach = isLocal ? Reach::anywhere : Reach::world;
        }
        const auto message = messageFor(request.url, request.userAgent, reach);
        if (!message) co_return std::nullopt;
        const auto session = sessionFor(message.get(), reach);
        auto response =
            co_await transfer(*session.get(), GObjectPointer<SoupMessage>::retain(message.get()),
                              {.total = {}, .body = maxBytes, .cutsBody = true});
        if (!response) co_return std::nullopt;
        const auto target = redirectOf(message.get());
        if (!target) co_return PageDocument{response->mimeType, std::move(response->body)};
        auto next = Url::parse(*target);
        if (!next) co_return std::nullopt;
        request.url = std::move(*next);
    }
    co_return std::nullopt;
}

}  // namespace orvu

#include "platform/linux/web/LoadErrors.h"

#include <libsoup/soup.h>
#include <webkit/webkit.h>

#include <algorithm>
#include <array>

namespace orvu {
namespace {

std::optional<LoadFailureCause> connectionFailure(int code) {
    switch (code) {
        case G_IO_ERROR_CONNECTION_REFUSED:
            return LoadFailureCause::refused;
        case G_IO_ERROR_TIMED_OUT:
            return LoadFailureCause::timedOut;
        case G_IO_ERROR_NETWORK_UNREACHABLE:
        case G_IO_ERROR_HOST_UNREACHABLE:
            return LoadFailureCause::unreachable;
        case G_IO_ERROR_HOST_NOT_FOUND:
            return LoadFailureCause::noSuchName;
        case G_IO_ERROR_NOT_FOUND:
        case G_IO_ERROR_PERMISSION_DENIED:
        case G_IO_ERROR_IS_DIRECTORY:
            return LoadFailureCause::noSuchFile;
        case G_IO_ERROR_CANCELLED:
            return std::nullopt;
        case G_IO_ERROR_CONNECTION_CLOSED:
        case G_IO_ERROR_PARTIAL_INPUT:
            return LoadFailureCause::connectionLost;
        default:
            return LoadFailureCause::other;
    }
}

std::optional<LoadFailureCause> engineFailure(int code) {
    switch (code) {
        case WEBKIT_NETWORK_ERROR_CANCELLED:
            return std::nullopt;
        case WEBKIT_NETWORK_ERROR_FILE_DOES_NOT_EXIST:
            return LoadFailureCause::noSuchFile;
        case WEBKIT_NETWORK_ERROR_UNKNOWN_PROTOCOL:
            return LoadFailureCause::otherProgram;
        default:
            return LoadFailureCause::connectionLost;
    }
}

LoadFailureCause sessionFailure(int code) {
    switch (code) {
        case SOUP_SESSION_ERROR_PARSING:
        case SOUP_SESSION_ERROR_ENCODING:
            return LoadFailureCause::connectionLost;
        default:
            return LoadFailureCause::other;
    }
}

}  // namespace

std::optional<LoadFailureCause> loadFailureCause(const GError* error) {
    if (!error || error->domain == WEBKIT_POLICY_ERROR) return std::nullopt;
    if (error->domain == WEBKIT_NETWORK_ERROR) return engineFailure(error->code);
    if (error->domain == G_RESOLVER_ERROR) return LoadFailureCause::noSuchName;
    if (error->domain == G_TLS_ERROR) return LoadFailureCause::secureConnection;
    if (error->domain == G_IO_ERROR) return connectionFailure(error->code);
    if (error->domain == SOUP_SESSION_ERROR) return sessionFailure(error->code);
    return LoadFailureCause::other;
}

CertificateFault certificateFault(GTlsCertificateFlags flags) {
    using Fault = std::pair<GTlsCertificateFlags, CertificateFault>;
    constexpr std::array<Fault, 6> gravestFirst{{
        {G_TLS_CERTIFICATE_REVOKED, CertificateFault::revoked},
        {G_TLS_CERTIFICATE_BAD_IDENTITY, CertificateFault::wrongHost},
        {G_TLS_CERTIFICATE_UNKNOWN_CA, CertificateFault::unknownAuthority},
        {G_TLS_CERTIFICATE_EXPIRED, CertificateFault::expired},
        {G_TLS_CERTIFICATE_NOT_ACTIVATED, CertificateFault::notYetValid},
        {G_TLS_CERTIFICATE_INSECURE, CertificateFault::insecure},
    }};
    const auto fault = std::ranges::find_if(
        gravestFirst, [&](const Fault& each) { return (flags & each.first) != 0; });
    return fault == gravestFirst.end() ? CertificateFault::other : fault->second;
}

}  // namespace orvu

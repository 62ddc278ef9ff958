#pragma once

#include "foundation/Url.h"

#include <optional>

namespace orvu {

/// Why a load brought no page.
enum class LoadFailureCause {
    noNetwork,         ///< the computer is not connected
    noSuchName,        ///< no server of that name is known
    refused,           ///< the server takes no connection
    unreachable,       ///< no way leads to the server
    timedOut,          ///< no answer came in time
    connectionLost,    ///< the connection broke off
    tooManyRedirects,  ///< one address led to the next without end
    certificate,       ///< the server didn't prove who it is
    secureConnection,  ///< no secure connection came about
    noSuchFile,        ///< there is no such file on this computer
    otherProgram,      ///< the address is none that pages are loaded from
    processEnded,      ///< the page's process ended, again and again
    addressFlood,      ///< the page was ended, because it changed its address without end
    other,
};

/// What is wrong with a server's certificate; the gravest where there is more than one.
enum class CertificateFault {
    revoked,
    wrongHost,         ///< it is that of another site
    unknownAuthority,  ///< nobody who is known vouches for it
    expired,
    notYetValid,
    insecure,  ///< made in a way that can be forged
    other,
};

/// A load that brought no page.
struct LoadFailure {
    LoadFailureCause cause = LoadFailureCause::other;
    Url url;                                      ///< that was to be loaded
    std::optional<CertificateFault> certificate;  ///< for the cause of that name

    friend bool operator==(const LoadFailure&, const LoadFailure&) = default;
};

}  // namespace orvu

#pragma once

#include "platform/LoadFailure.h"

#include <gio/gio.h>

#include <optional>

namespace orvu {

/// Why a load failed, in the words of the seam; nothing where it was a decision of ours, of the
/// person or of the server: a load that was stopped, or became a download.
[[nodiscard]] std::optional<LoadFailureCause> loadFailureCause(const GError* error);

/// What is wrong with a certificate of which the engine says `flags`.
[[nodiscard]] CertificateFault certificateFault(GTlsCertificateFlags flags);

}  // namespace orvu

#pragma once

#include "platform/linux/GObjectPointer.h"
#include "platform/UpdateTransport.h"

#include <libsoup/soup.h>

namespace orvu {

/// The updater's requests over libsoup, on the main loop. Each has a session of its own, so that
/// none of them shares a connection with another.
class SoupUpdateTransport : public UpdateTransport {
public:
    [[nodiscard]] Future<Reply> text(const Url& url, Limits limits) override;
    [[nodiscard]] Future<Reply> file(const Url& url, std::filesystem::path place, Limits limits,
                                     Progress progress) override;
};

}  // namespace orvu

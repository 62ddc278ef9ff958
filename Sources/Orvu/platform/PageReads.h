#pragma once

#include "foundation/Url.h"
#include "foundation/async/Future.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace orvu {

/// A page to be read.
struct PageRequest {
    Url url;
    Url listing;  ///< the page that links to it
    std::string userAgent;

    friend bool operator==(const PageRequest&, const PageRequest&) = default;
};

/// What a server has at an address, whatever the status of its answer.
struct PageDocument {
    std::string mimeType;  ///< as the server calls it; empty if it doesn't
    std::string body;      ///< its head, any compression undone

    friend bool operator==(const PageDocument&, const PageDocument&) = default;
};

/// Reads pages of the web for the program itself, beside the engine and out of a person's sight. So
/// these requests carry and keep nothing: no cookies, no passwords, no cache, no referrer.
class PageReads {
public:
    /// How long a server may be silent.
    static constexpr std::chrono::seconds timeout{5};
    /// How long a whole reading may take, redirects included.
    static constexpr std::chrono::seconds totalTimeout{10};
    /// The body is read up to here.
    static constexpr std::size_t maxBytes = 600000;
    static constexpr int maxRedirects = 10;

    virtual ~PageReads() = default;

    /// What stands at an address. Redirects are followed. Nothing if that, or where a redirect
    /// leads, is no web address, or without an answer in time. Nothing of this computer or of the
    /// network around it is asked because of a page of the world: the listing page must come from
    /// there itself. Dropping the future ends the request.
    [[nodiscard]] virtual Future<std::optional<PageDocument>> read(PageRequest request) = 0;
};

}  // namespace orvu

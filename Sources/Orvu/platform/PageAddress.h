#pragma once

#include "foundation/Url.h"

#include <optional>

namespace orvu {

/// Which address a web view tells others, through all that a load can come to.
///
/// Three may be at play: the one that the program asked for, that of the document that stands, and
/// the engine's own, which moves at the start of a load and back, or to nothing, when one fails.
/// While a document stands, a load that comes to nothing leaves its address. Where none ever stood,
/// the address that was asked for stays, so that it can be saved, shown and tried again.
class PageAddress {
public:
    /// What others see.
    [[nodiscard]] const std::optional<Url>& url() const { return url_; }
    /// The address of the document that stands; nothing before the first.
    [[nodiscard]] const std::optional<Url>& document() const { return document_; }
    /// What a view that shows no document was asked for, and may be asked for again.
    [[nodiscard]] std::optional<Url> unshown() const { return document_ ? std::nullopt : asked_; }

    // Each says whether `url` changed.

    /// The program asks for a load.
    [[nodiscard]] bool asked(const Url& url);
    /// The engine's own address moved, to nothing where it has none. `isLoading` tells a load from a
    /// move within the document.
    [[nodiscard]] bool engineMoved(const std::optional<Url>& url, bool isLoading);
    /// The document of the present load stands.
    void committed();
    /// The present load ended without a document: it failed, or was stopped or given up.
    [[nodiscard]] bool ended();
    /// The present load became a download, and is no load of a page any more.
    [[nodiscard]] bool becameDownload();

private:
    [[nodiscard]] bool show(const std::optional<Url>& url);

    std::optional<Url> url_;
    std::optional<Url> document_;
    std::optional<Url> asked_;
};

}  // namespace orvu

#pragma once

#include "foundation/async/FutureScope.h"
#include "platform/MainLoop.h"
#include "platform/PageReads.h"
#include "platform/linux/GObjectPointer.h"

#include <libsoup/soup.h>

#include <chrono>

namespace orvu {

/// Reads pages over libsoup, each step of redirects in a session of its own. A host that a page of
/// the world names is connected to at addresses of the world alone. Behind a proxy, which looks
/// hosts up itself, no host is read that is an address or means this computer.
class SoupPageReads : public PageReads {
public:
    /// `total` is for a whole reading. `loop` must outlive this.
    explicit SoupPageReads(MainLoop& loop, std::chrono::milliseconds total = totalTimeout)
        : loop_(loop), total_(total) {}

    [[nodiscard]] Future<std::optional<PageDocument>> read(PageRequest request) override;

private:
    using Document = std::optional<PageDocument>;

    [[nodiscard]] static Task<Document> follow(PageRequest request);

    MainLoop& loop_;
    const std::chrono::milliseconds total_;
    FutureScope reads_;
};

}  // namespace orvu

#pragma once

#include "foundation/Url.h"
#include "platform/MainLoop.h"

#include <webkit/webkit.h>

#include <functional>
#include <optional>

namespace orvu {

/// Asks the page of `view` what it would tell the target of one of its links, or the server of one of
/// its images, of its own address, and
/// hands that to `done`, once: after a moment also if the page doesn't answer. Nothing if it would
/// keep it to itself, and for one that isn't the page's own: one in a frame may be another
/// site's. `loop` must outlive the view.
void findLinkReferrer(WebKitWebView* view, MainLoop& loop, const Url& link,
                      std::function<void(const std::optional<Url>&)> done);

}  // namespace orvu

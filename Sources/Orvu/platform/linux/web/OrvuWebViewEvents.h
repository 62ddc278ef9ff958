#pragma once

#include "platform/linux/web/OrvuWebView.h"

namespace orvu {

/// The engine's signals, each handed on to the view that they are connected for.
class OrvuWebView::Events {
public:
    static void connect(WebKitWebView* view, OrvuWebView* self);
    static void disconnect(WebKitWebView* view, OrvuWebView* self);

private:
    struct Handlers;
};

}  // namespace orvu

#pragma once

#include "platform/WebView.h"

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace orvu {

/// Runs a script in the main frame of `view`, in the program's own world, and hands the result to
/// `done` from the main loop; once, unless the view goes away first.
void runPageScript(WebKitWebView* view, const std::string& script,
                   std::function<void(ScriptResult)> done);

/// Runs the body of an asynchronous function there, and calls `done` when it has ended, or failed,
/// or the page has gone.
void runAsyncPageScript(WebKitWebView* view, const std::string& body, std::function<void()> done);

}  // namespace orvu

#pragma once

#include "platform/MainLoop.h"
#include "platform/PageDialogs.h"
#include "platform/linux/web/HeldDialog.h"
#include "platform/linux/web/PageLeaving.h"

#include <webkit/webkit.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orvu {

/// Turns what the engine would ask in windows of its own into dialogs of the page.
class EngineDialogs {
public:
    /// How long a page waits that is answered at once: it may ask without end, and so fast that the
    /// window would have no time left to draw.
    static constexpr std::chrono::milliseconds breath{4};

    /// What is asked about the page that stands.
    struct Page {
        std::function<std::string()> host;
        /// Whether a load is under way that has shown nothing yet.
        std::function<bool()> isAboutToChange;
    };

    /// All must outlive this.
    EngineDialogs(WebKitWebView* view, PageDialogs& dialogs, PageLeaving& leaving, MainLoop& loop,
                  Page page);
    EngineDialogs(const EngineDialogs&) = delete;
    EngineDialogs& operator=(const EngineDialogs&) = delete;
    ~EngineDialogs();

private:
    static gboolean scriptDialog(WebKitWebView* view, WebKitScriptDialog* dialog, gpointer data);
    static gboolean authenticate(WebKitWebView* view, WebKitAuthenticationRequest* request,
                                 gpointer data);
    void ask(WebKitScriptDialog* dialog);
    void ask(WebKitAuthenticationRequest* request);

    WebKitWebView* const view_;
    PageDialogs& dialogs_;
    PageLeaving& leaving_;
    MainLoop& loop_;
    const Page page_;
    std::optional<HeldDialog> resting_;  ///< answered, but not told yet
    Scheduled rest_;
    std::shared_ptr<EngineDialogs*> self_ = std::make_shared<EngineDialogs*>(this);
};

}  // namespace orvu

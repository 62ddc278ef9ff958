#pragma once

#include "platform/MainLoop.h"
#include "platform/PageMenu.h"
#include "platform/WebView.h"

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orvu {

/// The menu of a page: ours, of the engine's items where it has them.
///
/// The engine doesn't tell what is selected, and its menu must be filled within its signal. So the
/// page is asked when a button or a key is pressed that brings a menu: what it is told first it
/// answers first, and the answer is there when the menu comes.
class EngineMenu {
public:
    /// What the menu does that is more than the engine's view can do by itself.
    struct Handlers {
        /// Whether the page may open that address in a tab.
        std::function<bool(const Url&)> mayOpen;
        /// A new tab, in the page's name.
        std::function<void(const UrlRequest&)> open;
        /// An item that saves something was chosen: the person wants what is downloaded next.
        std::function<void()> saves;
        std::function<void(const PageMenuChoice&)> choose;
        /// Whether words may be kept as known, for all pages and later runs.
        bool learnsWords = true;
    };

    /// `page` is the view that `view` belongs to. All but the handlers must outlive this.
    EngineMenu(WebKitWebView* view, WebView& page, MainLoop& loop, Handlers handlers);
    EngineMenu(const EngineMenu&) = delete;
    EngineMenu& operator=(const EngineMenu&) = delete;
    ~EngineMenu();

private:
    /// Where the menu that shows was asked for. It outlives the page's being there.
    struct Place {
        std::optional<Url> link;
        std::optional<Url> image;
        std::string selection;
    };

    static gboolean comes(WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult* hit,
                          gpointer data);
    void readSelection();
    void fill(WebKitContextMenu* menu, WebKitHitTestResult* hit);
    void chosen(PageMenuItem item, const Place& place);
    void open(const Url& target);

    WebKitWebView* const view_;
    WebView& page_;
    MainLoop& loop_;
    const Handlers handlers_;
    GtkEventController* const presses_;  ///< the view's own
    GtkEventController* const keys_;     ///< the view's own
    std::string selection_;
    unsigned reading_ = 0;
    /// Lets what is chosen late find out whether the page is still there.
    std::shared_ptr<EngineMenu*> self_ = std::make_shared<EngineMenu*>(this);
};

}  // namespace orvu

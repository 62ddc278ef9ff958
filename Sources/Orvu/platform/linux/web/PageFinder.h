#pragma once

#include "platform/WebView.h"

#include <webkit/webkit.h>

#include <deque>
#include <string>

namespace orvu {

/// The searches of one view of the engine, whose answers carry no name: they come in the order of
/// the searches.
class PageFinder {
public:
    /// `view` must outlive this.
    explicit PageFinder(WebKitWebView* view);
    PageFinder(const PageFinder&) = delete;
    PageFinder& operator=(const PageFinder&) = delete;
    ~PageFinder();

    [[nodiscard]] Future<bool> find(const std::string& text, FindConfiguration configuration);
    /// Another page stands there, or none: what was asked of the previous one found nothing.
    void pageUnloaded();

private:
    static void found(WebKitFindController*, guint, gpointer self);
    static void notFound(WebKitFindController*, gpointer self);
    void answer(bool found);

    WebKitFindController* const controller_;
    std::deque<Promise<bool>> asked_;
};

}  // namespace orvu

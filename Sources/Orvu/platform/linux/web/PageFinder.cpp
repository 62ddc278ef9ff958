#include "platform/linux/web/PageFinder.h"

#include <utility>

namespace orvu {

PageFinder::PageFinder(WebKitWebView* view)
    : controller_(webkit_web_view_get_find_controller(view)) {
    g_signal_connect(controller_, "found-text", G_CALLBACK(found), this);
    g_signal_connect(controller_, "failed-to-find-text", G_CALLBACK(notFound), this);
}

PageFinder::~PageFinder() { g_signal_handlers_disconnect_by_data(controller_, this); }

Future<bool> PageFinder::find(const std::string& text, FindConfiguration configuration) {
    guint32 options = WEBKIT_FIND_OPTIONS_CASE_INSENSITIVE;
    if (configuration.wraps) options |= WEBKIT_FIND_OPTIONS_WRAP_AROUND;
    if (configuration.backwards) options |= WEBKIT_FIND_OPTIONS_BACKWARDS;
    asked_.emplace_back();
    auto future = asked_.back().future();
    // The same text again goes on to the next match.
    webkit_find_controller_search(controller_, text.c_str(), options, G_MAXUINT);
    return future;
}

void PageFinder::pageUnloaded() {
    for (const auto& promise : std::exchange(asked_, {})) promise.resolve(false);
}

void PageFinder::found(WebKitFindController*, guint, gpointer self) {
    static_cast<PageFinder*>(self)->answer(true);
}

void PageFinder::notFound(WebKitFindController*, gpointer self) {
    static_cast<PageFinder*>(self)->answer(false);
}

void PageFinder::answer(bool found) {
    if (asked_.empty()) return;  // of a page that went
    const auto promise = asked_.front();
    asked_.pop_front();
    promise.resolve(found);
}

}  // namespace orvu

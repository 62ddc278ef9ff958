#pragma once

#include "platform/MainLoop.h"

#include <webkit/webkit.h>

#include <chrono>

namespace orvu {

/// Lets the engine have its swipes back and forward only while one may be under way.
///
/// While they are switched on, the engine keeps a picture of the page for each navigation: some
/// hundred of them, or a page that changes its address thousands of times a second, cost hundreds of
/// MiB in this process and stop its drawing. And it comes to grief over a view that navigates while
/// it stands in no window. So they are on from the first touch, or the first scrolling of a
/// touchpad, until a moment after the last; the page beneath a swipe is then a plain one.
class SwipeGestures {
public:
    static constexpr std::chrono::milliseconds lingering{800};

    /// Both must outlive this.
    SwipeGestures(WebKitWebView* view, MainLoop& loop);
    SwipeGestures(const SwipeGestures&) = delete;
    SwipeGestures& operator=(const SwipeGestures&) = delete;
    ~SwipeGestures();

    [[nodiscard]] bool areOn() const;
    /// To be told of each event over the view. Others than those of fingers do nothing.
    void heard(GdkEventType type, GdkInputSource source);
    /// Switches them off at once.
    void end();

private:
    void set(bool on);

    WebKitWebView* const view_;
    MainLoop& loop_;
    GtkEventController* const events_;  ///< the view's own
    Scheduled end_;
};

}  // namespace orvu

#pragma once

#include "platform/MainLoop.h"
#include "platform/linux/GObjectPointer.h"

#include <webkit/webkit.h>

namespace orvu {

/// Lets open pages learn at once that the desktop wishes less motion, or that it doesn't any more.
///
/// The engine hands the setting to pages, but one that draws nothing new goes on with its old
/// styles. A style sheet that comes and goes makes all pages of a content manager work theirs out
/// anew; scripts hear of the change with what is drawn then. A page whose styles don't depend on
/// the setting draws nothing: its scripts hear of it with its next frame. Hidden pages follow when
/// they are shown.
class MotionNotice {
public:
    /// `loop` must outlive this.
    MotionNotice(WebKitUserContentManager* pages, MainLoop& loop);
    MotionNotice(const MotionNotice&) = delete;
    MotionNotice& operator=(const MotionNotice&) = delete;
    ~MotionNotice();

private:
    void changed();
    void restyle();

    GObjectPointer<WebKitUserContentManager> pages_;
    MainLoop& loop_;
    GtkSettings* const settings_;
    Scheduled restyling_;
};

}  // namespace orvu

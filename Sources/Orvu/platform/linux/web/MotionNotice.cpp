#include "platform/linux/web/MotionNotice.h"

namespace orvu {

MotionNotice::MotionNotice(WebKitUserContentManager* pages, MainLoop& loop)
    : pages_(GObjectPointer<WebKitUserContentManager>::retain(pages)),
      loop_(loop),
      settings_(gtk_settings_get_default()) {
    if (!settings_) return;
    g_signal_connect_swapped(settings_, "notify::gtk-enable-animations",
                             G_CALLBACK(+[](MotionNotice* notice) { notice->changed(); }), this);
}

MotionNotice::~MotionNotice() {
    if (settings_) g_signal_handlers_disconnect_by_data(settings_, this);
}

void MotionNotice::changed() {
    // The engine, which hears of it as well, may hear of it later than this.
    restyling_ = loop_.whenIdle([this] { restyle(); });
}

void MotionNotice::restyle() {
    WebKitUserStyleSheet* const sheet = webkit_user_style_sheet_new(
        "", WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES, WEBKIT_USER_STYLE_LEVEL_USER, nullptr, nullptr);
    webkit_user_content_manager_add_style_sheet(pages_.get(), sheet);
    webkit_user_content_manager_remove_style_sheet(pages_.get(), sheet);
    webkit_user_style_sheet_unref(sheet);
}

}  // namespace orvu

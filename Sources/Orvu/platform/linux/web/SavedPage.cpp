#include "platform/linux/web/SavedPage.h"

#include "foundation/text/Translation.h"

#include <string_view>

namespace orvu {
namespace {

std::string fileName(const std::string& title, const std::optional<std::string>& host) {
    return (!title.empty() ? title : host.value_or(phrase("Page"))) + ".mhtml";
}

}  // namespace

bool SavedPage::canSave(WebKitWebView* view) {
    WebKitWebResource* const resource = webkit_web_view_get_main_resource(view);
    WebKitURIResponse* const response =
        resource ? webkit_web_resource_get_response(resource) : nullptr;
    const char* const type = response ? webkit_uri_response_get_mime_type(response) : nullptr;
    const std::string_view mime = type ? type : "";
    return mime == "text/html" || mime == "application/xhtml+xml";
}

SavedPage::SavedPage(WebKitWebView* view, const std::string& title,
                     const std::optional<std::string>& host)
    : view_(GObjectPointer<WebKitWebView>::retain(view)),
      cancellable_(GObjectPointer<GCancellable>::adopt(g_cancellable_new())),
      name_(fileName(title, host)) {}

SavedPage::~SavedPage() {
    if (starter_ != 0) g_source_remove(starter_);
    cancel();
}

void SavedPage::setDelegate(DownloadDelegate* delegate) {
    delegate_ = delegate;
    if (!delegate || hasBegun_ || starter_ != 0) return;
    const auto start = +[](gpointer data) -> gboolean {
        auto& self = *static_cast<SavedPage*>(data);
        self.starter_ = 0;
        self.begin();
        return G_SOURCE_REMOVE;
    };
    starter_ = g_idle_add(start, this);
}

void SavedPage::begin() {
    if (!delegate_) return;
    hasBegun_ = true;
    const std::weak_ptr alive{self_};
    const auto place = delegate_->decideDestination(name_);
    if (alive.expired()) return;
    if (!place || g_cancellable_is_cancelled(cancellable_.get()) != FALSE) return ended(false);
    const auto file = GObjectPointer<GFile>::adopt(g_file_new_for_path(place->c_str()));
    using Handle = std::weak_ptr<SavedPage*>;
    const auto written = +[](GObject* view, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Handle> handle{static_cast<Handle*>(data)};
        const bool saved =
            webkit_web_view_save_to_file_finish(WEBKIT_WEB_VIEW(view), result, nullptr) != FALSE;
        if (const auto live = handle->lock()) (*live)->ended(saved);
    };
    webkit_web_view_save_to_file(view_.get(), file.get(), WEBKIT_SAVE_MODE_MHTML,
                                 cancellable_.get(), written,
                                 std::make_unique<Handle>(self_).release());
}

void SavedPage::ended(bool saved) {
    if (!delegate_) return;
    if (saved) {
        delegate_->didFinish();
    } else {
        delegate_->didFail();
    }
}

}  // namespace orvu

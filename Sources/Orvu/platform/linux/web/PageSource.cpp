#include "platform/linux/web/PageSource.h"

#include "foundation/text/Text.h"
#include "platform/linux/GObjectPointer.h"
#include "platform/linux/web/PageScript.h"

#include <memory>
#include <utility>

namespace orvu {
namespace {

constexpr const char* scheme = "view-source";

using Done = std::function<void(std::optional<std::string>)>;

/// A reading under way.
struct Reading {
    std::string charset;
    Done done;
};

void readData(WebKitWebView* view, Reading begun) {
    WebKitWebResource* const resource = webkit_web_view_get_main_resource(view);
    if (!resource) return begun.done(std::nullopt);
    const auto ready = +[](GObject* object, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Reading> reading{static_cast<Reading*>(data)};
        gsize length = 0;
        guchar* const bytes = webkit_web_resource_get_data_finish(WEBKIT_WEB_RESOURCE(object),
                                                                  result, &length, nullptr);
        std::optional<std::string> text;
        if (bytes && length <= PageSource::limit) {
            // The engine hands out bytes, the text is made of them here.
            const std::string held{bytes, bytes + length};
            text = sourceText(held, reading->charset);
        }
        g_free(bytes);
        reading->done(std::move(text));
    };
    webkit_web_resource_get_data(resource, nullptr, ready,
                                 std::make_unique<Reading>(std::move(begun)).release());
}

void answer(WebKitURISchemeRequest* request, std::string_view text) {
    GBytes* const bytes = g_bytes_new(text.data(), text.size());
    GInputStream* const stream = g_memory_input_stream_new_from_bytes(bytes);
    const auto response = GObjectPointer<WebKitURISchemeResponse>::adopt(
        webkit_uri_scheme_response_new(stream, static_cast<gint64>(text.size())));
    webkit_uri_scheme_response_set_content_type(response.get(), "text/plain; charset=utf-8");
    webkit_uri_scheme_request_finish_with_response(request, response.get());
    g_object_unref(stream);
    g_bytes_unref(bytes);
}

}  // namespace

std::string sourceText(std::string_view bytes, const std::string& charset) {
    if (!isWellFormed(bytes) && !charset.empty() && lowercased(charset) != "utf-8") {
        gsize length = 0;
        char* const converted =
            g_convert_with_fallback(bytes.data(), static_cast<gssize>(bytes.size()), "UTF-8",
                                    charset.c_str(), "\xEF\xBF\xBD", nullptr, &length, nullptr);
        if (converted) {
            std::string text{converted, length};
            g_free(converted);
            return text;
        }
    }
    return wellFormed(bytes);
}

void readPageSource(WebKitWebView* view, Done done) {
    const auto kept = std::make_shared<GObjectPointer<WebKitWebView>>(
        GObjectPointer<WebKitWebView>::retain(view));
    runPageScript(view, "document.characterSet.slice(0, 40)",
                  [kept, done = std::move(done)](const ScriptResult& result) {
                      const bool told = result.kind == ScriptResult::Kind::text;
                      readData(kept->get(), {told ? result.text : "", done});
                  });
}

void registerPageSources(std::function<const PageSource*(WebKitWebView*)> of) {
    using Of = std::function<const PageSource*(WebKitWebView*)>;
    const auto asked = +[](WebKitURISchemeRequest* request, gpointer data) {
        WebKitWebView* const view = webkit_uri_scheme_request_get_web_view(request);
        const PageSource* const source = view ? (*static_cast<Of*>(data))(view) : nullptr;
        if (source && source->address == webkit_uri_scheme_request_get_uri(request)) {
            return answer(request, source->text);
        }
        GError* const error =
            g_error_new_literal(WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_FILE_DOES_NOT_EXIST,
                                "nobody shows this source");
        webkit_uri_scheme_request_finish_error(request, error);
        g_error_free(error);
    };
    WebKitWebContext* const context = webkit_web_context_get_default();
    webkit_web_context_register_uri_scheme(context, scheme, asked,
                                           std::make_unique<Of>(std::move(of)).release(),
                                           [](gpointer data) { delete static_cast<Of*>(data); });
    webkit_security_manager_register_uri_scheme_as_display_isolated(
        webkit_web_context_get_security_manager(context), scheme);
}

}  // namespace orvu

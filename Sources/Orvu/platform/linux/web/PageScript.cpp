#include "platform/linux/web/PageScript.h"

#include "foundation/json/JsonSurrogates.h"
#include "foundation/text/Text.h"
#include "platform/linux/GObjectPointer.h"

#include <memory>

namespace orvu {
namespace {

/// The name of the script world that pages don't see.
constexpr const char* world = "orvu";

using Done = std::function<void(ScriptResult)>;

struct FreeGlib {
    void operator()(void* memory) const { g_free(memory); }
};

/// The text of a string value, whole: the library's plain call would end it at a NUL, and drop
/// everything from half a character on.
std::string textOf(JSCValue* value) {
    const auto whole = GObjectPointer<JSCValue>::adopt(
        jsc_value_object_invoke_method(value, "toWellFormed", G_TYPE_NONE));
    GBytes* const bytes = jsc_value_to_string_as_bytes(whole.get());
    gsize size = 0;
    const auto* const data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
    std::string text = wellFormed({data, size});
    g_bytes_unref(bytes);
    return text;
}

ScriptResult resultOf(JSCValue* value) {
    using Kind = ScriptResult::Kind;
    if (jsc_value_is_string(value)) return {Kind::text, textOf(value)};
    const std::unique_ptr<char, FreeGlib> json{jsc_value_to_json(value, 0)};
    if (!json) return {Kind::undefined, ""};
    return {Kind::json, withLoneSurrogatesReplaced(json.get())};
}

void evaluated(GObject* view, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Done> done{static_cast<Done*>(data)};
    const auto value = GObjectPointer<JSCValue>::adopt(
        webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
    (*done)(value ? resultOf(value.get()) : ScriptResult{});
}

void ended(GObject* view, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<std::function<void()>> done{static_cast<std::function<void()>*>(data)};
    const auto value =
        GObjectPointer<JSCValue>::adopt(webkit_web_view_call_async_javascript_function_finish(
            WEBKIT_WEB_VIEW(view), result, nullptr));
    (*done)();
}

}  // namespace

void runPageScript(WebKitWebView* view, const std::string& script, Done done) {
    webkit_web_view_evaluate_javascript(view, script.data(), static_cast<gssize>(script.size()),
                                        world, nullptr, nullptr, evaluated,
                                        std::make_unique<Done>(std::move(done)).release());
}

void runAsyncPageScript(WebKitWebView* view, const std::string& body, std::function<void()> done) {
    auto call = std::make_unique<std::function<void()>>(std::move(done));
    webkit_web_view_call_async_javascript_function(view, body.data(),
                                                   static_cast<gssize>(body.size()), nullptr, world,
                                                   nullptr, nullptr, ended, call.release());
}

}  // namespace orvu

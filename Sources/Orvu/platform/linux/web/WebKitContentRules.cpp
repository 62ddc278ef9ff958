#include "platform/linux/web/WebKitContentRules.h"

#include <memory>
#include <utility>

namespace orvu {
namespace {

class RuleList : public ContentRuleList {
public:
    /// Takes over a reference to `filter`.
    explicit RuleList(WebKitUserContentFilter* filter) : filter_(filter) {}
    RuleList(const RuleList&) = delete;
    RuleList& operator=(const RuleList&) = delete;
    ~RuleList() override { webkit_user_content_filter_unref(filter_); }

    [[nodiscard]] WebKitUserContentFilter* get() const { return filter_; }

private:
    WebKitUserContentFilter* const filter_;
};

using CompilePromise = Promise<ContentRuleListStore::Compiled>;

void compiled(GObject* store, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<CompilePromise> promise{static_cast<CompilePromise*>(data)};
    WebKitUserContentFilter* const filter = webkit_user_content_filter_store_save_finish(
        WEBKIT_USER_CONTENT_FILTER_STORE(store), result, nullptr);
    promise->resolve(filter ? std::make_shared<const RuleList>(filter) : nullptr);
}

}  // namespace

void WebKitUserContent::add(const ContentRuleList& rules) {
    // The manager knows lists by their identifiers and replaces one that it has.
    webkit_user_content_manager_add_filter(get(), static_cast<const RuleList&>(rules).get());
}

WebKitRuleListStore::WebKitRuleListStore(const std::filesystem::path& folder)
    : store_(GObjectPointer<WebKitUserContentFilterStore>::adopt(
          webkit_user_content_filter_store_new(folder.c_str()))) {}

Future<ContentRuleListStore::Compiled> WebKitRuleListStore::compile(std::string identifier,
                                                                    std::string encodedRules) {
    const CompilePromise promise;
    GBytes* const source = g_bytes_new(encodedRules.data(), encodedRules.size());
    webkit_user_content_filter_store_save(store_.get(), identifier.c_str(), source, nullptr,
                                          compiled,
                                          std::make_unique<CompilePromise>(promise).release());
    g_bytes_unref(source);
    return promise.future();
}

}  // namespace orvu

#pragma once

#include "platform/ContentRules.h"
#include "platform/linux/GObjectPointer.h"

#include <webkit/webkit.h>

#include <filesystem>

namespace orvu {

/// The rules of one configuration's pages.
class WebKitUserContent : public UserContentController {
public:
    /// Only lists of a `WebKitRuleListStore`.
    void add(const ContentRuleList& rules) override;
    [[nodiscard]] WebKitUserContentManager* get() const { return manager_.get(); }

private:
    GObjectPointer<WebKitUserContentManager> manager_ =
        GObjectPointer<WebKitUserContentManager>::adopt(webkit_user_content_manager_new());
};

/// The engine's compiler of rules. It keeps what it compiled in a folder, from where the pages'
/// processes map it into their memory.
class WebKitRuleListStore : public ContentRuleListStore {
public:
    explicit WebKitRuleListStore(const std::filesystem::path& folder);

    [[nodiscard]] Future<Compiled> compile(std::string identifier,
                                           std::string encodedRules) override;

private:
    GObjectPointer<WebKitUserContentFilterStore> store_;
};

}  // namespace orvu

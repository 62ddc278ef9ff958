#pragma once

#include "foundation/Uuid.h"
#include "platform/ContentRules.h"
#include "platform/Download.h"
#include "platform/WebView.h"

#include <functional>
#include <memory>
#include <string>

namespace orvu {

/// Names a place for cookies, storage and caches of websites.
struct WebsiteDataStore {
    enum class Kind {
        nonPersistent,  ///< in memory, of one configuration alone, gone with it
        standard,       ///< the one of the personal profile
        identified,     ///< that of another profile
    };
    Kind kind = Kind::standard;
    Uuid identifier;  ///< meaningful for `identified` alone

    [[nodiscard]] static WebsiteDataStore nonPersistentDataStore() {
        return {Kind::nonPersistent, {}};
    }
    [[nodiscard]] static WebsiteDataStore defaultDataStore() { return {Kind::standard, {}}; }
    [[nodiscard]] static WebsiteDataStore dataStoreForIdentifier(const Uuid& identifier) {
        return {Kind::identified, identifier};
    }

    friend bool operator==(const WebsiteDataStore&, const WebsiteDataStore&) = default;
};

/// What all pages of one window share.
class WebConfiguration {
public:
    virtual ~WebConfiguration() = default;

    /// Whether a page may show one of its elements on the whole screen. Off at first.
    virtual void setElementFullscreenEnabled(bool enabled) = 0;
    /// How the user agent ends, behind the engine's own words.
    virtual void setApplicationNameForUserAgent(std::string name) = 0;
    /// Where the rules for its pages go. It may outlive the configuration.
    [[nodiscard]] virtual std::shared_ptr<UserContentController> userContentController() = 0;
    /// A view without a page. Views may outlive their configuration.
    [[nodiscard]] virtual std::unique_ptr<WebView> makeWebView() = 0;
};

/// The web engine. Configurations of one persistent data store share its cookies.
class WebEngine {
public:
    virtual ~WebEngine() = default;

    [[nodiscard]] virtual std::unique_ptr<WebConfiguration> makeConfiguration(
        const WebsiteDataStore& store) = 0;
    /// Deletes what websites stored for a profile. Failures are not reported.
    virtual void removeDataStore(const Uuid& identifier) = 0;
    /// Deletes all that websites have in a store: of every type, however old. Goes on to the end even
    /// if the future is dropped. The future gives whether it succeeded.
    [[nodiscard]] virtual Future<bool> clearDataStore(const WebsiteDataStore& store) = 0;

    /// Takes each download that begins, from a page or without one. It is cancelled if nobody
    /// takes it.
    std::function<void(std::unique_ptr<Download>)> onDownload;
};

}  // namespace orvu

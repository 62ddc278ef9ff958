#pragma once

#include "platform/LoadQueue.h"
#include "platform/MainLoop.h"
#include "platform/NetworkMonitor.h"
#include "platform/WebConfiguration.h"
#include "platform/linux/web/SessionWebsiteData.h"
#include "platform/linux/web/WebKitSession.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The web engine of the desktop.
class WebKitEngine : public WebEngine {
public:
    /// `loop`, `activity` and `network` must outlive the engine and its views.
    WebKitEngine(const SystemPaths& paths, MainLoop& loop, Activity& activity,
                 NetworkMonitor& network);
    WebKitEngine(const WebKitEngine&) = delete;
    WebKitEngine& operator=(const WebKitEngine&) = delete;
    ~WebKitEngine() override;

    [[nodiscard]] std::unique_ptr<WebConfiguration> makeConfiguration(
        const WebsiteDataStore& store) override;
    void removeDataStore(const Uuid& identifier) override { sessions_.remove(identifier); }
    [[nodiscard]] Future<bool> clearDataStore(const WebsiteDataStore& store) override {
        return clearWebsiteData(sessions_.session(store));
    }
    /// Deletes what is left of the website data of profiles that are not in `known`.
    void removeDataStoresExcept(const std::vector<Uuid>& known) { sessions_.removeAllBut(known); }

private:
    // Sessions outlive the engine.
    const std::shared_ptr<DownloadTaker> taker_;
    const std::shared_ptr<const DownloadsBegun> begun_;
    WebKitSessions sessions_;
    MainLoop& loop_;
    NetworkMonitor& network_;
    const std::shared_ptr<LoadQueue> queue_;
};

/// The engine's own user agent with everything behind its layout engine's words replaced.
[[nodiscard]] std::string userAgent(std::string_view engineOwn, std::string_view applicationName);

}  // namespace orvu

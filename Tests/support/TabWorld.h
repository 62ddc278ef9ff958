#pragma once

#include "core/BrowserTab.h"
#include "support/StoreWorld.h"

#include <memory>
#include <vector>

namespace orvu {

/// A fixture with tabs that stand in no window.
class TabTest : public StoreTest {
protected:
    std::unique_ptr<WebConfiguration> configuration =
        world.engine.makeConfiguration(WebsiteDataStore::defaultDataStore());

    [[nodiscard]] std::shared_ptr<BrowserTab> openTab(const UrlRequest& wanted) {
        auto tab = std::make_shared<BrowserTab>(*configuration, wanted, world.loop, world.favicons,
                                                world.permissions, Persistence::persistent);
        tab->onOpenInNewTab = [this](const UrlRequest& request) { opened.push_back(request); };
        return tab;
    }
    [[nodiscard]] std::shared_ptr<BrowserTab> openTab(std::string_view address) {
        return openTab(UrlRequest{url(address)});
    }
    [[nodiscard]] static NavigationAction linkTo(std::string_view address) {
        return {.request = {url(address)}, .navigationType = NavigationType::linkActivated};
    }
    [[nodiscard]] static NavigationAction scriptTo(std::string_view address) {
        return {.request = {url(address)}, .navigationType = NavigationType::other};
    }

    std::vector<UrlRequest> opened;
};

}  // namespace orvu

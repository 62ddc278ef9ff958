#pragma once

#include "foundation/async/TaskScope.h"
#include "platform/ContentRules.h"

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// Blocks what pages ask of well-known hosts that count or follow people across sites. The engine
/// does it by rules; the program itself sees no request. The rules are compiled once in a run and
/// serve all windows. Where that fails, windows browse without them.
class TrackerBlocker {
public:
    /// The public hosts of these services, in this order: an advertising network, site statistics,
    /// a tag manager, ad syndication, a social network's scripts, audience research, session
    /// recording, event collection, product analytics, two ad exchanges, two networks of
    /// recommended links, a shop's ads, a short message service's ads, audience measurement, a
    /// search engine's event host alone, and three more ad exchanges.
    static constexpr std::array<std::string_view, 20> domains{
        "doubleclick.net",      "google-analytics.com",
        "googletagmanager.com", "googlesyndication.com",
        "connect.facebook.net", "scorecardresearch.com",
        "hotjar.com",           "segment.io",
        "mixpanel.com",         "adnxs.com",
        "criteo.com",           "taboola.com",
        "outbrain.com",         "amazon-adsystem.com",
        "ads-twitter.com",      "quantserve.com",
        "bat.bing.com",         "adsrvr.org",
        "rubiconproject.com",   "pubmatic.com"};
    static constexpr std::string_view identifier = "zarvo-trackers";

    /// `store` must outlive this; `hosts` must live as long.
    explicit TrackerBlocker(ContentRuleListStore& store,
                            std::span<const std::string_view> hosts = domains)
        : store_(store), hosts_(hosts) {}

    /// The pattern of the addresses on a host, on any of its subdomains, and on any port.
    [[nodiscard]] static std::string urlFilter(std::string_view host);
    /// The rules for `hosts` in the engine's written form. Nothing if they can't be written.
    [[nodiscard]] static std::optional<std::string> encodedRules(
        std::span<const std::string_view> hosts);

    /// Begins to compile, so that the rules are there when the first window wants them.
    void prepare();
    /// Gives a window's pages the rules: at once, or when they are compiled.
    void install(const std::shared_ptr<UserContentController>& controller);

private:
    [[nodiscard]] Task<void> compile(std::string rules);

    ContentRuleListStore& store_;
    const std::span<const std::string_view> hosts_;
    ContentRuleListStore::Compiled compiled_;
    std::vector<std::shared_ptr<UserContentController>> waiting_;
    bool compiling_ = false;
    TaskScope tasks_;
};

}  // namespace orvu

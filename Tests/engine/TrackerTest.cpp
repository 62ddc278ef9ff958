#include "engine/EngineWorld.h"

#include <array>
#include <fstream>

namespace orvu {
namespace {

/// The real engine with rules for hosts that lead to the test's own server: names below
/// "localhost" do, and the engine takes them for domains like any others.
class TrackerTest : public EngineTest {
protected:
    static constexpr std::array<std::string_view, 2> hosts{"ads.localhost", "bat.search.localhost"};

    TrackerTest() {
        server.serve("/pixel", LoopbackServer::Answer{.body = "x", .type = "text/plain"});
    }

    /// A page that asks `host` for something and says "asked" in its title when that has ended.
    [[nodiscard]] std::string pageAsking(const std::string& host) const {
        return "<title>Page</title><script>fetch('" + server.url("/pixel", host) +
               "', {mode: 'no-cors'}).catch(() => {}).finally(() => document.title = 'asked')"
               "</script>";
    }
    /// Whether the request of such a page on `site` arrived at the server.
    [[nodiscard]] bool arrives(WebConfiguration& configuration, const std::string& host,
                               const std::string& site = "news.localhost") {
        server.serve("/page", pageAsking(host));
        const int before = server.requests("/pixel");
        const auto view = configuration.makeWebView();
        const RecordingDelegate delegate{*view};
        view->load(url("/page", site));
        EXPECT_TRUE(waitFor([&] { return view->title() == "asked"; })) << host;
        return server.requests("/pixel") > before;
    }
    [[nodiscard]] std::unique_ptr<WebConfiguration> window() {
        return engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    }
    /// Gives a window the rules and waits until it has them.
    void installAndWait(WebConfiguration& configuration) {
        blocker.install(configuration.userContentController());
        EXPECT_TRUE(waitFor([&] { return !arrives(configuration, "ads.localhost"); }));
    }

    TrackerBlocker blocker{ruleLists, hosts};
};

TEST_F(TrackerTest, WithoutRulesEverythingArrives) {
    EXPECT_TRUE(arrives(*window(), "ads.localhost"));
}

TEST_F(TrackerTest, BlocksListedHostsTheirSubdomainsAndPortsForOtherSites) {
    const auto configuration = window();
    installAndWait(*configuration);

    // The test's server has a port of its own, so a port stands in each of these addresses.
    EXPECT_FALSE(arrives(*configuration, "ads.localhost"));
    EXPECT_FALSE(arrives(*configuration, "a.b.ads.localhost"));
    EXPECT_FALSE(arrives(*configuration, "bat.search.localhost"));
}

TEST_F(TrackerTest, LeavesHostsThatMerelyResembleListedOnes) {
    const auto configuration = window();
    installAndWait(*configuration);

    EXPECT_TRUE(arrives(*configuration, "bads.localhost"));
    EXPECT_TRUE(arrives(*configuration, "www.search.localhost"));
    EXPECT_TRUE(arrives(*configuration, "cdn.localhost"));
}

TEST_F(TrackerTest, AListedHostMayAskItselfAndItsOwnSubdomains) {
    const auto configuration = window();
    installAndWait(*configuration);

    EXPECT_TRUE(arrives(*configuration, "ads.localhost", "ads.localhost"));
    EXPECT_TRUE(arrives(*configuration, "x.ads.localhost", "www.ads.localhost"));
}

TEST_F(TrackerTest, SeveralWindowsDuringTheCompileAreAllProtected) {
    const auto first = window();
    const auto second = window();
    const auto third = window();
    for (const auto* const each : {&first, &second, &third}) {
        blocker.install((*each)->userContentController());
    }

    EXPECT_TRUE(waitFor([&] { return !arrives(*first, "ads.localhost"); }));
    EXPECT_FALSE(arrives(*second, "ads.localhost"));
    EXPECT_FALSE(arrives(*third, "ads.localhost"));
}

TEST_F(TrackerTest, AWindowAfterTheCompileIsProtectedFromItsFirstRequestOn) {
    installAndWait(*window());
    const auto late = window();

    blocker.install(late->userContentController());

    EXPECT_FALSE(arrives(*late, "ads.localhost"));
}

TEST_F(TrackerTest, AFolderThatCannotBeMadeLeavesBrowsingAlone) {
    const auto file = folder / "file";
    std::ofstream{file} << "in the way";
    WebKitRuleListStore nowhere{file / "rules"};
    TrackerBlocker failing{nowhere, hosts};
    const auto configuration = window();
    failing.install(configuration->userContentController());
    settle();

    EXPECT_TRUE(arrives(*configuration, "ads.localhost"));
}

TEST_F(TrackerTest, TheTwentyRulesOfTheProgramCompile) {
    auto compiling = ruleLists.compile(std::string{TrackerBlocker::identifier},
                                       *TrackerBlocker::encodedRules(TrackerBlocker::domains));
    const auto wait = [](Future<ContentRuleListStore::Compiled> list) -> Task<bool> {
        co_return co_await list != nullptr;
    };
    auto task = wait(std::move(compiling));
    task.start();

    ASSERT_TRUE(waitFor([&] { return task.isDone(); }));
    EXPECT_TRUE(task.result());
}

TEST_F(TrackerTest, RulesThatAreNoneGiveNoList) {
    const auto wait = [](Future<ContentRuleListStore::Compiled> list) -> Task<bool> {
        co_return co_await list != nullptr;
    };
    for (const char* const bad : {"[]", "{", "", R"([{"trigger":{},"action":{"type":"block"}}])"}) {
        auto task = wait(ruleLists.compile("bad", bad));
        task.start();
        ASSERT_TRUE(waitFor([&] { return task.isDone(); })) << bad;
        EXPECT_FALSE(task.result()) << bad;
    }
}

}  // namespace
}  // namespace orvu

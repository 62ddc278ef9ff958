#include "engine/EngineWorld.h"

#include "shell/siteinfo/SitePanel.h"

#include <algorithm>

namespace orvu {
namespace {

/// A page that stores something of each sort, and one that tells what it finds.
constexpr auto keepAll = R"(<title>Keep</title><body><script>
document.cookie = 'taste=vanilla; Max-Age=9999';
localStorage.taste = 'vanilla';
const opening = indexedDB.open('tastes');
opening.onupgradeneeded = () => opening.result.createObjectStore('vanilla');
opening.onsuccess = async () => {
    const cache = await caches.open('tastes');
    await cache.put('/taste', new Response('vanilla'));
    document.body.dataset.kept = 'all';
};
</script>)";
constexpr auto tellAll = R"(<title>Tell</title><body><script>
(async () => {
    const bases = (await indexedDB.databases()).map(each => each.name);
    const found = [document.cookie, localStorage.taste ?? '', bases.join(), (await caches.keys())];
    document.body.dataset.found = found.join('/');
})();
</script>)";
constexpr auto everything = "taste=vanilla/vanilla/tastes/tastes";
constexpr auto nothing = "///";

class WebsiteDataTest : public EngineTest {
protected:
    WebsiteDataTest() {
        server.serve("/keep", keepAll);
        server.serve("/tell", tellAll);
    }

    /// What a page of that host says of itself in an attribute of its body.
    [[nodiscard]] std::string ask(WebConfiguration& window, const std::string& path,
                                  const std::string& host, const std::string& attribute) const {
        const auto view = window.makeWebView();
        const RecordingDelegate delegate{*view};
        view->load(url(path, host));
        std::string answer;
        EXPECT_TRUE(waitFor([&] {
            answer = evaluate(*view, "document.body?.dataset." + attribute + " ?? ''").text;
            return !answer.empty();
        }));
        return answer;
    }
    void keep(WebConfiguration& window, const std::string& host) const {
        EXPECT_EQ(ask(window, "/keep", host, "kept"), "all");
    }
    [[nodiscard]] std::string found(WebConfiguration& window, const std::string& host) const {
        return ask(window, "/tell", host, "found");
    }
    [[nodiscard]] static std::vector<std::string> records(WebConfiguration& window) {
        const auto view = window.makeWebView();
        const auto read = [](std::shared_ptr<WebsiteData> data) -> Task<std::vector<std::string>> {
            co_return co_await data->records();
        };
        auto task = read(view->websiteData());
        task.start();
        EXPECT_TRUE(waitFor([&] { return task.isDone(); }));
        auto names = task.result();
        std::ranges::sort(names);
        return names;
    }
    [[nodiscard]] static bool remove(WebConfiguration& window, std::vector<std::string> names) {
        const auto view = window.makeWebView();
        const auto run = [](std::shared_ptr<WebsiteData> data,
                            std::vector<std::string> gone) -> Task<bool> {
            co_return co_await data->remove(std::move(gone));
        };
        auto task = run(view->websiteData(), std::move(names));
        task.start();
        EXPECT_TRUE(waitFor([&] { return task.isDone(); }));
        return task.result();
    }

    const Uuid work = Uuid::random();
};

TEST_F(WebsiteDataTest, OnlyTheNamedRecordsOfTheOneProfileGo) {
    const auto home = engine.makeConfiguration(WebsiteDataStore::defaultDataStore());
    const auto office = engine.makeConfiguration(WebsiteDataStore::dataStoreForIdentifier(work));
    for (auto* const window : {home.get(), office.get()}) {
        keep(*window, "127.0.0.1");
        keep(*window, "localhost");
    }
    ASSERT_EQ(records(*home), (std::vector<std::string>{"127.0.0.1", "localhost"}));

    EXPECT_TRUE(remove(*home, {"localhost"}));

    EXPECT_EQ(found(*home, "localhost"), nothing);
    EXPECT_EQ(found(*home, "127.0.0.1"), everything);
    EXPECT_EQ(found(*office, "localhost"), everything);
}

TEST_F(WebsiteDataTest, DataOfAPrivateWindowCanBeRemovedAsWell) {
    const auto window = engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    keep(*window, "localhost");

    EXPECT_TRUE(remove(*window, {"localhost"}));

    EXPECT_EQ(found(*window, "localhost"), nothing);
}

TEST_F(WebsiteDataTest, RemovingNothingChangesNothing) {
    const auto window = engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    keep(*window, "localhost");

    EXPECT_TRUE(remove(*window, {}));
    EXPECT_TRUE(remove(*window, {"somebody.example"}));

    EXPECT_EQ(found(*window, "localhost"), everything);
}

TEST_F(WebsiteDataTest, ADroppedRemovalIsDoneAllTheSame) {
    const auto window = engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    keep(*window, "localhost");

    static_cast<void>(window->makeWebView()->websiteData()->remove({"localhost"}));

    EXPECT_TRUE(waitFor([&] { return records(*window).empty(); }));
}

TEST_F(WebsiteDataTest, AllOfOneProfileGoesAndNothingOfAnother) {
    const auto home = engine.makeConfiguration(WebsiteDataStore::defaultDataStore());
    const auto office = engine.makeConfiguration(WebsiteDataStore::dataStoreForIdentifier(work));
    for (auto* const window : {home.get(), office.get()}) {
        keep(*window, "127.0.0.1");
        keep(*window, "localhost");
    }

    const auto clearing = engine.clearDataStore(WebsiteDataStore::defaultDataStore());
    EXPECT_TRUE(waitFor([&] { return clearing.await_ready(); }));

    for (const auto* const host : {"127.0.0.1", "localhost"}) {
        EXPECT_EQ(found(*home, host), nothing);
        EXPECT_EQ(found(*office, host), everything);
    }
}

TEST_F(WebsiteDataTest, AProfileWithoutAWindowCanBeCleared) {
    keep(*engine.makeConfiguration(WebsiteDataStore::defaultDataStore()), "localhost");

    static_cast<void>(engine.clearDataStore(WebsiteDataStore::defaultDataStore()));

    const auto window = engine.makeConfiguration(WebsiteDataStore::defaultDataStore());
    EXPECT_TRUE(waitFor([&] { return records(*window).empty(); }));
    EXPECT_EQ(found(*window, "localhost"), nothing);
}

TEST_F(WebsiteDataTest, SubdomainsShareTheRecordOfTheirDomain) {
    const auto window = engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());

    keep(*window, "a.shop.localhost");
    keep(*window, "b.shop.localhost");

    EXPECT_EQ(records(*window), std::vector<std::string>{"shop.localhost"});
}

TEST_F(WebsiteDataTest, ThePanelClearsItsSiteAndLoadsThePageAnew) {
    BrowserStore store{services(), false, Profile::personal()};
    const auto window = engine.makeConfiguration(WebsiteDataStore::defaultDataStore());
    keep(*window, "127.0.0.1");
    keep(*window, "localhost");
    store.open(server.url("/tell", "localhost"), BrowserStore::NewTab::no);
    ASSERT_TRUE(waitFor([&] { return store.visits().size() == 1; }));
    SitePanel panel{services().permissions(), store.persistence()};
    panel.setTab(store.active());

    panel.clearSiteData();
    EXPECT_TRUE(waitFor([&] { return panel.isCleared(); }));

    EXPECT_TRUE(waitFor([&] { return server.requests("/tell") == 2; }));
    EXPECT_EQ(found(*window, "localhost"), nothing);
    EXPECT_EQ(found(*window, "127.0.0.1"), everything);
}

}  // namespace
}  // namespace orvu

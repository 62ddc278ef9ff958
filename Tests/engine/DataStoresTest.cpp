#include "engine/EngineWorld.h"

#include <fstream>
#include <iterator>

namespace orvu {
namespace {

class DataStoresTest : public EngineTest {
protected:
    DataStoresTest() {
        server.serve("/set", LoopbackServer::Answer{
                                 .body = "<title>Set</title>",
                                 .headers = {{"Set-Cookie", "taste=vanilla; Max-Age=9999"}}});
        server.serve("/ask", "<title>Ask</title>");
    }

    /// Loads a page in a view of its own with that store, and gives the cookies it sent.
    std::string visit(WebConfiguration& configuration, const std::string& path) {
        const auto view = configuration.makeWebView();
        RecordingDelegate delegate{*view};
        loadAndWait(*view, delegate, path);
        return server.header(path, "Cookie");
    }
    std::string visit(const WebsiteDataStore& store, const std::string& path) {
        return visit(*engine.makeConfiguration(store), path);
    }
    [[nodiscard]] bool anyFileHolds(const std::string& text) const {
        std::error_code error;
        for (const auto& entry : std::filesystem::recursive_directory_iterator{folder, error}) {
            if (!entry.is_regular_file()) continue;
            std::ifstream file{entry.path(), std::ios::binary};
            const std::string bytes{std::istreambuf_iterator<char>{file}, {}};
            if (bytes.contains(text)) return true;
        }
        return false;
    }

    const Uuid work = *Uuid::parse("11111111-2222-4333-8444-555555555555");
};

TEST_F(DataStoresTest, WindowsOfOneProfileShareTheirCookies) {
    const auto first = engine.makeConfiguration(WebsiteDataStore::defaultDataStore());
    const auto second = engine.makeConfiguration(WebsiteDataStore::defaultDataStore());

    visit(*first, "/set");

    EXPECT_EQ(visit(*second, "/ask"), "taste=vanilla");
}

TEST_F(DataStoresTest, ProfilesDoNotShareCookies) {
    visit(WebsiteDataStore::defaultDataStore(), "/set");

    EXPECT_EQ(visit(WebsiteDataStore::dataStoreForIdentifier(work), "/ask"), "");
}

TEST_F(DataStoresTest, EachPrivateWindowStartsWithoutCookiesAndLeavesNoFile) {
    visit(WebsiteDataStore::nonPersistentDataStore(), "/set");
    settle();

    EXPECT_EQ(visit(WebsiteDataStore::nonPersistentDataStore(), "/ask"), "");
    EXPECT_FALSE(anyFileHolds("vanilla"));
}

TEST_F(DataStoresTest, CookiesOfAProfileAreKeptOnDisk) {
    visit(WebsiteDataStore::dataStoreForIdentifier(work), "/set");

    EXPECT_TRUE(waitFor([&] { return anyFileHolds("vanilla"); }));
}

TEST_F(DataStoresTest, RemovingAProfilesDataDeletesItsFolders) {
    visit(WebsiteDataStore::dataStoreForIdentifier(work), "/set");
    ASSERT_TRUE(waitFor([&] { return anyFileHolds("vanilla"); }));
    const auto data = folder / "data" / "profiles" / work.string();
    ASSERT_TRUE(std::filesystem::exists(data));

    engine.removeDataStore(work);

    EXPECT_TRUE(waitFor([&] { return !std::filesystem::exists(data); }));
    EXPECT_FALSE(anyFileHolds("vanilla"));
}

TEST_F(DataStoresTest, RemovingDataThatAWindowStillUsesForgetsTheCookies) {
    const auto open = engine.makeConfiguration(WebsiteDataStore::dataStoreForIdentifier(work));
    visit(*open, "/set");

    engine.removeDataStore(work);
    const auto data = folder / "data" / "profiles" / work.string();
    ASSERT_TRUE(waitFor([&] { return !std::filesystem::exists(data); }));

    EXPECT_EQ(visit(*open, "/ask"), "");
}

TEST_F(DataStoresTest, FoldersOfProfilesThatAreGoneAreTidiedUp) {
    const Uuid kept = Uuid::random();
    const auto profiles = folder / "data" / "profiles";
    std::filesystem::create_directories(profiles / work.string());
    std::filesystem::create_directories(profiles / kept.string());
    std::filesystem::create_directories(profiles / "somebody's folder");

    engine.removeDataStoresExcept({kept});

    EXPECT_TRUE(waitFor([&] { return !std::filesystem::exists(profiles / work.string()); }));
    EXPECT_TRUE(std::filesystem::exists(profiles / kept.string()));
    EXPECT_TRUE(std::filesystem::exists(profiles / "somebody's folder"));
}

/// The engine tells the end of a download even after its failure: whoever keeps the state of one
/// must not take the end for success.
TEST_F(DataStoresTest, ACancelledDownloadFailsAndThenFinishes) {
    server.serve("/held", LoopbackServer::Answer{.body = "", .held = true});
    const WebKitSession session;
    std::vector<std::string> heard;
    WebKitDownload* const download =
        webkit_network_session_download_uri(session.get(), server.url("/held").c_str());
    g_signal_connect(download, "failed", G_CALLBACK(+[](WebKitDownload*, GError*, gpointer data) {
                         static_cast<std::vector<std::string>*>(data)->emplace_back("failed");
                     }),
                     &heard);
    g_signal_connect(download, "finished", G_CALLBACK(+[](WebKitDownload*, gpointer data) {
                         static_cast<std::vector<std::string>*>(data)->emplace_back("finished");
                     }),
                     &heard);
    ASSERT_TRUE(waitFor([&] { return server.requests("/held") == 1; }));

    webkit_download_cancel(download);
    ASSERT_TRUE(waitFor([&] { return heard.size() == 2; }));

    EXPECT_EQ(heard, (std::vector<std::string>{"failed", "finished"}));
    g_object_unref(download);
}

}  // namespace
}  // namespace orvu

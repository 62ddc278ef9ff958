#include "engine/EngineWorld.h"

#include <algorithm>

namespace orvu {
namespace {

class DecisionsTest : public EngineTest {
protected:
    BrowserStore store{services(), false, Profile::personal()};

    /// Opens a page in the active tab and waits for its visit.
    void openPage(const std::string& path, const std::string& html) {
        server.serve(path, html);
        const auto before = store.visits().size();
        store.open(server.url(path), BrowserStore::NewTab::no);
        ASSERT_TRUE(waitFor([&] { return store.visits().size() > before; })) << path;
    }
    [[nodiscard]] std::vector<std::string> tabUrls() const {
        std::vector<std::string> urls;
        for (const auto& tab : store.tabs()) {
            urls.push_back(tab->url() ? tab->url()->absoluteString() : "");
        }
        return urls;
    }
    [[nodiscard]] std::vector<std::string> visitedUrls() const {
        std::vector<std::string> urls;
        for (const auto& visit : store.visits()) urls.push_back(visit.url.absoluteString());
        return urls;
    }
};

TEST_F(DecisionsTest, ALinkWithABlankTargetOpensOneBackgroundTab) {
    server.serve("/target", "<title>Target</title>");
    openPage("/page",
             "<title>Page</title><a id=l target=_blank href=/target>link</a>"
             "<script>setTimeout(() => document.getElementById('l').click())</script>");

    ASSERT_TRUE(waitFor([&] { return store.tabs().size() > 1; }));
    settle();

    EXPECT_EQ(tabUrls(), (std::vector{server.url("/page"), server.url("/target")}));
    EXPECT_EQ(store.active(), store.tabs().front());
}

TEST_F(DecisionsTest, ASecondScriptedPopupWithinThreeSecondsIsDropped) {
    server.serve("/one", "<title>One</title>");
    server.serve("/two", "<title>Two</title>");
    openPage("/page",
             "<title>Page</title><script>setTimeout(() => { window.open('/one');"
             "window.open('/two'); })</script>");

    ASSERT_TRUE(waitFor([&] { return store.tabs().size() > 1; }));
    settle();

    EXPECT_EQ(tabUrls(), (std::vector{server.url("/page"), server.url("/one")}));
}

TEST_F(DecisionsTest, APopupWithoutAnAddressOpensNothing) {
    openPage("/page", "<title>Page</title><script>window.open()</script>");
    settle();

    EXPECT_EQ(store.tabs().size(), 1u);
}

TEST_F(DecisionsTest, AWebPageCannotOpenAFileInANewTab) {
    openPage("/page",
             "<title>Page</title><a id=l target=_blank href='file:///etc/hostname'>x</a>"
             "<script>setTimeout(() => { document.getElementById('l').click();"
             "window.open('file:///etc/hostname'); location.href = 'file:///etc/hostname';"
             "})</script>");
    settle();

    EXPECT_EQ(tabUrls(), std::vector{server.url("/page")});
}

TEST_F(DecisionsTest, AWebPageCannotOpenWhatIsNoPageOfTheWebInANewTab) {
    openPage("/page",
             "<title>Page</title><a id=l target=_blank>x</a><script>setTimeout(() => {"
             "for (const each of ['data:text/html,x', 'javascript:1', 'webkit://gpu',"
             "'made-up:x', 'about:srcdoc', 'blob:https://other.example/1']) {"
             "window.open(each); document.getElementById('l').href = each;"
             "document.getElementById('l').click(); } })</script>");
    settle();

    EXPECT_EQ(tabUrls(), std::vector{server.url("/page")});
}

TEST_F(DecisionsTest, LinksThatScriptsClickCountAsScriptedPopups) {
    openPage("/page",
             "<title>Page</title><a id=l target=_blank>x</a><script>setTimeout(() => {"
             "for (let i = 0; i < 25; i++) { document.getElementById('l').href = '/' + i;"
             "document.getElementById('l').click(); } })</script>");
    ASSERT_TRUE(waitFor([&] { return store.tabs().size() > 1; }));
    settle();

    EXPECT_EQ(tabUrls(), (std::vector{server.url("/page"), server.url("/0")}));
}

TEST_F(DecisionsTest, AFirstLoadThatBecomesADownloadLeavesAnEmptyTab) {
    server.serve("/file", LoopbackServer::Answer{
                              .body = "x", .headers = {{"Content-Disposition", "attachment"}}});

    auto& tab = store.newTab(url("/file"), BrowserStore::Select::yes);
    ASSERT_TRUE(waitFor([&] { return tab.isNewTab(); }));
    settle();

    EXPECT_EQ(tabUrls(), (std::vector<std::string>{"", ""}));
    EXPECT_EQ(defaults.data("browserSession"), "[]");
}

TEST_F(DecisionsTest, AnAttachmentBecomesADownloadAndLeavesThePage) {
    server.serve("/file", LoopbackServer::Answer{
                              .body = "<title>File</title>",
                              .headers = {{"Content-Disposition", "Attachment; filename=f.html"}}});
    openPage("/page", "<title>Page</title>");

    store.open(server.url("/file"), BrowserStore::NewTab::no);
    ASSERT_TRUE(waitFor([&] { return server.requests("/file") == 1; }));
    ASSERT_TRUE(waitFor([&] { return store.active()->url() == url("/page"); }));
    settle();

    EXPECT_EQ(visitedUrls(), std::vector{server.url("/page")});
    EXPECT_EQ(store.active()->title(), "Page");
}

TEST_F(DecisionsTest, AnAttachmentInAFrameIsNotMadeADownloadByUs) {
    server.serve("/frame",
                 LoopbackServer::Answer{.body = "<title>Frame</title>",
                                        .headers = {{"Content-Disposition", "attachment"}}});
    auto configuration = engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    const auto view = configuration->makeWebView();
    RecordingDelegate delegate{*view};
    server.serve("/page", "<title>Page</title><iframe src=/frame></iframe>");

    loadAndWait(*view, delegate, "/page");

    const auto frame = std::ranges::find(delegate.responses, "attachment",
                                         &NavigationResponse::contentDisposition);
    ASSERT_NE(frame, delegate.responses.end());
    EXPECT_FALSE(frame->isForMainFrame);
}

TEST_F(DecisionsTest, ATypeThatTheEngineCannotShowBecomesADownload) {
    server.serve("/bytes", LoopbackServer::Answer{.body = "123", .type = "application/x-orvu"});
    openPage("/page", "<title>Page</title>");

    store.open(server.url("/bytes"), BrowserStore::NewTab::no);
    ASSERT_TRUE(waitFor([&] { return server.requests("/bytes") == 1; }));
    ASSERT_TRUE(waitFor([&] { return store.active()->url() == url("/page"); }));

    EXPECT_EQ(visitedUrls(), std::vector{server.url("/page")});
}

TEST_F(DecisionsTest, VisitsAreFinishedPagesOnly) {
    server.serve("/to", "<title>To</title>");
    server.serve("/from", LoopbackServer::Answer{
                              .body = "", .status = 302, .headers = {{"Location", "/to"}}});
    openPage("/a", "<title>A</title>");

    store.open(server.deadUrl("/nobody").absoluteString(), BrowserStore::NewTab::no);
    ASSERT_TRUE(waitFor([&] { return store.active()->url() == url("/a"); }));
    settle();
    store.open(server.url("/from"), BrowserStore::NewTab::no);
    ASSERT_TRUE(waitFor([&] { return store.visits().size() == 2; }));
    store.active()->webView().reload();
    ASSERT_TRUE(waitFor([&] { return server.requests("/to") == 2; }));
    settle();

    EXPECT_EQ(visitedUrls(), (std::vector{server.url("/a"), server.url("/to")}));
    EXPECT_EQ(store.visits().back().title, "To");
}

TEST_F(DecisionsTest, PageTextIsCutToWholeCharacters) {
    openPage("/page", "<meta charset=utf-8><title>Page</title><body>a👩‍👩‍👧bc");

    auto task = store.active()->pageText(3);
    task.start();
    ASSERT_TRUE(waitFor([&] { return task.isDone(); }));

    EXPECT_EQ(task.result(), "a👩‍👩‍👧b");
}

TEST_F(DecisionsTest, ATabMayBeClosedByWhoeverHearsOfItsTitle) {
    const std::weak_ptr<BrowserTab> closing = store.tabs().front();
    store.tabs().front()->connectChanged([&] {
        const auto tab = closing.lock();
        if (tab && tab->title() == "A") store.close(*tab);
    });
    server.serve("/a", "<title>A</title>");

    store.open(server.url("/a"), BrowserStore::NewTab::no);
    ASSERT_TRUE(waitFor([&] { return closing.expired(); }));
    settle();

    EXPECT_TRUE(store.visits().empty());
    EXPECT_EQ(tabUrls(), std::vector<std::string>{""});
}

TEST_F(DecisionsTest, ATabMayBeClosedWhileItsVisitIsRecorded) {
    store.newTab(std::nullopt, BrowserStore::Select::no);
    const std::weak_ptr<BrowserTab> closing = store.tabs().front();
    bool closed = false;
    store.connectChanged([&] {
        if (store.visits().empty() || std::exchange(closed, true)) return;
        store.close(*store.tabs().front());
    });

    server.serve("/a", "<title>A</title>");
    store.open(server.url("/a"), BrowserStore::NewTab::no);
    ASSERT_TRUE(waitFor([&] { return closed; }));
    settle();

    EXPECT_TRUE(closing.expired());
    EXPECT_EQ(store.tabs().size(), 1u);
}

}  // namespace
}  // namespace orvu

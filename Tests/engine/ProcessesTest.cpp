#include "engine/EngineWorld.h"

#include <signal.h>

namespace orvu {
namespace {

class ProcessesTest : public EngineTest {
protected:
    BrowserStore store{services(), false, Profile::personal()};

    void openPage(const std::string& path) {
        server.serve(path, LoopbackServer::Answer{.body = "<title>" + path + "</title>",
                                                  .headers = {{"Cache-Control", "no-store"}}});
        const int before = server.requests(path);
        store.open(server.url(path), BrowserStore::NewTab::no);
        ASSERT_TRUE(waitFor([&] {
            return server.requests(path) > before && !store.active()->isLoading() &&
                   store.active()->title() == path;
        }));
    }
    void killPage() {
        const auto processes = pageProcesses();
        ASSERT_EQ(processes.size(), 1u);
        ::kill(processes.front(), SIGKILL);
    }
};

TEST_F(ProcessesTest, AClosedTabLeavesNoPageProcess) {
    openPage("/a");
    ASSERT_EQ(pageProcesses().size(), 1u);

    store.close(*store.active());

    EXPECT_TRUE(waitFor([] { return pageProcesses().empty(); }));
}

TEST_F(ProcessesTest, AParkedTabLeavesNoPageProcess) {
    openPage("/a");
    ASSERT_EQ(pageProcesses().size(), 1u);

    store.park(*store.active());

    EXPECT_TRUE(waitFor([] { return pageProcesses().empty(); }));
    EXPECT_EQ(store.shelf().size(), 1u);
}

TEST_F(ProcessesTest, AnEmptyTabHasNoPageProcess) {
    settle();

    EXPECT_TRUE(pageProcesses().empty());
}

TEST_F(ProcessesTest, ACrashedPageIsLoadedAgainOnceAndThenKeepsItsAddress) {
    openPage("/a");

    killPage();
    ASSERT_TRUE(waitFor([&] { return server.requests("/a") == 2; }));
    ASSERT_TRUE(waitFor([&] { return !store.active()->isLoading(); }));
    EXPECT_EQ(store.active()->url(), url("/a"));
    killPage();
    ASSERT_TRUE(waitFor([] { return pageProcesses().empty(); }));
    settle();

    EXPECT_EQ(server.requests("/a"), 2);
    EXPECT_EQ(store.active()->url(), url("/a"));
    EXPECT_EQ(store.visits().size(), 1u);
}

TEST_F(ProcessesTest, ACrashedPageComesBackWhenItIsReloadedByHand) {
    openPage("/a");
    killPage();
    ASSERT_TRUE(
        waitFor([&] { return server.requests("/a") == 2 && !store.active()->isLoading(); }));
    killPage();
    ASSERT_TRUE(waitFor([] { return pageProcesses().empty(); }));
    settle();

    store.active()->webView().reload();

    EXPECT_TRUE(waitFor([&] { return server.requests("/a") == 3; }));
}

}  // namespace
}  // namespace orvu

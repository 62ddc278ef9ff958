#include "engine/EngineWorld.h"

#include <signal.h>

namespace orvu {
namespace {

class ProcessesTest : public EngineTest {
protected:
    /// The page processes of this test. The engine keeps some that previous tests left for a while.
    [[nodiscard]] std::vector<int> ownProcesses() const { return pageProcessesSince(previous); }
    const std::vector<int> previous = pageProcesses();
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
    void killPage() const {
        const auto processes = ownProcesses();
        ASSERT_EQ(processes.size(), 1u);
        ::kill(processes.front(), SIGKILL);
    }
};

TEST_F(ProcessesTest, AClosedTabLeavesNoPageProcess) {
    openPage("/a");
    ASSERT_EQ(ownProcesses().size(), 1u);

    store.close(*store.active());

    EXPECT_TRUE(waitFor([this] { return ownProcesses().empty(); }));
}

TEST_F(ProcessesTest, AParkedTabLeavesNoPageProcess) {
    openPage("/a");
    ASSERT_EQ(ownProcesses().size(), 1u);

    store.park(*store.active());

    EXPECT_TRUE(waitFor([this] { return ownProcesses().empty(); }));
    EXPECT_EQ(store.shelf().size(), 1u);
}

TEST_F(ProcessesTest, AnEmptyTabHasNoPageProcess) {
    settle();

    EXPECT_TRUE(ownProcesses().empty());
}

TEST_F(ProcessesTest, ACrashedPageIsLoadedAgainOnceAndThenKeepsItsAddress) {
    openPage("/a");

    killPage();
    ASSERT_TRUE(waitFor([&] { return server.requests("/a") == 2; }));
    ASSERT_TRUE(waitFor([&] { return !store.active()->isLoading(); }));
    EXPECT_EQ(store.active()->url(), url("/a"));
    killPage();
    ASSERT_TRUE(waitFor([this] { return ownProcesses().empty(); }));
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
    ASSERT_TRUE(waitFor([this] { return ownProcesses().empty(); }));
    settle();

    store.active()->webView().reload();

    EXPECT_TRUE(waitFor([&] { return server.requests("/a") == 3; }));
}

}  // namespace
}  // namespace orvu

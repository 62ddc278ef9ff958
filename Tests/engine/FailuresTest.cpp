#include "engine/EngineWorld.h"
#include "platform/linux/web/LoadErrors.h"

#include <algorithm>
#include <csignal>

namespace orvu {
namespace {

/// A loop in which what is to come after a long time comes soon.
class HurriedMainLoop : public GlibMainLoop {
public:
    [[nodiscard]] Scheduled after(std::chrono::milliseconds delay,
                                  std::function<void()> work) override {
        return GlibMainLoop::after(std::min(delay, std::chrono::milliseconds{300}),
                                   std::move(work));
    }
};

class FailuresTest : public EngineTest {
protected:
    std::unique_ptr<WebConfiguration> configuration =
        engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    std::unique_ptr<WebView> view = configuration->makeWebView();
    RecordingDelegate delegate{*view};

    /// Why a load failed; nothing if it is not said.
    [[nodiscard]] std::optional<LoadFailure> failureOf(const Url& address) {
        view->load(address);
        if (!waitFor([&] { return view->failure().has_value(); })) return std::nullopt;
        return view->failure();
    }
};

TEST_F(FailuresTest, AServerThatTakesNoConnectionRefused) {
    const Url nobody = server.deadUrl("/nobody");

    const auto failure = failureOf(nobody);

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->cause, LoadFailureCause::refused);
    EXPECT_EQ(failure->url, nobody);
}

TEST_F(FailuresTest, ANameThatNobodyHasIsNoSite) {
    const auto failure = failureOf(*Url::parse("http://nobody.invalid/"));

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->cause, LoadFailureCause::noSuchName);
}

TEST_F(FailuresTest, WithoutANetworkTheNameIsNotToBlame) {
    network.available = false;

    const auto failure = failureOf(*Url::parse("http://nobody.invalid/"));

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->cause, LoadFailureCause::noNetwork);
}

TEST_F(FailuresTest, RedirectsWithoutEndAreGivenUp) {
    server.serve("/round",
                 LoopbackServer::Answer{.status = 302, .headers = {{"Location", "/round"}}});

    const auto failure = failureOf(url("/round"));

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->cause, LoadFailureCause::tooManyRedirects);
}

TEST_F(FailuresTest, AFileThatIsNotThereIsSaid) {
    const auto failure = failureOf(*Url::parse("file:///nowhere/at/all.html"));

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->cause, LoadFailureCause::noSuchFile);
}

TEST_F(FailuresTest, AnAddressOfAnotherProgramIsSaidAndStartsNoProcess) {
    server.serve("/a", "<title>A</title>");
    loadAndWait(*view, delegate, "/a");
    const auto before = pageProcesses();

    std::ignore = evaluate(*view, "location.href = 'mailto:ada@site.example'; 1");
    ASSERT_TRUE(waitFor([&] { return view->failure().has_value(); }));

    EXPECT_EQ(view->failure()->cause, LoadFailureCause::otherProgram);
    EXPECT_EQ(view->failure()->url.absoluteString(), "mailto:ada@site.example");
    EXPECT_EQ(view->url(), url("/a"));
    EXPECT_TRUE(pageProcessesSince(before).empty());
}

TEST_F(FailuresTest, ALoadWithoutAnAnswerIsGivenUpInTime) {
    HurriedMainLoop hurried;
    WebKitEngine hurriedEngine{paths, hurried, fakes.activity, network};
    const auto pages = hurriedEngine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    server.serve("/held", LoopbackServer::Answer{.body = "", .held = true});
    const auto page = pages->makeWebView();

    page->load(url("/held"));
    ASSERT_TRUE(waitFor([&] { return page->failure().has_value(); }));

    EXPECT_EQ(page->failure()->cause, LoadFailureCause::timedOut);
    EXPECT_EQ(page->failure()->url, url("/held"));
    ASSERT_TRUE(waitFor([&] { return !page->isLoading(); }));
    EXPECT_EQ(page->failure()->cause, LoadFailureCause::timedOut) << "its end says no more";
}

TEST_F(FailuresTest, APageThatNeverCameInTimeIsTriedAgainWhenTheNetworkComesBack) {
    HurriedMainLoop hurried;
    WebKitEngine hurriedEngine{paths, hurried, fakes.activity, network};
    const auto pages = hurriedEngine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    server.serve("/held", LoopbackServer::Answer{.body = "", .held = true});
    const auto page = pages->makeWebView();
    page->load(url("/held"));
    ASSERT_TRUE(waitFor([&] { return page->failure().has_value() && !page->isLoading(); }));
    settle();

    network.cameBack.emit();

    EXPECT_TRUE(waitFor([&] { return page->isLoading(); }));
}

TEST_F(FailuresTest, ASlowPageThatHasBegunIsNotGivenUp) {
    HurriedMainLoop hurried;
    WebKitEngine hurriedEngine{paths, hurried, fakes.activity, network};
    const auto pages = hurriedEngine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    server.serve("/drip",
                 LoopbackServer::Answer{.body = "<title>Slow</title><p>" + std::string(4000, 'x'),
                                        .drips = true});
    const auto page = pages->makeWebView();
    page->load(url("/drip"));
    ASSERT_TRUE(waitFor([&] { return page->title() == "Slow"; }));

    // What the watch would wait for has come.
    bool over = false;
    const auto minute = hurried.after(LoadWatch::answerTime, [&] { over = true; });
    ASSERT_TRUE(waitFor([&] { return over; }));

    EXPECT_TRUE(page->isLoading());
    EXPECT_FALSE(page->failure());
    server.completeDrips();
}

TEST_F(FailuresTest, WhatThePersonStoppedIsNoFailure) {
    server.serve("/held", LoopbackServer::Answer{.body = "", .held = true});
    view->load(url("/held"));
    ASSERT_TRUE(waitFor([&] { return server.requests("/held") == 1; }));

    view->stopLoading();
    ASSERT_TRUE(waitFor([&] { return !view->isLoading(); }));
    settle();

    EXPECT_FALSE(view->failure());
}

TEST_F(FailuresTest, AnAnswerWithoutContentAndADownloadAreNoFailures) {
    server.serve("/a", "<title>A</title>");
    loadAndWait(*view, delegate, "/a");
    server.serve("/empty", LoopbackServer::Answer{.status = 204});

    view->load(url("/empty"));
    ASSERT_TRUE(waitFor([&] { return server.requests("/empty") == 1 && !view->isLoading(); }));
    settle();
    EXPECT_FALSE(view->failure());

    delegate.responsePolicy = ResponsePolicy::download;
    view->load(url("/a"));
    ASSERT_TRUE(waitFor([&] { return server.requests("/a") == 2 && !view->isLoading(); }));
    settle();
    EXPECT_FALSE(view->failure());
}

TEST_F(FailuresTest, TheNextLoadTakesAFailureAway) {
    server.serve("/a", "<title>A</title>");
    ASSERT_TRUE(failureOf(server.deadUrl("/nobody")));

    loadAndWait(*view, delegate, "/a");

    EXPECT_FALSE(view->failure());
}

TEST_F(FailuresTest, APageWhoseProcessEndsTwiceIsSaid) {
    server.serve("/a", "<title>A</title>");
    loadAndWait(*view, delegate, "/a");
    for (int time = 1; time <= 2; ++time) {
        const auto pages = pageProcesses();
        for (const int process : pages) kill(process, SIGKILL);
        const auto finished = delegate.finishedTitles.size();
        ASSERT_TRUE(waitFor([&] {
            return delegate.finishedTitles.size() > finished || view->failure().has_value();
        }));
        EXPECT_EQ(view->failure().has_value(), time == 2);
    }

    EXPECT_EQ(view->failure()->cause, LoadFailureCause::processEnded);
    EXPECT_EQ(view->failure()->url, url("/a"));
}

TEST(LoadErrorsTest, OfSeveralFaultsOfACertificateTheGravestIsSaid) {
    EXPECT_EQ(certificateFault(static_cast<GTlsCertificateFlags>(G_TLS_CERTIFICATE_EXPIRED |
                                                                 G_TLS_CERTIFICATE_BAD_IDENTITY)),
              CertificateFault::wrongHost);
    EXPECT_EQ(certificateFault(G_TLS_CERTIFICATE_NOT_ACTIVATED), CertificateFault::notYetValid);
    EXPECT_EQ(certificateFault(G_TLS_CERTIFICATE_GENERIC_ERROR), CertificateFault::other);
}

}  // namespace
}  // namespace orvu

#include "engine/EngineWorld.h"

#include <fstream>
#include <set>

namespace orvu {
namespace {

/// What pages open in new tabs, and what the target's server sees of it. Every name below
/// "localhost" is a site of its own, and leads to the one server.
class OpeningTest : public EngineTest {
protected:
    static constexpr auto opener = "www.one.localhost";
    static constexpr auto sameSite = "files.one.localhost";
    static constexpr auto otherSite = "www.two.localhost";

    OpeningTest() {
        server.serve("/cookies",
                     LoopbackServer::Answer{.body = "<title>Cookies</title>",
                                            .headers = {{"Set-Cookie", "strict=1; SameSite=Strict"},
                                                        {"Set-Cookie", "lax=1; SameSite=Lax"},
                                                        {"Set-Cookie", "plain=1"}}});
        server.serve("/target", "<title>Target</title>");
    }

    /// Has a host give cookies of each kind.
    void takeCookies(const std::string& host) {
        store.open(server.url("/cookies", host), BrowserStore::NewTab::no);
        ASSERT_TRUE(waitFor([&] { return store.active()->title() == "Cookies"; }));
        ASSERT_TRUE(waitFor([&] { return !store.active()->isLoading(); }));
        settle();
    }
    /// Shows a page at the opener and runs the page's own script, without a gesture.
    void openPage(const std::string& script, LoopbackServer::Answer answer = {}) {
        answer.body = "<title>Page</title><script>setTimeout(() => {" + script + "})</script>";
        server.serve("/page", std::move(answer));
        store.open(server.url("/page?secret", opener), BrowserStore::NewTab::no);
    }
    /// Has the page open an address, and waits for the tab and its request.
    std::shared_ptr<BrowserTab> open(const std::string& script, const std::string& path) {
        const int before = server.requests(path);
        const auto tabs = store.tabs().size();
        openPage(script);
        EXPECT_TRUE(waitFor([&] { return server.requests(path) > before; })) << script;
        EXPECT_TRUE(waitFor([&] { return store.tabs().size() > tabs; })) << script;
        return store.tabs().back();
    }
    /// Shows a page at the opener that opens nothing by itself.
    void showPage() {
        openPage("");
        ASSERT_TRUE(waitFor([&] { return store.active()->title() == "Page"; }));
        ASSERT_TRUE(waitFor([&] { return !store.active()->isLoading(); }));
        settle();
    }
    /// The tab that a link of that page opens, with a gesture.
    [[nodiscard]] std::shared_ptr<BrowserTab> clickedLink() {
        const auto tabs = store.tabs().size();
        static_cast<void>(evaluate(store.active()->webView(),
                                   "{ const link = document.createElement('a');"
                                   "link.target = '_blank'; link.href = '" +
                                       server.url("/target", otherSite) + "'; link.click(); }"));
        EXPECT_TRUE(waitFor([&] { return store.tabs().size() > tabs; }));
        return store.tabs().back();
    }
    /// Lets so many events come.
    static void turnLoop(int times) {
        for (int i = 0; i < times; ++i) g_main_context_iteration(nullptr, TRUE);
    }
    [[nodiscard]] std::string windowOpen(const std::string& host,
                                         const std::string& features = "") const {
        return "window.open('" + server.url("/target", host) + "', '_blank', '" + features + "');";
    }
    /// The names of the cookies that came to the target, sorted.
    [[nodiscard]] std::vector<std::string> cookies(const std::string& path = "/target") const {
        std::vector<std::string> names;
        const std::string header = server.header(path, "Cookie");
        for (const char* const name : {"lax", "plain", "strict"}) {
            if (header.contains(std::string{name} + "=1")) names.emplace_back(name);
        }
        return names;
    }
    [[nodiscard]] std::string referrer() const { return server.header("/target", "Referer"); }
    [[nodiscard]] std::string site() const { return server.header("/target", "Sec-Fetch-Site"); }
    [[nodiscard]] std::string origin() const { return server.url("/", opener); }

    using Names = std::vector<std::string>;
    const Names all{"lax", "plain", "strict"};
    const Names withoutStrict{"lax", "plain"};

    BrowserStore store{services(), false, Profile::personal()};
};

TEST_F(OpeningTest, AnotherSitesPageIsAskedForInThePagesName) {
    takeCookies(otherSite);

    const auto tab = open(windowOpen(otherSite), "/target");

    EXPECT_EQ(cookies(), withoutStrict);
    EXPECT_EQ(referrer(), origin());
    EXPECT_EQ(site(), "cross-site");
    EXPECT_TRUE(waitFor([&] { return tab->title() == "Target"; }));
}

TEST_F(OpeningTest, APageOfTheSameSiteGetsAllCookies) {
    takeCookies(sameSite);

    open(windowOpen(sameSite), "/target");

    EXPECT_EQ(cookies(), all);
    EXPECT_EQ(referrer(), origin());
    EXPECT_EQ(site(), "same-site");
}

TEST_F(OpeningTest, APageOfTheSameOriginIsToldTheWholeAddress) {
    takeCookies(opener);

    open(windowOpen(opener), "/target");

    EXPECT_EQ(cookies(), all);
    EXPECT_EQ(referrer(), server.url("/page?secret", opener));
    EXPECT_EQ(site(), "same-origin");
}

TEST_F(OpeningTest, WhatThePersonAsksForIsNobodysElse) {
    takeCookies(otherSite);

    store.newTab(url("/target", otherSite), BrowserStore::Select::no);
    ASSERT_TRUE(waitFor([&] { return server.requests("/target") > 0; }));

    EXPECT_EQ(cookies(), all);
    EXPECT_EQ(referrer(), "");
    EXPECT_EQ(site(), "none");
}

TEST_F(OpeningTest, WithoutAReferrerEverySiteIsAnotherOne) {
    takeCookies(sameSite);

    open(windowOpen(sameSite, "noreferrer"), "/target");

    EXPECT_EQ(cookies(), withoutStrict);
    EXPECT_EQ(referrer(), "");
    EXPECT_EQ(site(), "cross-site");
}

TEST_F(OpeningTest, ThePolicyOfThePageHolds) {
    openPage(windowOpen(otherSite),
             LoopbackServer::Answer{.headers = {{"Referrer-Policy", "no-referrer"}}});
    ASSERT_TRUE(waitFor([&] { return server.requests("/target") > 0; }));

    EXPECT_EQ(referrer(), "");
    EXPECT_EQ(site(), "cross-site");
}

TEST_F(OpeningTest, ARedirectionToAnotherSiteLearnsTheOriginAlone) {
    server.serve("/away",
                 LoopbackServer::Answer{
                     .status = 302, .headers = {{"Location", server.url("/target", otherSite)}}});
    takeCookies(otherSite);

    open("window.open('/away')", "/target");

    EXPECT_EQ(cookies(), withoutStrict);
    EXPECT_EQ(server.header("/away", "Referer"), server.url("/page?secret", opener));
    EXPECT_EQ(referrer(), origin());
}

TEST_F(OpeningTest, AFrameOfAnotherSiteIsNotTakenForThePage) {
    takeCookies(opener);
    server.serve("/frame", "<script>setTimeout(() => window.open('" +
                               server.url("/target", opener) + "'))</script>");

    open(
        "const frame = document.createElement('iframe');"
        "frame.src = '" +
            server.url("/frame", otherSite) + "'; document.body.append(frame);",
        "/target");

    EXPECT_EQ(cookies(), withoutStrict);
    EXPECT_EQ(referrer(), server.url("/", otherSite));
    EXPECT_EQ(site(), "cross-site");
}

TEST_F(OpeningTest, ALinkWithATargetIsTheSame) {
    takeCookies(otherSite);

    open(
        "const link = document.createElement('a'); link.target = '_blank';"
        "link.href = '" +
            server.url("/target", otherSite) + "'; link.click();",
        "/target");

    EXPECT_EQ(cookies(), withoutStrict);
    EXPECT_EQ(referrer(), origin());
}

TEST_F(OpeningTest, ThePageBehindIsSeenByNobody) {
    std::set<std::string> seen;
    const auto note = [&](const BrowserTab& tab) {
        seen.insert((tab.url() ? tab.url()->absoluteString() : "nothing") +
                    (tab.isLoading() ? " loading" : ""));
    };
    store.connectChanged([&] {
        if (store.tabs().size() != 2 || !seen.empty()) return;
        const auto& tab = store.tabs().back();
        note(*tab);
        tab->connectChanged([&note, opened = tab.get()] { note(*opened); });
    });

    const auto tab = open(windowOpen(otherSite), "/target");
    ASSERT_TRUE(waitFor([&] { return tab->title() == "Target" && !tab->isLoading(); }));
    settle();

    const std::string target = server.url("/target", otherSite);
    EXPECT_EQ(seen, (std::set<std::string>{target, target + " loading"}));
    EXPECT_FALSE(tab->canGoBack());
    ASSERT_EQ(store.visits().size(), 2U);
    EXPECT_EQ(store.visits().back().url, url("/target", otherSite));
    EXPECT_EQ(store.visits().back().title, "Target");
}

TEST_F(OpeningTest, TheTargetReachesNothingOfThePage) {
    server.serve("/target",
                 "<title>Target</title><script>document.title = [window.opener, history.length,"
                 "document.referrer].join(' ')</script>");

    const auto tab = open(windowOpen(otherSite), "/target");

    const std::string expected = "1 " + origin();
    EXPECT_TRUE(waitFor([&] { return tab->title() == expected; })) << tab->title();
}

TEST_F(OpeningTest, APageThatOpensItselfIsLoaded) {
    server.serve("/self",
                 "<title>Self</title><script>if (history.length < 2 && !location.hash) setTimeout("
                 "() => window.open(location.href + '#again'))</script>");

    store.open(server.url("/self", opener), BrowserStore::NewTab::no);

    ASSERT_TRUE(waitFor([&] { return store.tabs().size() == 2; }));
    const auto tab = store.tabs().back();
    EXPECT_TRUE(waitFor([&] { return tab->title() == "Self" && !tab->isLoading(); }));
    EXPECT_EQ(tab->url()->absoluteString(), server.url("/self", opener) + "#again");
}

TEST_F(OpeningTest, ATargetThatFailsLeavesItsAddressAndCanBeTriedAgain) {
    const Url dead = LoopbackServer::deadUrl("/x");
    openPage("window.open('" + dead.absoluteString() + "')");
    ASSERT_TRUE(waitFor([&] { return store.tabs().size() == 2; }));
    const auto tab = store.tabs().back();
    ASSERT_TRUE(waitFor([&] { return !tab->isLoading(); }));
    settle();
    EXPECT_EQ(tab->url(), dead);

    tab->webView().load(url("/target", otherSite));

    ASSERT_TRUE(waitFor([&] { return tab->title() == "Target" && !tab->isLoading(); }));
    EXPECT_FALSE(tab->canGoBack());
}

TEST_F(OpeningTest, WhatIsTriedAgainWhenTheNetworkComesBackIsThePagesStill) {
    takeCookies(otherSite);
    // Nobody listens there at first: the target leads to it only when it is asked again.
    openPage("window.open('" + LoopbackServer::deadUrl("/x").absoluteString() + "')");
    ASSERT_TRUE(waitFor([&] { return store.tabs().size() == 2; }));
    const auto tab = store.tabs().back();
    ASSERT_TRUE(waitFor([&] { return !tab->isLoading(); }));
    settle();

    network.cameBack.emit();

    EXPECT_TRUE(waitFor([&] { return tab->isLoading(); }));
    EXPECT_TRUE(waitFor([&] { return !tab->isLoading(); }));
    EXPECT_EQ(tab->url(), LoopbackServer::deadUrl("/x"));
}

TEST_F(OpeningTest, OneThatIsStoppedAtOnceLeadsNowhere) {
    openPage(windowOpen(otherSite));
    ASSERT_TRUE(waitFor([&] { return store.tabs().size() == 2; }));
    const auto tab = store.tabs().back();
    EXPECT_TRUE(tab->isLoading());

    tab->webView().stopLoading();
    EXPECT_TRUE(waitFor([&] { return !tab->isLoading(); }));
    settle();

    EXPECT_EQ(server.requests("/target"), 0);
    EXPECT_EQ(tab->url(), url("/target", otherSite));
    tab->webView().reload();
    EXPECT_TRUE(waitFor([&] { return tab->title() == "Target"; }));
}

TEST_F(OpeningTest, AnAddressTypedMeanwhileWins) {
    server.serve("/typed", "<title>Typed</title>");
    showPage();
    // About forty events come until the engine asks whether it may go on to the target.
    for (int turns = 0; turns < 60; turns += turns < 32 ? 8 : 2) {
        const auto tab = clickedLink();
        turnLoop(turns);

        tab->webView().load(url("/typed", opener));

        ASSERT_TRUE(waitFor([&] { return tab->title() == "Typed" && !tab->isLoading(); }))
            << turns << ": " << tab->title() << ", "
            << (tab->url() ? tab->url()->absoluteString() : "")
            << (tab->isLoading() ? ", loading" : "") << ", typed asked for "
            << server.requests("/typed") << " times, target " << server.requests("/target");
        settle();
        EXPECT_EQ(tab->url(), url("/typed", opener)) << turns;
        store.close(*tab);
    }
}

TEST_F(OpeningTest, OneThatIsStoppedOnTheWayIsNotShown) {
    showPage();
    for (int turns = 32; turns < 60; turns += 2) {
        const auto tab = clickedLink();
        turnLoop(turns);
        if (!tab->isLoading()) break;

        tab->webView().stopLoading();

        ASSERT_TRUE(waitFor([&] { return !tab->isLoading(); })) << turns;
        settle();
        EXPECT_FALSE(tab->isLoading()) << turns;
        const bool stands = evaluate(tab->webView(), "document.title").text == "Target";
        EXPECT_EQ(tab->title() == "Target", stands) << turns;
        store.close(*tab);
    }
}

TEST_F(OpeningTest, OneThatWasOvertakenMayBeOpenedFromThePageThatStands) {
    server.serve("/typed", "<title>Typed</title>");
    showPage();
    const auto tab = clickedLink();
    tab->webView().load(url("/typed", opener));
    ASSERT_TRUE(waitFor([&] { return tab->title() == "Typed" && !tab->isLoading(); }));

    static_cast<void>(
        evaluate(tab->webView(), "location = '" + server.url("/target", otherSite) + "'"));

    EXPECT_TRUE(waitFor([&] { return tab->title() == "Target"; }));
}

TEST_F(OpeningTest, OneThatBecomesADownloadLeavesAnEmptyTab) {
    server.serve("/target", LoopbackServer::Answer{
                                .body = "x", .headers = {{"Content-Disposition", "attachment"}}});

    const auto tab = open(windowOpen(otherSite), "/target");

    EXPECT_TRUE(waitFor([&] { return tab->isNewTab(); }));
    EXPECT_TRUE(waitFor([&] { return services().downloads().items().size() == 1; }));
    EXPECT_FALSE(tab->isLoading());
}

TEST_F(OpeningTest, ATabIsClosedAtAnyStepOfTheWay) {
    showPage();
    for (int turns = 0; turns < 60; turns += 6) {
        const auto tab = clickedLink();
        turnLoop(turns);

        store.close(*tab);
    }
    settle();

    EXPECT_EQ(store.tabs().size(), 1U);
}

TEST_F(OpeningTest, APrivateWindowDoesTheSame) {
    BrowserStore hidden{services(), true, Profile::personal()};
    server.serve("/page", "<title>Page</title><script>setTimeout(() => {" + windowOpen(otherSite) +
                              "})</script>");

    hidden.open(server.url("/page", opener), BrowserStore::NewTab::no);

    ASSERT_TRUE(waitFor([&] { return server.requests("/target") > 0; }));
    EXPECT_EQ(referrer(), origin());
    EXPECT_EQ(site(), "cross-site");
}

TEST_F(OpeningTest, APageOfTheDiskIsNobodyOnTheWeb) {
    takeCookies(otherSite);
    const auto file = folder / "page.html";
    std::ofstream{file} << "<title>Page</title><script>setTimeout(() => {" << windowOpen(otherSite)
                        << "})</script>";

    store.open("file://" + file.string(), BrowserStore::NewTab::no);

    ASSERT_TRUE(waitFor([&] { return server.requests("/target") > 0; }));
    EXPECT_EQ(cookies(), withoutStrict);
    EXPECT_EQ(referrer(), "");
    EXPECT_EQ(site(), "cross-site");
}

}  // namespace
}  // namespace orvu

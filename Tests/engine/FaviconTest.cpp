#include "engine/EngineWorld.h"
#include "support/IconFiles.h"

#include <fstream>
#include <memory>

namespace orvu {
namespace {

/// Tabs of the real engine whose pages tell of icons of different sizes.
class FaviconTest : public EngineTest {
protected:
    [[nodiscard]] static LoopbackServer::Answer png(std::uint32_t side) {
        return {IconFiles::png(side), "image/png"};
    }
    void servePage(const std::string& links) {
        server.serve("/page", "<!doctype html><title>Page</title>" + links);
    }
    [[nodiscard]] BrowserTab& openPage(BrowserStore& store) {
        return store.newTab(url("/page"), BrowserStore::Select::yes);
    }
    /// How wide the tab's icon becomes; 0 if none comes.
    [[nodiscard]] int widthOfIcon(BrowserTab& tab) {
        if (!waitFor([&] { return tab.favicon() != nullptr; })) return 0;
        return tab.favicon()->width;
    }
    [[nodiscard]] std::optional<HttpResponse> fetched(HttpSession& session, const Url& address) {
        const auto ask = [](HttpSession& from, Url at) -> Task<std::optional<HttpResponse>> {
            auto future = from.get(at, {});
            co_return co_await future;
        };
        auto task = ask(session, address);
        task.start();
        if (!waitFor([&] { return task.isDone(); })) return HttpResponse{-1, "", ""};
        return task.result();
    }

    const std::filesystem::path iconFile = folder / "data" / "Favicons" / "127.0.0.1.png";
};

TEST_F(FaviconTest, TheLargestDeclaredIconIsTakenAndWritten) {
    servePage(
        "<link rel=icon href=/16 sizes=16x16><link rel='SHORTCUT ICON' href=/any sizes=any>"
        "<link rel=apple-touch-icon href=/180 sizes='32x32 180x180'>"
        "<link rel=stylesheet href=/999 sizes=999x999>");
    server.serve("/180", png(180));
    server.serve("/16", png(16));
    BrowserStore store{services(), false, Profile::personal()};

    EXPECT_EQ(widthOfIcon(openPage(store)), 180);

    EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(iconFile); }));
    std::ifstream stream{iconFile};
    const std::string bytes{std::istreambuf_iterator<char>{stream}, {}};
    const auto image = decoded(bytes);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 180);
    EXPECT_EQ(server.requests("/16"), 0);
}

TEST_F(FaviconTest, IconsThatFailAreFollowedByTheNextAndNoneBehindTheFourth) {
    servePage(
        "<link rel=icon href=/a sizes=90x90><link rel=icon href=/b sizes=80x80>"
        "<link rel=icon href=/c sizes=70x70><link rel=icon href=/d sizes=60x60>"
        "<link rel=icon href=/e sizes=50x50>");
    server.serve("/b", LoopbackServer::Answer{"", "image/png"});
    server.serve("/c", LoopbackServer::Answer{"<html>", "image/png"});
    server.serve("/d", LoopbackServer::Answer{IconFiles::png(60), "image/png", 500});
    server.serve("/e", png(50));
    server.serve("/favicon.ico", LoopbackServer::Answer{IconFiles::ico(), "image/x-icon"});
    BrowserStore store{services(), false, Profile::personal()};

    EXPECT_EQ(widthOfIcon(openPage(store)), 16);

    EXPECT_EQ(server.requests("/a") + server.requests("/b"), 2);
    EXPECT_EQ(server.requests("/e"), 0);
}

TEST_F(FaviconTest, ADrawingIsAnIcon) {
    servePage("<link rel=icon href=/i.svg>");
    server.serve("/i.svg",
                 LoopbackServer::Answer{IconFiles::svg("<circle r='9'/>"), "image/svg+xml"});
    BrowserStore store{services(), false, Profile::personal()};

    EXPECT_EQ(widthOfIcon(openPage(store)), ImageCodec::maxSide);
}

TEST_F(FaviconTest, APrivateTabShowsItsIconAndLeavesNoFile) {
    servePage("<link rel=icon href=/i>");
    server.serve("/i", png(32));
    BrowserStore store{services(), true, Profile::personal()};

    EXPECT_EQ(widthOfIcon(openPage(store)), 32);
    settle();

    EXPECT_TRUE(std::filesystem::is_empty(folder / "data" / "Favicons"));
}

TEST_F(FaviconTest, ATabMayCloseWhileItsIconIsAwaited) {
    servePage("<link rel=icon href=/slow>");
    server.serve("/slow", LoopbackServer::Answer{.held = true});
    BrowserStore store{services(), false, Profile::personal()};
    auto& tab = openPage(store);
    EXPECT_TRUE(waitFor([&] { return server.requests("/slow") == 1; }));

    const std::weak_ptr<BrowserTab> closed = tab.weak_from_this();
    store.close(tab);
    settle();

    EXPECT_TRUE(closed.expired());
}

TEST_F(FaviconTest, CookiesAreNeitherKeptNorSent) {
    server.serve("/set", LoopbackServer::Answer{
                             "x", "text/plain", 200, {{"Set-Cookie", "a=b; Max-Age=999"}}});
    server.serve("/again", LoopbackServer::Answer{"y", "text/plain"});

    EXPECT_EQ(fetched(iconRequests, url("/set"))->body, "x");
    EXPECT_EQ(fetched(iconRequests, url("/again"))->body, "y");

    EXPECT_EQ(server.header("/again", "Cookie"), "");
}

TEST_F(FaviconTest, PasswordsInAddressesAreNotSent) {
    server.serve("/locked", LoopbackServer::Answer{
                                "x", "text/plain", 401, {{"WWW-Authenticate", "Basic realm=a"}}});
    auto address = url("/locked").absoluteString();
    address.insert(7, "user:password@");

    EXPECT_EQ(fetched(iconRequests, *Url::parse(address))->status, 401);

    EXPECT_EQ(server.header("/locked", "Authorization"), "");
    EXPECT_EQ(server.requests("/locked"), 1);
}

TEST_F(FaviconTest, RedirectsAreFollowedAndLoopsFail) {
    server.serve("/from", LoopbackServer::Answer{"", "text/plain", 302, {{"Location", "/to"}}});
    server.serve("/to", LoopbackServer::Answer{"there", "text/plain"});
    server.serve("/loop", LoopbackServer::Answer{"", "text/plain", 302, {{"Location", "/loop"}}});
    server.serve("/file", LoopbackServer::Answer{
                              "", "text/plain", 302, {{"Location", "file:///etc/hostname"}}});

    EXPECT_EQ(fetched(iconRequests, url("/from")),
              (HttpResponse{200, "there", url("/to").absoluteString(), "text/plain"}));
    const auto loops = fetched(iconRequests, url("/loop"));
    const auto file = fetched(iconRequests, url("/file"));

    EXPECT_TRUE(!loops || loops->status != 200);
    EXPECT_LT(server.requests("/loop"), 50);
    EXPECT_TRUE(!file || file->status != 200);
}

TEST_F(FaviconTest, ABodyThatReachesTheLimitIsAFailure) {
    server.serve("/most", LoopbackServer::Answer{std::string(999'999, 'x'), "text/plain"});
    server.serve("/over", LoopbackServer::Answer{std::string(1'000'000, 'x'), "text/plain"});
    server.serve("/far-over", LoopbackServer::Answer{std::string(40'000'000, 'x'), "text/plain"});

    EXPECT_EQ(fetched(iconRequests, url("/most"))->body.size(), 999'999U);
    EXPECT_EQ(fetched(iconRequests, url("/over")), std::nullopt);
    EXPECT_EQ(fetched(iconRequests, url("/far-over")), std::nullopt);
}

TEST_F(FaviconTest, ASilentServerIsAFailureWhenTheTimeIsUp) {
    SoupHttpSession hasty{{.timeout = std::chrono::seconds{1}, .bodyLimit = 100}};
    server.serve("/slow", LoopbackServer::Answer{.held = true});

    EXPECT_EQ(fetched(hasty, url("/slow")), std::nullopt);
}

TEST_F(FaviconTest, AServerThatDripsAByteASecondIsAFailureWhenTheWholeTimeIsUp) {
    SoupHttpSession hasty{{.timeout = std::chrono::seconds{8},
                           .totalTimeout = std::chrono::seconds{2},
                           .bodyLimit = 1'000'000}};
    server.serve("/drip", LoopbackServer::Answer{.body = "x", .drips = true, .dripPause = 1000});
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_EQ(fetched(hasty, url("/drip")), std::nullopt);

    const auto taken = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(taken, std::chrono::milliseconds{1900});
    EXPECT_LT(taken, std::chrono::seconds{8});
    EXPECT_GT(FaviconStore::httpOptions.totalTimeout, FaviconStore::httpOptions.timeout);
}

TEST_F(FaviconTest, IconsThatDripFromFourHostsDoNotHoldUpAnother) {
    auto options = FaviconStore::httpOptions;
    options.totalTimeout = std::chrono::seconds{6};
    SoupHttpSession session{options};
    FaviconStore store{session, images, files, folder / "icons"};
    server.serve("/drip", LoopbackServer::Answer{.body = "x", .drips = true, .dripPause = 1000});
    server.serve("/quick", png(40));
    std::vector<Task<ImagePointer>> dripping;
    for (int i = 0; i < 40; ++i) {
        const auto name = "slow" + std::to_string(i % 4) + ".localhost";
        dripping.push_back(store.fetch(url("/drip", name)));
        dripping.back().start();
    }
    EXPECT_TRUE(waitFor([&] { return server.dripping() == 16; }));

    auto quick = store.fetch(url("/quick", "quick.localhost"));
    quick.start();
    EXPECT_TRUE(waitFor([&] { return quick.isDone(); }));

    EXPECT_TRUE(quick.isDone() && quick.result());
    for (const auto& each : dripping) EXPECT_FALSE(each.isDone());
    EXPECT_TRUE(waitFor([&] { return server.requests("/drip") > 16; }));  // others' turn
    // The server hears of the end of one only when it writes to it again.
    EXPECT_TRUE(waitFor([&] { return server.dripping() <= 16; }));
}

TEST_F(FaviconTest, AddressesThatAreNotOfTheWebFailAtOnce) {
    for (const auto* each : {"file:///etc/hostname", "data:text/plain,x", "about:blank", "x"}) {
        EXPECT_EQ(fetched(iconRequests, *Url::parse(each)), std::nullopt) << each;
    }
}

TEST_F(FaviconTest, ASessionMayGoWhileItIsAsked) {
    server.serve("/slow", LoopbackServer::Answer{.held = true});
    auto leaving = std::make_unique<SoupHttpSession>(FaviconStore::httpOptions);
    {
        const auto future = leaving->get(url("/slow"), {});
        EXPECT_TRUE(waitFor([&] { return server.requests("/slow") == 1; }));
    }
    const auto kept = leaving->get(url("/slow"), {});
    leaving.reset();
    settle();

    EXPECT_EQ(server.requests("/slow"), 1);
}

}  // namespace
}  // namespace orvu

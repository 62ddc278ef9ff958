#include "engine/EngineWorld.h"
#include "engine/PlayedServer.h"
#include "platform/linux/http/SoupPageReads.h"

#include <chrono>
#include <optional>

namespace orvu {
namespace {

using namespace std::chrono_literals;
using Answer = LoopbackServer::Answer;

/// Pages on this machine. Where nothing else is said a page of this machine asks for them.
class PageReadsTest : public EngineTest {
protected:
    static constexpr auto home = "http://localhost/";
    static constexpr auto world = "https://8.8.8.8/search";  // found without asking anybody

    static Task<void> keep(Future<std::optional<PageDocument>> reading,
                           std::optional<PageDocument>* kept, bool* isDone) {
        *kept = co_await reading;
        *isDone = true;
    }
    std::optional<PageDocument> read(const std::string& address, const char* listing = home) {
        std::optional<PageDocument> document;
        bool isDone = false;
        TaskScope scope;
        scope.start(
            keep(reads.read({Url::parse(address).value(), Url::parse(listing).value(), "Reader/1"}),
                 &document, &isDone));
        EXPECT_TRUE(waitFor([&] { return isDone; })) << address;
        return document;
    }
    std::string textAt(const std::string& path) {
        const auto document = read(server.url(path));
        return document ? document->body : "nothing";
    }
    void redirect(const std::string& from, const std::string& to, int status = 302) {
        server.serve(from, Answer{.status = status, .headers = {{"Location", to}}});
    }
    static std::string compressed(std::size_t zeros) {
        GZlibCompressor* const compressor = g_zlib_compressor_new(G_ZLIB_COMPRESSOR_FORMAT_GZIP, 9);
        GInputStream* const plain = g_memory_input_stream_new_from_data(
            g_strnfill(zeros, '0'), static_cast<gssize>(zeros), g_free);
        GInputStream* const stream = g_converter_input_stream_new(plain, G_CONVERTER(compressor));
        std::string result;
        std::array<char, 65536> piece{};
        while (const auto size =
                   g_input_stream_read(stream, piece.data(), piece.size(), nullptr, nullptr)) {
            result.append(piece.data(), static_cast<std::size_t>(size));
        }
        g_object_unref(stream);
        g_object_unref(plain);
        g_object_unref(compressor);
        return result;
    }

    SoupPageReads reads{loop};
};

TEST_F(PageReadsTest, APageIsReadWhateverItsStatus) {
    server.serve("/page", Answer{"<p>One", "Text/HTML; charset=utf-8"});
    server.serve("/missing", Answer{"None", "text/html", 404});

    EXPECT_EQ(read(server.url("/page")), (PageDocument{"text/html", "<p>One"}));
    EXPECT_EQ(read(server.url("/missing")), (PageDocument{"text/html", "None"}));
}

TEST_F(PageReadsTest, RequestsTellTheirNameAndNothingOfThePerson) {
    server.serve("/page", Answer{.body = "One", .headers = {{"Set-Cookie", "a=b; Path=/"}}});
    EXPECT_EQ(textAt("/page"), "One");
    EXPECT_EQ(textAt("/page"), "One");

    EXPECT_EQ(server.requests("/page"), 2);
    EXPECT_EQ(server.header("/page", "User-Agent"), "Reader/1");
    for (const auto* name : {"Cookie", "Referer", "Authorization", "Accept-Language"}) {
        EXPECT_EQ(server.header("/page", name), "") << name;
    }
}

TEST_F(PageReadsTest, APasswordIsNotAskedForOrSent) {
    server.serve("/page", Answer{.body = "Closed",
                                 .status = 401,
                                 .headers = {{"WWW-Authenticate", "Basic realm=\"a\""}}});
    auto address = server.url("/page");
    address.insert(std::string{"http://"}.size(), "user:secret@");

    EXPECT_EQ(read(address), (PageDocument{"text/html", "Closed"}));
    EXPECT_EQ(server.header("/page", "Authorization"), "");
}

TEST_F(PageReadsTest, ABodyIsReadUpToItsLimitAndNoFurther) {
    server.serve("/exact", std::string(PageReads::maxBytes, 'a'));
    server.serve("/long", std::string(PageReads::maxBytes + 1, 'b'));
    server.serve("/endless",
                 Answer{.body = std::string(PageReads::maxBytes + 7, 'c'), .drips = true});

    EXPECT_EQ(textAt("/exact"), std::string(PageReads::maxBytes, 'a'));
    EXPECT_EQ(textAt("/long"), std::string(PageReads::maxBytes, 'b'));
    EXPECT_EQ(textAt("/endless"), std::string(PageReads::maxBytes, 'c'));
    EXPECT_TRUE(waitFor([&] { return server.dripping() == 0; }));
}

TEST_F(PageReadsTest, ACompressedBodyIsMeasuredAsItIsMeant) {
    server.serve("/small",
                 Answer{.body = compressed(1000), .headers = {{"Content-Encoding", "gzip"}}});
    server.serve("/bomb", Answer{.body = compressed(200'000'000),
                                 .headers = {{"Content-Encoding", "gzip"}}});

    EXPECT_EQ(textAt("/small"), std::string(1000, '0'));
    EXPECT_EQ(textAt("/bomb"), std::string(PageReads::maxBytes, '0'));
}

TEST_F(PageReadsTest, RedirectsAreFollowed) {
    server.serve("/end/page", "There");
    redirect("/one", "two", 301);
    redirect("/two", server.url("/three"), 307);
    redirect("/three", "/end/page#part", 308);

    EXPECT_EQ(textAt("/one"), "There");
}

TEST_F(PageReadsTest, RedirectsWithoutEndGiveNothing) {
    redirect("/round", "/round");

    EXPECT_EQ(textAt("/round"), "nothing");
    EXPECT_EQ(server.requests("/round"), PageReads::maxRedirects + 1);
}

TEST_F(PageReadsTest, RedirectsLeadToWebAddressesAlone) {
    for (const auto* target : {"file:///etc/passwd", "data:text/html,One", "javascript:1",
                               "ftp://localhost/", "http://", "//", "http://[::1", "mailto:a@b"}) {
        redirect("/away", target);
        EXPECT_EQ(textAt("/away"), "nothing") << target;
    }
}

TEST_F(PageReadsTest, ARedirectThatLeadsNowhereIsAPage) {
    server.serve("/page", Answer{"Nowhere", "text/html", 302});
    EXPECT_EQ(textAt("/page"), "Nowhere");
}

TEST_F(PageReadsTest, OtherAddressesAreNotAskedFor) {
    for (const auto* address : {"file:///etc/hosts", "data:text/html,a", "about:blank", "a.example",
                                "ftp://localhost/"}) {
        EXPECT_EQ(read(address), std::nullopt) << address;
    }
}

TEST_F(PageReadsTest, WithoutAServerThereIsNothing) {
    EXPECT_EQ(read(LoopbackServer::deadUrl("/").absoluteString()), std::nullopt);
}

// --- What may be asked for because of whom -----------------------------------------------------

TEST_F(PageReadsTest, ForAPageOfTheWorldNobodyHereIsEvenConnectedTo) {
    PlayedServer here;
    PlayedServer here6{PlayedServer::Family::ipv6};
    const auto port = std::to_string(here.port());
    const auto port6 = std::to_string(here6.port());
    for (const auto& address :
         {"http://127.0.0.1:" + port, "http://localhost:" + port, "http://a.localhost:" + port,
          "http://2130706433:" + port, "http://0x7f.1:" + port, "http://0.0.0.0:" + port,
          "http://[::1]:" + port6, "http://[::ffff:127.0.0.1]:" + port, "http://localhost:" + port6,
          "https://127.0.0.1:" + port}) {
        EXPECT_EQ(read(address + "/page", world), std::nullopt) << address;
    }
    EXPECT_EQ(here.connections(), 0);
    EXPECT_EQ(here6.connections(), 0);
}

TEST_F(PageReadsTest, APageOfThisComputerMayHaveItsOwnReadAndBeSentOn) {
    server.serve("/page", "One");
    redirect("/on", server.url("/page", "localhost"));

    for (const auto* listing : {"http://127.0.0.1/", "http://[::1]:8/", "https://a.localhost/x"}) {
        const auto document = read(server.url("/on", "localhost"), listing);
        EXPECT_EQ(document, (PageDocument{"text/html", "One"})) << listing;
    }
}

TEST_F(PageReadsTest, APageWithoutAHostIsOneOfTheWorld) {
    server.serve("/page", "One");

    for (const auto* listing : {"about:blank", "data:text/html,a", "file:///tmp/a.html"}) {
        EXPECT_EQ(read(server.url("/page"), listing), std::nullopt) << listing;
    }
    EXPECT_EQ(server.requests("/page"), 0);
}

// --- Time --------------------------------------------------------------------------------------

TEST_F(PageReadsTest, AServerThatIsSilentIsGivenUp) {
    server.serve("/held", Answer{.held = true});
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_EQ(textAt("/held"), "nothing");
    EXPECT_GE(std::chrono::steady_clock::now() - begin, PageReads::timeout - 1s);
}

TEST_F(PageReadsTest, AServerThatNeverEndsIsGivenUp) {
    server.serve("/drips", Answer{.body = "a", .drips = true});
    SoupPageReads hasty{loop, 300ms};
    std::optional<PageDocument> document;
    bool isDone = false;
    TaskScope scope;
    scope.start(
        keep(hasty.read({url("/drips"), Url::parse(home).value(), ""}), &document, &isDone));

    EXPECT_TRUE(waitFor([&] { return isDone; }));
    EXPECT_EQ(document, std::nullopt);
    EXPECT_TRUE(waitFor([&] { return server.dripping() == 0; }));
}

TEST_F(PageReadsTest, WhoDropsItEndsTheRequest) {
    server.serve("/drips", Answer{.body = "a", .drips = true});
    std::optional<PageDocument> document;
    bool isDone = false;
    TaskScope scope;
    scope.start(
        keep(reads.read({url("/drips"), Url::parse(home).value(), ""}), &document, &isDone));
    EXPECT_TRUE(waitFor([&] { return server.dripping() == 1; }));
    scope.cancel();

    EXPECT_TRUE(waitFor([&] { return server.dripping() == 0; }));
    EXPECT_FALSE(isDone);
}

}  // namespace
}  // namespace orvu

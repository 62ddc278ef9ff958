#include "engine/EngineWorld.h"
#include "search/SearchSuggester.h"
#include "support/SuggesterWorld.h"

#include <memory>

namespace orvu {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;
using Answer = LoopbackServer::Answer;

/// A suggester on the real network, whose four engines are one server on this machine.
class SuggestionTest : public EngineTest {
protected:
    SuggestionTest() {
        suggester.connectChanged([this] { ++changes; });
    }

    /// Where the engine tells its suggestions, without the host.
    [[nodiscard]] static std::string path(Prefs::Engine engine) {
        const auto& whole = Prefs::facts(engine).suggest;
        const auto path = whole.substr(whole.find('/', std::string_view{"https://"}.size()));
        return std::string{path.substr(0, path.find('?'))};
    }
    [[nodiscard]] static Answer json(const std::string& body) { return {body, "application/json"}; }
    /// Types a text and waits until what is shown belongs to it.
    [[nodiscard]] bool isAnswered(const std::string& text) {
        suggester.update(text, SearchSuggester::Privacy::ordinary);
        return waitFor([&] { return suggester.forQuery() == text; });
    }
    /// Types a text, and waits for its request and until nothing more comes of it.
    void expectNothingOf(const std::string& text) {
        const int before = server.requests(google);
        const int changesBefore = changes;
        suggester.update(text, SearchSuggester::Privacy::ordinary);
        EXPECT_TRUE(waitFor([&] { return server.requests(google) > before; }));
        settle();
        EXPECT_EQ(changes, changesBefore);
    }
    [[nodiscard]] Task<bool> succeeds(HttpSession& session, Url address) {
        const auto response = co_await session.get(address, {});
        co_return response.has_value();
    }
    [[nodiscard]] bool fails(HttpSession& session, const std::string& at) {
        auto task = succeeds(session, url(at));
        task.start();
        return waitFor([&] { return task.isDone(); }) && !task.result();
    }

    const std::string google = path(Prefs::Engine::google);
    SoupHttpSession requests{SearchSuggester::httpOptions};
    int changes = 0;
    Settings settings{defaults};
    SearchSuggester suggester{
        requests, loop, settings, Texts{"de-AT", "de", "en", "fr"},
        [this](Prefs::Engine asked, std::string_view text) {
            const auto real = Prefs::suggestURL(asked, text);
            const auto query = real->query().value_or("");
            return Url::parse(server.url(path(asked) + "?") + std::string{query});
        }};
};

TEST_F(SuggestionTest, EachEngineIsAskedInItsOwnWay) {
    const std::vector<std::pair<Prefs::Engine, std::string>> queries{
        {Prefs::Engine::google, "client=firefox&q="},
        {Prefs::Engine::duckduckgo, "type=list&q="},
        {Prefs::Engine::bing, "query="},
        {Prefs::Engine::ecosia, "type=list&q="}};
    for (const auto& [asked, query] : queries) {
        const std::string name{Prefs::facts(asked).rawValue};
        defaults.setString("searchEngine", name);
        server.serve(path(asked), json(SuggesterWorld::body("x", {name + " otters"})));

        EXPECT_TRUE(isAnswered("otter & " + name));

        EXPECT_EQ(suggester.predictions(), Texts{name + " otters"});
        EXPECT_EQ(server.query(path(asked)), query + "otter%20%26%20" + name);
        EXPECT_EQ(server.requests(path(asked)), 1);
    }
}

TEST_F(SuggestionTest, AnAnswerInLatin1IsRead) {
    server.serve(google,
                 Answer{"[\"caf\xE9\",[\"caf\xE9 noir\"]]", "text/javascript; charset=ISO-8859-1"});

    EXPECT_TRUE(isAnswered("café"));

    EXPECT_EQ(suggester.predictions(), Texts{"café noir"});
}

TEST_F(SuggestionTest, TheFirstThreeLanguagesAreTold) {
    server.serve(google, json(SuggesterWorld::body("ott", {"otters"})));

    EXPECT_TRUE(isAnswered("ott"));

    EXPECT_EQ(server.header(google, "Accept-Language"), "de-AT,de,en");
}

TEST_F(SuggestionTest, NoRequestEverCarriesACookie) {
    auto answer = json(SuggesterWorld::body("ott", {"otters"}));
    answer.headers = {{"Set-Cookie", "person=you; Path=/; Max-Age=86400"}};
    server.serve(google, answer);
    EXPECT_TRUE(isAnswered("ott"));
    EXPECT_TRUE(isAnswered("otte"));
    server.serve("/elsewhere", answer);
    server.serve(
        google,
        Answer{"", "text/plain", 302, {{"Location", "/elsewhere"}, {"Set-Cookie", "person=you"}}});
    EXPECT_TRUE(isAnswered("otter"));
    EXPECT_TRUE(isAnswered("otters"));

    // The server keeps a header that came with any of the requests.
    EXPECT_EQ(server.requests(google), 4);
    EXPECT_EQ(server.requests("/elsewhere"), 2);
    EXPECT_NE(server.header(google, "Host"), "");
    EXPECT_EQ(server.header(google, "Cookie"), "");
    EXPECT_EQ(server.header("/elsewhere", "Cookie"), "");
}

TEST_F(SuggestionTest, NothingButTheTextAndTheLanguagesIsTold) {
    server.serve(google, json(SuggesterWorld::body("ott", {"otters"})));

    EXPECT_TRUE(isAnswered("ott"));

    for (const auto* name : {"Cookie", "Authorization", "Referer", "User-Agent", "Origin"}) {
        EXPECT_EQ(server.header(google, name), "") << name;
    }
}

TEST_F(SuggestionTest, ABrokenAnswerEmptiesWhatIsShown) {
    server.serve(google, json(SuggesterWorld::body("ott", {"otters"})));
    EXPECT_TRUE(isAnswered("ott"));
    server.serve(google, json("[\"otte\",[\"otters\""));

    EXPECT_TRUE(isAnswered("otte"));

    EXPECT_EQ(suggester.predictions(), Texts{});
}

TEST_F(SuggestionTest, AnswersThatAreTooLongOrNeverComeLeaveWhatIsShown) {
    server.serve(google, json(SuggesterWorld::body("ott", {"otters"})));
    EXPECT_TRUE(isAnswered("ott"));

    server.serve(google, json(SuggesterWorld::body("otte", {std::string(10'000'000, 'x')})));
    expectNothingOf("otte");
    server.serve(google, Answer{.held = true});
    expectNothingOf("otter");
    server.serve(google, Answer{.body = "[", .drips = true});
    expectNothingOf("otters");

    EXPECT_EQ(suggester.predictions(), Texts{"otters"});
    EXPECT_EQ(suggester.forQuery(), "ott");
}

TEST_F(SuggestionTest, TheNextKeyEndsARequestThatDrips) {
    server.serve(google, Answer{.body = "[", .drips = true});
    suggester.update("ott", SearchSuggester::Privacy::ordinary);
    EXPECT_TRUE(waitFor([&] { return server.dripping() == 1; }));

    suggester.update("otte", SearchSuggester::Privacy::privateWindow);

    EXPECT_TRUE(waitFor([&] { return server.dripping() == 0; }));
    EXPECT_EQ(server.requests(google), 1);
}

TEST_F(SuggestionTest, TheLimitsOfARequestAreThoseOfASuggestion) {
    const auto& options = SearchSuggester::httpOptions;
    server.serve("/most", Answer{std::string(options.bodyLimit - 1, 'x'), "text/plain"});
    server.serve("/over", Answer{std::string(options.bodyLimit, 'x'), "text/plain"});

    EXPECT_EQ(options.timeout, 4s);
    EXPECT_FALSE(fails(requests, "/most"));
    EXPECT_TRUE(fails(requests, "/over"));
}

TEST_F(SuggestionTest, ASilentServerIsAFailureWhenTheTimeIsUp) {
    SoupHttpSession hasty{{.timeout = 30s, .totalTimeout = 1s, .bodyLimit = 100}};
    server.serve("/silent", Answer{.held = true});

    EXPECT_TRUE(fails(hasty, "/silent"));
}

TEST_F(SuggestionTest, AServerThatDripsIsAFailureWhenTheWholeTimeIsUpAndNotBefore) {
    SoupHttpSession patient{{.timeout = 1s, .bodyLimit = 100'000}};
    SoupHttpSession hasty{{.timeout = 1s, .totalTimeout = 2s, .bodyLimit = 100'000}};
    server.serve("/drips", Answer{.body = "x", .drips = true});
    auto waiting = succeeds(patient, url("/drips"));
    waiting.start();

    EXPECT_TRUE(fails(hasty, "/drips"));

    EXPECT_TRUE(waitFor([&] { return server.dripping() == 1; }));
    EXPECT_FALSE(waiting.isDone());
}

TEST_F(SuggestionTest, ARequestThatWasFastIsLeftAloneWhenItsTimeIsUp) {
    SoupHttpSession hasty{{.totalTimeout = 1s, .bodyLimit = 100}};
    server.serve("/fast", Answer{"there", "text/plain"});
    server.serve("/silent", Answer{.held = true});

    EXPECT_FALSE(fails(hasty, "/fast"));
    EXPECT_TRUE(fails(hasty, "/silent"));
}

}  // namespace
}  // namespace orvu

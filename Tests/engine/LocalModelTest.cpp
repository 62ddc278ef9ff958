#include "platform/linux/model/LocalModel.h"

#include "engine/EngineWorld.h"
#include "engine/PlayedServer.h"
#include "foundation/json/Json.h"

#include <optional>

namespace orvu {
namespace {

using namespace std::chrono_literals;
using Answer = PlayedServer::Answer;
using Then = Answer::Then;
using Paths = std::vector<std::string>;
using Custom = ModelPort::Custom;

std::string line(const std::string& content) {
    return R"({"message":{"content":")" + content + R"("},"done":false})" + "\n";
}
const std::string lastLine = "{\"message\":{\"content\":\"\"},\"done\":true}\n";
std::string event(const std::string& content) {
    return R"(data: {"choices":[{"delta":{"content":")" + content + "\"}}]}\n\n";
}
const std::string lastEvent = "data: [DONE]\n\n";

/// A server with Ollama's interface and one model.
struct PlayedOllama : PlayedServer {
    explicit PlayedOllama(const std::string& model = "tiny:latest", Family family = Family::ipv4)
        : PlayedServer(family) {
        serve("/api/version", json(R"({"version":"0.1"})"));
        serve("/api/tags", json(R"({"models":[{"name":")" + model + "\"}]}"));
        serve("/api/ps", json(R"({"models":[]})"));
        serve("/api/chat", stream(line("Otters") + line(" swim.") + lastLine, Then::close));
    }
};

/// A server with the other interface.
struct PlayedOpenAI : PlayedServer {
    explicit PlayedOpenAI(const std::string& owner = "llamacpp") {
        serve("/v1/models", json(R"({"data":[{"id":"small","owned_by":")" + owner + "\"}]}"));
        serve("/health", json(R"({"status":"ok"})"));
        serve("/v1/chat/completions",
              stream(event("Otters") + event(" swim.") + lastEvent, Then::close));
    }
};

class LocalModelTest : public EngineTest {
protected:
    struct Port {
        std::uint16_t number;
        ModelProtocol protocol;
        Custom custom = Custom::modelServers;
    };

    [[nodiscard]] static Port at(const PlayedServer& played, ModelProtocol protocol,
                                 Custom custom = Custom::modelServers) {
        return {played.port(), protocol, custom};
    }
    LocalModel& make(const std::vector<Port>& ports) {
        for (const auto& each : ports) {
            options.ports.push_back({each.number, each.protocol, each.custom});
        }
        model.emplace(loop, options);
        model->connectChanged([this] { ++changes; });
        return *model;
    }
    LocalModel& makeOllama(const PlayedServer& played) {
        return make({at(played, ModelProtocol::ollama)});
    }
    LocalModel& makeOpenAI(const PlayedServer& played) {
        return make({at(played, ModelProtocol::openAI)});
    }
    /// Looks until something is found or the look has changed what is known.
    [[nodiscard]] bool looksUntil(const std::function<bool()>& condition) {
        return waitFor([&] {
            model->look();
            return condition();
        });
    }
    [[nodiscard]] bool isFound() {
        return looksUntil([&] { return !model->modelName().empty(); });
    }
    [[nodiscard]] bool isReason(UnavailableReason reason) {
        return looksUntil([&] { return model->unavailableReason() == reason; });
    }
    [[nodiscard]] std::optional<ModelResponse> ask(const std::string& prompt = "What swims?") {
        return awaited(model->respond(prompt, "Be brief."));
    }
    void expectFailure(ModelFailure failure) {
        EXPECT_EQ(ask(), (ModelResponse{false, sentence(ModelError{failure})}));
    }
    static Task<void> hold(Future<ModelResponse> future) { co_await future; }

    static LocalModel::Options hastyOptions() {
        LocalModel::Options options;
        options.ports.clear();  // never a real server of this computer
        options.lookLimit = 2s;
        return options;
    }

    LocalModel::Options options = hastyOptions();
    std::optional<LocalModel> model;
    int changes = 0;
};

const ModelResponse swims{true, "Otters swim."};

TEST_F(LocalModelTest, OllamaIsFoundAndAskedWithoutConfiguration) {
    PlayedOllama played;
    makeOllama(played);
    EXPECT_EQ(model->unavailableReason(), std::nullopt);
    EXPECT_EQ(model->modelName(), "");

    EXPECT_EQ(ask(), swims);

    EXPECT_EQ(played.paths(),
              (Paths{"/api/version", "/api/tags", "/api/ps", "/api/ps", "/api/chat"}));
    EXPECT_EQ(model->modelName(), "tiny:latest");
    EXPECT_EQ(played.body("/api/chat"),
              R"({"model":"tiny:latest","messages":[{"role":"system","content":"Be brief."},)"
              R"({"role":"user","content":"What swims?"}],"stream":true,"think":false,)"
              R"("truncate":false,"options":{"num_ctx":12288}})");
}

TEST_F(LocalModelTest, AModelThatIsLoadedKeepsItsContext) {
    PlayedOllama played;
    played.serve("/api/ps",
                 PlayedServer::json(R"({"models":[{"name":"big"},{"name":"x-embed"}]})"));
    makeOllama(played);

    EXPECT_EQ(ask(), swims);

    EXPECT_EQ(model->modelName(), "big");
    EXPECT_FALSE(played.body("/api/chat").contains("num_ctx"));
}

TEST_F(LocalModelTest, TheOtherInterfaceIsFoundAndAsked) {
    PlayedOpenAI played;
    makeOpenAI(played);

    EXPECT_EQ(ask(), swims);

    EXPECT_EQ(played.paths(), (Paths{"/v1/models", "/health", "/v1/chat/completions"}));
    EXPECT_TRUE(played.body("/v1/chat/completions").contains("enable_thinking"));
}

TEST_F(LocalModelTest, OnlyServersThatKnowTheSwitchAreToldToLeaveThoughtsOut) {
    PlayedOpenAI played{"somebody"};
    makeOpenAI(played);

    EXPECT_EQ(ask(), swims);

    EXPECT_EQ(played.paths(), (Paths{"/v1/models", "/v1/chat/completions"}));
    EXPECT_TRUE(played.body("/v1/chat/completions").ends_with(R"("stream":true})"));
}

TEST_F(LocalModelTest, ARequestTellsNothingButItself) {
    PlayedOllama played;
    makeOllama(played);

    EXPECT_EQ(ask(), swims);

    const std::string host = "Host: 127.0.0.1:" + std::to_string(played.port()) + "\r\n";
    EXPECT_EQ(played.head("/api/tags"), "GET /api/tags HTTP/1.1\r\nConnection: close\r\n" + host);
    EXPECT_EQ(played.head("/api/chat"),
              "POST /api/chat HTTP/1.1\r\nConnection: close\r\n"
              "Content-Type: application/json\r\nContent-Length: " +
                  std::to_string(played.body("/api/chat").size()) + "\r\n" + host);
}

TEST_F(LocalModelTest, TheSessionHasNoProxyAndNoFeatures) {
    LoopbackClient client{loop, ownerOfConnection};
    SoupSession* const session = client.session();
    auto* const resolver = soup_session_get_proxy_resolver(session);
    ASSERT_NE(resolver, nullptr);

    char** const proxies =
        g_proxy_resolver_lookup(resolver, "http://127.0.0.1:11434/", nullptr, nullptr);

    ASSERT_NE(proxies, nullptr);
    EXPECT_STREQ(proxies[0], "direct://");
    EXPECT_EQ(proxies[1], nullptr);
    g_strfreev(proxies);
    for (const GType feature :
         {SOUP_TYPE_AUTH_MANAGER, SOUP_TYPE_COOKIE_JAR, SOUP_TYPE_CONTENT_DECODER, SOUP_TYPE_CACHE,
          SOUP_TYPE_CONTENT_SNIFFER, SOUP_TYPE_HSTS_ENFORCER}) {
        EXPECT_FALSE(soup_session_has_feature(session, feature)) << g_type_name(feature);
    }
}

TEST_F(LocalModelTest, WhatIsNoModelServerGetsNothingButTheFirstRequest) {
    const std::string elsewhere =
        "HTTP/1.1 302 Found\r\nLocation: /elsewhere\r\n"
        "Content-Length: 0\r\n\r\n";
    const std::string zipped =
        "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\n\r\n"
        "\x1F\x8B\x08" +
        std::string(3'000'000, 'z');
    const std::vector<Answer> answers{
        PlayedServer::json("<html>Hello</html>"),
        PlayedServer::json("{}"),
        PlayedServer::json(std::string(200'000, '[')),
        PlayedServer::json("{}", 401),
        PlayedServer::json(R"({"version":"1","data":[],"models":[]})", 404),
        PlayedServer::json(R"({"version":"1","data":[],"models":[]})", 503),
        {elsewhere},
        {zipped},
        {""},
        {"HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\n{\"version\":"},
        {"SSH-2.0-OpenSSH_9.2\r\n"},
        {std::string{"\0\0\0\0", 4}},
        {"", Then::hold},
        {"HTTP/1.1 200 OK\r\n", Then::repeat, "X: y\r\n"},
        {"HTTP/1.1 200 OK\r\n\r\n{", Then::repeat, std::string(60'000, ' ')}};
    options.lookLimit = 500ms;
    for (const auto& answer : answers) {
        PlayedServer ollama;
        PlayedServer other;
        ollama.serve("/api/version", answer);
        other.serve("/v1/models", answer);
        options.ports.clear();
        make({at(ollama, ModelProtocol::ollama), at(other, ModelProtocol::openAI)});

        EXPECT_TRUE(isReason(UnavailableReason::noServer));

        EXPECT_EQ(ollama.paths().front(), "/api/version") << answer.bytes.substr(0, 60);
        EXPECT_EQ(ollama.requests("/api/version"), static_cast<int>(ollama.paths().size()));
        EXPECT_EQ(other.requests("/v1/models"), static_cast<int>(other.paths().size()));
        model.reset();
    }
}

TEST_F(LocalModelTest, AnotherPersonsServerGetsNoByte) {
    PlayedOllama played;
    PlayedOpenAI other;
    options.owner = [](GSocketConnection*) { return ServerOwner::anotherPerson; };
    make({at(played, ModelProtocol::ollama), at(other, ModelProtocol::openAI)});

    EXPECT_TRUE(isReason(UnavailableReason::othersServer));
    EXPECT_EQ(ask(), (ModelResponse{false, sentence(UnavailableReason::othersServer)}));

    EXPECT_GT(played.connections(), 0);
    EXPECT_EQ(played.bytes(), 0U);
    EXPECT_EQ(other.bytes(), 0U);
}

TEST_F(LocalModelTest, AnotherPersonsProgramOnAnOrdinaryPortIsNoModelServer) {
    PlayedOpenAI played;
    options.owner = [](GSocketConnection*) { return ServerOwner::anotherPerson; };
    make({at(played, ModelProtocol::openAI, Custom::anything)});

    EXPECT_TRUE(isReason(UnavailableReason::noServer));

    EXPECT_EQ(played.bytes(), 0U);
}

TEST_F(LocalModelTest, AServerWhoseOwnerNobodyKnowsGetsNoByte) {
    PlayedOllama played;
    options.owner = [](GSocketConnection*) { return ServerOwner::unknown; };
    makeOllama(played);

    EXPECT_TRUE(isReason(UnavailableReason::other));
    expectFailure(ModelFailure::unknownOwner);

    EXPECT_EQ(played.bytes(), 0U);
}

TEST_F(LocalModelTest, TheOwnerIsLookedUpForTheQuestionItself) {
    PlayedOpenAI played;
    bool isMine = true;
    options.owner = [&](GSocketConnection*) {
        return isMine ? ServerOwner::trusted : ServerOwner::anotherPerson;
    };
    makeOpenAI(played);
    EXPECT_TRUE(isFound());
    EXPECT_TRUE(waitFor([&] { return played.open() == 0; }));
    const auto before = played.bytes();

    isMine = false;
    expectFailure(ModelFailure::anotherPerson);

    EXPECT_EQ(played.bytes(), before);
}

TEST_F(LocalModelTest, ThePreferredServerIsTakenThoughItIsSlower) {
    PlayedOllama preferred;
    PlayedOpenAI other;
    Answer slow = PlayedServer::json(R"({"version":"0.1"})");
    slow.delay = 300;
    preferred.serve("/api/version", slow);
    make({at(preferred, ModelProtocol::ollama), at(other, ModelProtocol::openAI)});

    EXPECT_EQ(ask(), swims);

    EXPECT_EQ(preferred.requests("/api/chat"), 1);
    EXPECT_EQ(other.requests("/v1/chat/completions"), 0);
}

TEST_F(LocalModelTest, AServerThatCanAnswerIsTakenBeforeOneThatCannot) {
    PlayedOllama empty;
    PlayedServer silent;
    PlayedOpenAI other;
    options.lookLimit = 500ms;
    empty.serve("/api/tags", PlayedServer::json(R"({"models":[]})"));
    silent.serve("/v1/models", Answer{"", Then::hold});
    make({at(empty, ModelProtocol::ollama), at(silent, ModelProtocol::openAI),
          at(other, ModelProtocol::openAI)});

    EXPECT_EQ(ask(), swims);
    EXPECT_EQ(model->modelName(), "small");
}

TEST_F(LocalModelTest, AServerWithoutAModelIsSaidToHaveNone) {
    PlayedOllama played;
    played.serve("/api/tags", PlayedServer::json(R"({"models":[{"name":"all-minilm"}]})"));
    makeOllama(played);

    EXPECT_TRUE(isReason(UnavailableReason::noModel));
    EXPECT_EQ(ask(), (ModelResponse{false, sentence(UnavailableReason::noModel)}));
}

TEST_F(LocalModelTest, AServerThatLoadsIsSaidTo) {
    const Answer loading = PlayedServer::json(
        R"({"error":{"code":503,"message":"Loading model","type":"unavailable_error"}})", 503);
    PlayedOpenAI played;
    played.serve("/v1/models", loading);
    makeOpenAI(played);
    EXPECT_TRUE(isReason(UnavailableReason::serverIsLoading));

    played.serve("/v1/models",
                 PlayedServer::json(R"({"data":[{"id":"small","owned_by":"llamacpp"}]})"));
    EXPECT_TRUE(isFound());
    played.serve("/health", loading);
    EXPECT_TRUE(isReason(UnavailableReason::serverIsLoading));

    played.serve("/health", PlayedServer::json("{}"));
    EXPECT_TRUE(isFound());
    played.serve("/v1/chat/completions", loading);
    expectFailure(ModelFailure::loading);
}

TEST_F(LocalModelTest, AServerThatComesUpLaterIsFoundByTheNextLook) {
    PlayedOllama played;
    played.kill();
    makeOllama(played);
    EXPECT_TRUE(isReason(UnavailableReason::noServer));
    EXPECT_EQ(changes, 1);

    played.start();

    EXPECT_TRUE(isFound());
    EXPECT_EQ(model->unavailableReason(), std::nullopt);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(ask(), swims);
}

TEST_F(LocalModelTest, AQuestionFindsTheServerThatTookTheKnownOnesPlace) {
    PlayedOllama first;
    PlayedOpenAI second;
    make({at(first, ModelProtocol::ollama), at(second, ModelProtocol::openAI)});
    EXPECT_TRUE(isFound());
    EXPECT_EQ(model->modelName(), "tiny:latest");

    first.kill();
    EXPECT_EQ(ask(), swims);

    EXPECT_EQ(model->modelName(), "small");
    second.kill();
    EXPECT_EQ(ask(), (ModelResponse{false, sentence(UnavailableReason::noServer)}));
}

TEST_F(LocalModelTest, AServerOfTheOtherKindOfAddressIsFound) {
    PlayedOllama played{"six", PlayedServer::Family::ipv6};
    makeOllama(played);

    EXPECT_EQ(ask(), swims);

    EXPECT_EQ(model->modelName(), "six");
    EXPECT_TRUE(played.head("/api/chat").contains("Host: [::1]:"));
}

TEST_F(LocalModelTest, AServerKilledInMidAnswerIsOneSentence) {
    PlayedOllama played;
    played.serve("/api/chat", PlayedServer::stream(line("Otters"), Then::hold));
    makeOllama(played);
    auto future = model->respond("What swims?", "Be brief.");
    EXPECT_TRUE(waitFor([&] { return played.requests("/api/chat") == 1; }));
    settle();

    played.kill();

    const auto response = awaited(std::move(future));
    EXPECT_EQ(response, (ModelResponse{false, "The model stopped in the middle of its answer."}));
}

TEST_F(LocalModelTest, AnswersThatEndTooEarlyAreFailures) {
    PlayedOllama played;
    makeOllama(played);
    played.serve("/api/chat", Answer{""});
    expectFailure(ModelFailure::hungUp);
    played.serve("/api/chat", PlayedServer::stream("", Then::close));
    expectFailure(ModelFailure::hungUp);
    played.serve("/api/chat", PlayedServer::stream(line("Otters"), Then::close));
    expectFailure(ModelFailure::brokeOff);
    played.serve("/api/chat", {"HTTP/1.1 200 OK\r\nContent-Length: 5000\r\n\r\n" + line("a")});
    expectFailure(ModelFailure::brokeOff);
    played.serve(
        "/api/chat",
        {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nFFFFFFFFF\r\n" + line("a")});
    expectFailure(ModelFailure::brokeOff);
}

TEST_F(LocalModelTest, SilenceIsAFailureWhenItsTimeIsUp) {
    PlayedOllama played;
    options.answer.silence = 500ms;
    makeOllama(played);
    played.serve("/api/chat", Answer{"", Then::hold});
    expectFailure(ModelFailure::silent);
    played.serve("/api/chat", PlayedServer::stream(line("Otters"), Then::hold));
    expectFailure(ModelFailure::silent);

    EXPECT_TRUE(waitFor([&] { return played.open() == 0; }));
}

TEST_F(LocalModelTest, AnAnswerThatNeverEndsIsAFailure) {
    PlayedOpenAI played;
    makeOpenAI(played);
    const auto endless = [](const std::string& again) {
        Answer answer = PlayedServer::stream("", Then::repeat);
        answer.again = again;
        return answer;
    };
    std::string events;
    for (int count = 0; count < 100; ++count) events += event("a");
    played.serve("/v1/chat/completions", endless(events));
    expectFailure(ModelFailure::tooLong);
    played.serve("/v1/chat/completions", endless(event(std::string(20'000, 'a'))));
    expectFailure(ModelFailure::tooLong);
    played.serve("/v1/chat/completions", endless(std::string(60'000, 'x')));
    expectFailure(ModelFailure::unreadable);

    EXPECT_TRUE(waitFor([&] { return played.open() == 0; }));
}

TEST_F(LocalModelTest, APingWithoutEndIsAFailureWhenTheWholeTimeIsUp) {
    PlayedOpenAI played;
    options.answer.total = 700ms;
    makeOpenAI(played);
    Answer pings = PlayedServer::stream("", Then::repeat);
    pings.again = ": ping\n\n";
    played.serve("/v1/chat/completions", pings);

    expectFailure(ModelFailure::slow);
}

TEST_F(LocalModelTest, ErrorsOfAServerAreOneSentenceEach) {
    PlayedOllama played;
    makeOllama(played);
    const std::vector<std::pair<Answer, ModelFailure>> errors{
        {PlayedServer::json(R"({"error":"model 'tiny' not found"})", 404), ModelFailure::modelGone},
        {PlayedServer::json(R"({"error":"the input length exceeds the context length"})", 400),
         ModelFailure::contextTooSmall},
        {PlayedServer::json("", 401), ModelFailure::locked},
        {PlayedServer::json("<html>", 500), ModelFailure::refused},
        {{"HTTP/1.1 307 X\r\nLocation: /elsewhere\r\nContent-Length: 0\r\n\r\n"},
         ModelFailure::unreadable},
        {PlayedServer::json("<html>Hello</html>"), ModelFailure::unreadable},
        {PlayedServer::json(lastLine), ModelFailure::blank},
    };
    for (const auto& [answer, failure] : errors) {
        played.serve("/api/chat", answer);
        expectFailure(failure);
    }
    EXPECT_EQ(played.requests("/elsewhere"), 0);
    EXPECT_EQ(played.requests("/api/chat"), static_cast<int>(errors.size()));
}

TEST_F(LocalModelTest, AServerThatCannotLeaveThoughtsOutIsAskedAgainWithoutTheWish) {
    PlayedOllama played;
    played.serve("/api/chat",
                 PlayedServer::json(R"({"error":"\"tiny\" does not support thinking"})", 400));
    makeOllama(played);

    EXPECT_EQ(ask(), (ModelResponse{false,
                                    "The model server reports an error: “\"tiny\" does not "
                                    "support thinking”."}));

    EXPECT_EQ(played.requests("/api/chat"), 2);
    EXPECT_FALSE(played.body("/api/chat").contains("think"));
}

TEST_F(LocalModelTest, DroppingTheFutureClosesTheConnectionAtOnce) {
    for (const auto& answer :
         {Answer{"", Then::hold}, PlayedServer::stream(line("Otters"), Then::hold)}) {
        PlayedOllama played;
        played.serve("/api/chat", answer);
        options.ports.clear();
        makeOllama(played);
        std::optional<Task<void>> question{hold(model->respond("What swims?", "Be brief."))};
        question->start();
        EXPECT_TRUE(waitFor([&] { return played.requests("/api/chat") == 1; }));
        settle();
        EXPECT_EQ(played.open(), 1U);

        question.reset();

        EXPECT_TRUE(waitFor([&] { return played.open() == 0; }));
        model.reset();
    }
}

TEST_F(LocalModelTest, AQuestionDroppedWhileItWaitsForALookIsNeverAsked) {
    PlayedOllama played;
    makeOllama(played);
    {
        const auto question = model->respond("What swims?", "Be brief.");
    }

    EXPECT_TRUE(waitFor([&] { return !model->modelName().empty(); }));
    settle();

    EXPECT_EQ(played.requests("/api/chat"), 0);
}

TEST_F(LocalModelTest, AModelThatGoesLeavesNothingBehind) {
    PlayedOllama played;
    played.serve("/api/chat", Answer{"", Then::hold});
    makeOllama(played);
    auto question = model->respond("What swims?", "Be brief.");
    EXPECT_TRUE(waitFor([&] { return played.requests("/api/chat") == 1; }));

    model.reset();

    EXPECT_TRUE(waitFor([&] { return played.open() == 0; }));
    settle();
}

TEST_F(LocalModelTest, QuestionsAndLooksShareTheLookUnderWay) {
    PlayedOllama played;
    makeOllama(played);
    model->look();
    model->look();
    auto first = model->respond("One?", "Be brief.");
    auto second = model->respond("Two?", "Be brief.");

    EXPECT_EQ(awaited(std::move(first)), swims);
    EXPECT_EQ(awaited(std::move(second)), swims);

    EXPECT_EQ(played.requests("/api/version"), 1);
    EXPECT_EQ(played.requests("/api/chat"), 2);
    EXPECT_EQ(changes, 1);
}

TEST_F(LocalModelTest, NothingHappensUnlessSomebodyAsks) {
    PlayedOllama played;
    makeOllama(played);
    settle();
    EXPECT_EQ(played.connections(), 0);
    EXPECT_EQ(ask(), swims);
    EXPECT_TRUE(waitFor([&] { return played.open() == 0; }));
    const int before = played.connections();

    settle();

    EXPECT_EQ(played.connections(), before);
}

}  // namespace
}  // namespace orvu

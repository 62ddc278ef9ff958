#include "platform/linux/model/ServerQuestion.h"

#include "platform/model/ChatStream.h"
#include "platform/model/ModelList.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

using Failure = LoopbackExchange::Failure;
using Result = ServerQuestion::Result;

constexpr std::size_t errorLimit = 65536;  // bytes of an answer that is no success

/// What became of the connection, before or behind the head of an answer.
ModelFailure connectionFailure(Failure failure, bool hasHead) {
    switch (failure) {
        case Failure::unreachable:
            return ModelFailure::unreachable;
        case Failure::anotherPerson:
            return ModelFailure::anotherPerson;
        case Failure::unknownOwner:
            return ModelFailure::unknownOwner;
        case Failure::silent:
            return ModelFailure::silent;
        case Failure::slow:
            return ModelFailure::slow;
        case Failure::broken:
        case Failure::none:
            break;
    }
    return hasHead ? ModelFailure::brokeOff : ModelFailure::hungUp;
}

Result failed(ModelError error) { return {{}, std::move(error)}; }

}  // namespace

Task<Result> ServerQuestion::ask(std::string prompt, std::string instructions) {
    ChatRequest request{server_.model, std::move(instructions), std::move(prompt),
                        server_.leavesThoughtsOut};
    if (server_.protocol == ModelProtocol::ollama) {
        const auto loads = co_await needsLoading();
        if (!loads) {
            Result nobody = failed({ModelFailure::unreachable});
            nobody.wasReached = false;
            co_return nobody;
        }
        request.asksForContext = *loads;
    }
    Result result = co_await send(request);
    if (request.leavesThoughtsOut && result.error && result.error->isOfThinking) {
        request.leavesThoughtsOut = false;
        result = co_await send(request);
    }
    co_return result;
}

Task<std::optional<bool>> ServerQuestion::needsLoading() {
    const auto running = co_await getSmall(client_, server_.address, "/api/ps", lookLimit_);
    if (!running.isSuccess()) co_return std::nullopt;
    const auto loaded = loadedOllamaModels(running.body);
    if (!loaded) co_return std::nullopt;
    co_return std::ranges::none_of(*loaded,
                                   [&](const auto& each) { return each.name == server_.model; });
}

Task<Result> ServerQuestion::send(ChatRequest request) {
    const LoopbackExchange::Request whole{.address = server_.address,
                                          .path = chatPath(server_.protocol),
                                          .body = chatBody(server_.protocol, request),
                                          .silence = limits_.silence,
                                          .total = limits_.total};
    auto exchange = std::make_unique<LoopbackExchange>(client_, whole);
    const auto status = co_await exchange->send();
    if (!status) {
        Result result = failed({connectionFailure(exchange->failure(), false)});
        result.wasReached = exchange->failure() != Failure::unreachable;
        co_return result;
    }
    if (*status == 200) {
        Result result = co_await read(server_.protocol, std::move(exchange));
        co_return result;
    }
    const std::string body = co_await exchange->rest(errorLimit);
    co_return failed(errorOfAnswer(*status, body));
}

Task<Result> ServerQuestion::read(ModelProtocol protocol,
                                  std::unique_ptr<LoopbackExchange> exchange) {
    ChatStream stream{protocol};
    while (stream.state() == ChatStream::State::reading) {
        const std::string piece = co_await exchange->next();
        if (!piece.empty()) {
            stream.add(piece);
        } else if (exchange->failure() != Failure::none) {
            co_return failed({connectionFailure(exchange->failure(), true)});
        } else {
            stream.end();
        }
    }
    if (stream.state() == ChatStream::State::failed) co_return failed(stream.error());
    co_return Result{stream.reply(), {}};
}

}  // namespace orvu

#include "platform/linux/model/ServerSearch.h"

#include "platform/model/ModelFailure.h"
#include "platform/model/ModelList.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvu {
namespace {

using Failure = LoopbackExchange::Failure;

/// How much there is to say about a port, from little to much; a server that can answer is most.
int rank(const FoundServer& found) {
    constexpr std::array order{UnavailableReason::noServer, UnavailableReason::other,
                               UnavailableReason::othersServer, UnavailableReason::noModel,
                               UnavailableReason::serverIsLoading};
    if (found.server) return static_cast<int>(order.size());
    return static_cast<int>(std::ranges::find(order, *found.reason) - order.begin());
}

/// What it means that the first question was not answered. On a port that all kinds of programs
/// use, somebody else's program is no model server until it says so, and it isn't asked.
FoundServer unanswered(const LoopbackAnswer& answer, ModelPort port) {
    const bool isKnownPort = port.custom == ModelPort::Custom::modelServers;
    if (answer.failure == Failure::anotherPerson && isKnownPort) {
        return {{}, UnavailableReason::othersServer};
    }
    if (answer.failure == Failure::unknownOwner) return {{}, UnavailableReason::other};
    return {};
}

FoundServer foundServer(LoopbackAddress address, ModelProtocol protocol,
                        const std::optional<ListedModel>& model) {
    if (!model) return {{}, UnavailableReason::noModel};
    const bool leavesThoughtsOut =
        protocol == ModelProtocol::ollama || model->owner == "llamacpp" || model->owner == "vllm";
    // These two have one model, from their start on.
    const bool isLoaded = model->isLoaded || model->owner == "llamacpp" || model->owner == "vllm";
    return {ModelServer{address, protocol, model->name, leavesThoughtsOut, isLoaded}, {}};
}

}  // namespace

Task<FoundServer> ServerSearch::find() {
    TaskScope looks;
    std::vector<Future<FoundServer>> futures;
    for (const ModelPort& port : ports_) {
        const Promise<FoundServer> promise;
        futures.push_back(promise.future());
        looks.start(lookAt(port, promise));
    }
    FoundServer best;
    for (auto& future : futures) {
        FoundServer found = co_await future;
        if (rank(found) > rank(best)) best = std::move(found);
        if (best.server) break;
    }
    co_return best;
}

Task<void> ServerSearch::lookAt(ModelPort port, Promise<FoundServer> promise) {
    const LoopbackAddress ipv4{LoopbackAddress::Family::ipv4, port.number};
    FoundServer found = co_await lookAt(ipv4, port);
    if (!found.server) {
        const LoopbackAddress ipv6{LoopbackAddress::Family::ipv6, port.number};
        FoundServer other = co_await lookAt(ipv6, port);
        if (rank(other) > rank(found)) found = std::move(other);
    }
    promise.resolve(std::move(found));
}

Task<FoundServer> ServerSearch::lookAt(LoopbackAddress address, ModelPort port) {
    return port.protocol == ModelProtocol::ollama ? lookAtOllama(address, port)
                                                  : lookAtOpenAI(address, port);
}

Task<FoundServer> ServerSearch::lookAtOllama(LoopbackAddress address, ModelPort port) {
    const auto version = co_await getSmall(client_, address, "/api/version", limit_);
    if (!version.isSuccess() || !isOllamaVersion(version.body)) co_return unanswered(version, port);
    const auto tags = co_await getSmall(client_, address, "/api/tags", limit_);
    const auto listed = tags.isSuccess() ? ollamaModels(tags.body) : std::nullopt;
    if (!listed) co_return FoundServer{};
    const auto running = co_await getSmall(client_, address, "/api/ps", limit_);
    const auto loaded = running.isSuccess() ? loadedOllamaModels(running.body) : std::nullopt;
    auto model = loaded ? chosenModel(*loaded) : std::nullopt;
    if (!model) model = chosenModel(*listed);
    co_return foundServer(address, ModelProtocol::ollama, model);
}

Task<FoundServer> ServerSearch::lookAtOpenAI(LoopbackAddress address, ModelPort port) {
    const auto list = co_await getSmall(client_, address, "/v1/models", limit_);
    if (list.failure == Failure::none && list.status == 503 && tellsOfLoading(list.body)) {
        co_return FoundServer{{}, UnavailableReason::serverIsLoading};
    }
    const auto models = list.isSuccess() ? openAIModels(list.body) : std::nullopt;
    if (!models) co_return unanswered(list, port);
    const auto model = chosenModel(*models);
    if (model && model->owner == "llamacpp") {
        // It lists its model while it loads it.
        const auto health = co_await getSmall(client_, address, "/health", limit_);
        if (health.failure == Failure::none && health.status == 503) {
            co_return FoundServer{{}, UnavailableReason::serverIsLoading};
        }
    }
    co_return foundServer(address, ModelProtocol::openAI, model);
}

}  // namespace orvu

#pragma once

#include "foundation/async/TaskScope.h"
#include "platform/LanguageModel.h"
#include "platform/linux/model/LoopbackExchange.h"
#include "platform/model/ModelProtocol.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace orvu {

/// A server that can be asked, and which of its models.
struct ModelServer {
    LoopbackAddress address;
    ModelProtocol protocol = ModelProtocol::openAI;
    std::string model = {};
    bool leavesThoughtsOut = false;  ///< it knows how to
    bool isLoaded = false;           ///< it needn't load the model first, as far as it tells

    friend bool operator==(const ModelServer&, const ModelServer&) = default;
};

/// What a look at some ports found.
struct FoundServer {
    std::optional<ModelServer> server = {};
    std::optional<UnavailableReason> reason = UnavailableReason::noServer;  ///< none with a server

    friend bool operator==(const FoundServer&, const FoundServer&) = default;
};

/// Looks for a model server on several ports at once.
class ServerSearch {
public:
    /// `client` must outlive this. `ports` has the preferred ones first; `limit` is for each answer.
    ServerSearch(LoopbackClient& client, std::vector<ModelPort> ports,
                 std::chrono::milliseconds limit)
        : client_(client), ports_(std::move(ports)), limit_(limit) {}

    /// The first port whose server can answer, or the best reason why none can.
    [[nodiscard]] Task<FoundServer> find();

private:
    [[nodiscard]] Task<void> lookAt(ModelPort port, Promise<FoundServer> promise);
    [[nodiscard]] Task<FoundServer> lookAt(LoopbackAddress address, ModelPort port);
    [[nodiscard]] Task<FoundServer> lookAtOllama(LoopbackAddress address, ModelPort port);
    [[nodiscard]] Task<FoundServer> lookAtOpenAI(LoopbackAddress address, ModelPort port);

    LoopbackClient& client_;
    const std::vector<ModelPort> ports_;
    const std::chrono::milliseconds limit_;
};

}  // namespace orvu

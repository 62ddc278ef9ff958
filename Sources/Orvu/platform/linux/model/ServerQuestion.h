#pragma once

#include "platform/LanguageModel.h"
#include "platform/linux/model/ServerSearch.h"
#include "platform/model/ChatRequest.h"
#include "platform/model/ModelFailure.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace orvu {

/// How long a server may take for an answer.
struct AnswerLimits {
    std::chrono::milliseconds silence = std::chrono::seconds{120};  ///< loading takes long
    std::chrono::milliseconds total = std::chrono::minutes{30};
};

/// One question to a server that was found.
class ServerQuestion {
public:
    /// How it ended.
    struct Result {
        std::string reply = {};
        std::optional<ModelError> error = {};  ///< nothing with a reply
        bool wasReached = true;                ///< false if nobody was there to be asked
    };

    /// `client` must outlive this. `lookLimit` is for what is asked before the question.
    ServerQuestion(LoopbackClient& client, ModelServer server, AnswerLimits limits,
                   std::chrono::milliseconds lookLimit)
        : client_(client), server_(std::move(server)), limits_(limits), lookLimit_(lookLimit) {}

    [[nodiscard]] Task<Result> ask(std::string prompt, std::string instructions);

private:
    /// Whether the server has to load the model first; nothing if it no longer answers.
    [[nodiscard]] Task<std::optional<bool>> needsLoading();
    [[nodiscard]] Task<Result> send(ChatRequest request);
    [[nodiscard]] static Task<Result> read(ModelProtocol protocol,
                                           std::unique_ptr<LoopbackExchange> exchange);

    LoopbackClient& client_;
    const ModelServer server_;
    const AnswerLimits limits_;
    const std::chrono::milliseconds lookLimit_;
};

}  // namespace orvu

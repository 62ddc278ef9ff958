#pragma once

#include "platform/model/ModelProtocol.h"

#include <cstdint>
#include <string>

namespace orvu {

/// What a model is asked: one question without a history, tools, or wishes about how it answers.
struct ChatRequest {
    std::string model;
    std::string instructions;
    std::string prompt;
    bool leavesThoughtsOut = true;  ///< the server is told that the model should not think first
    bool asksForContext = false;    ///< Ollama: the model will be loaded, with `contextTokens`

    /// Tokens that hold our longest question and the longest reply. The prompt has at most 6,200
    /// characters of text, titles and question, which are hardly ever more tokens than characters
    /// in any script; 1,600 of addresses and 600 of instructions, with two characters to a token at
    /// least; and the signs around them: below 8,192. A reply has 4,096.
    static constexpr std::int64_t contextTokens = 12288;
};

[[nodiscard]] const char* chatPath(ModelProtocol protocol);
/// The request in JSON.
[[nodiscard]] std::string chatBody(ModelProtocol protocol, const ChatRequest& request);

}  // namespace orvu

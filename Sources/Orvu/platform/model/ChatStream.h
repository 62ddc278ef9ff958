#pragma once

#include "platform/model/ModelFailure.h"
#include "platform/model/ModelProtocol.h"
#include "platform/model/ReplyText.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orvu {

class JsonValue;

/// Reads an answer while it comes, in pieces that may end anywhere: lines of JSON from Ollama,
/// events from the others.
class ChatStream {
public:
    enum class State { reading, complete, failed };

    /// A line or an event of more bytes is no answer. Escapes make up to six bytes of one.
    static constexpr std::size_t lineLimit = 6 * ReplyText::byteLimit + 65536;
    /// Bytes of a whole answer. A token takes some 200, in a thought as well.
    static constexpr std::size_t answerLimit = std::size_t{64} * 1024 * 1024;

    explicit ChatStream(ModelProtocol protocol) : protocol_(protocol) {}

    /// Reads on; once the answer is complete or has failed, nothing changes any more.
    State add(std::string_view bytes);
    /// Says that no more bytes come.
    State end();
    [[nodiscard]] State state() const { return state_; }
    /// Why it failed.
    [[nodiscard]] const ModelError& error() const { return error_; }
    /// The reply of a complete answer; never blank.
    [[nodiscard]] std::string reply() const { return reply_.text(); }

private:
    void readLine(std::string_view line);
    void readEventLine(std::string_view line);
    void readEvent();
    void readOllama(const JsonValue& chunk);
    void readOpenAI(const JsonValue& chunk);
    void addPiece(const JsonValue& message);
    void fail(ModelError error);
    void complete();

    const ModelProtocol protocol_;
    State state_ = State::reading;
    ModelError error_;
    ReplyText reply_;
    std::string line_;   ///< begun, without its end
    std::string event_;  ///< begun, as far as its lines have come
    std::size_t bytes_ = 0;
    bool hasBegun_ = false;
    bool saidLast_ = false;  ///< the server named a reason to end
};

}  // namespace orvu

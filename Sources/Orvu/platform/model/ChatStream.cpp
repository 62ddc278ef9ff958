#include "platform/model/ChatStream.h"

#include "foundation/json/Json.h"

#include <algorithm>
#include <utility>

namespace orvu {

ChatStream::State ChatStream::add(std::string_view bytes) {
    bytes_ += bytes.size();
    while (state_ == State::reading && !bytes.empty()) {
        const auto end = bytes.find('\n');
        line_ += bytes.substr(0, end);
        if (line_.size() + event_.size() > lineLimit) fail({ModelFailure::unreadable});
        if (end == std::string_view::npos) break;
        bytes.remove_prefix(end + 1);
        readLine(std::exchange(line_, {}));
    }
    if (state_ == State::reading && bytes_ > answerLimit) fail({ModelFailure::tooLong});
    return state_;
}

ChatStream::State ChatStream::end() {
    if (state_ == State::reading) readLine(std::exchange(line_, {}));
    if (state_ == State::reading) readEvent();
    if (state_ != State::reading) return state_;
    if (saidLast_) {
        complete();
    } else {
        fail({hasBegun_ ? ModelFailure::brokeOff : ModelFailure::hungUp});
    }
    return state_;
}

void ChatStream::readLine(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (protocol_ == ModelProtocol::openAI) return readEventLine(line);
    if (line.find_first_not_of(" \t") == std::string_view::npos) return;
    event_ = line;
    readEvent();
}

/// An event is the text of its lines "data: …" up to an empty line. Other fields say nothing about
/// a reply, but for "error: …", with which some servers tell a failure.
void ChatStream::readEventLine(std::string_view line) {
    if (line.empty()) return readEvent();
    const auto colon = line.find(':');
    const auto name = line.substr(0, colon);
    if (name != "data" && name != "error") {
        // A comment or another field; what has no name at all is no stream of events.
        const bool isField = name.empty() || name == "event" || name == "id" || name == "retry";
        if (!isField) fail({ModelFailure::unreadable});
        return;
    }
    auto value = colon == std::string_view::npos ? "" : line.substr(colon + 1);
    if (value.starts_with(' ')) value.remove_prefix(1);
    if (!event_.empty()) event_ += '\n';
    event_ += value;
}

void ChatStream::readEvent() {
    const std::string event = std::exchange(event_, {});
    if (event.empty()) return;
    if (event == "[DONE]" && protocol_ == ModelProtocol::openAI) return complete();
    const auto document = JsonDocument::parse(event);
    if (!document || !document->root().isObject()) return fail({ModelFailure::unreadable});
    hasBegun_ = true;
    const JsonValue chunk = document->root();
    if (const auto error = chunk.field("error")) {
        const auto message = error->field("message");
        return fail(errorOfText((message ? *message : *error).text().value_or("")));
    }
    if (protocol_ == ModelProtocol::ollama) return readOllama(chunk);
    readOpenAI(chunk);
}

void ChatStream::readOllama(const JsonValue& chunk) {
    if (const auto message = chunk.field("message")) addPiece(*message);
    const auto done = chunk.field("done");
    if (done && done->boolean().value_or(false)) complete();
}

void ChatStream::readOpenAI(const JsonValue& chunk) {
    const auto list = chunk.field("choices");
    const auto choices = list ? list->array() : std::nullopt;
    if (!choices || choices->empty()) return;  // counts of tokens
    const JsonValue& choice = choices->front();
    if (const auto delta = choice.field("delta")) addPiece(*delta);
    if (choice.field("finish_reason")) saidLast_ = true;
}

/// What the model thinks stands in other fields ("thinking", "reasoning_content") and is not read.
void ChatStream::addPiece(const JsonValue& message) {
    const auto content = message.field("content");
    if (!content) return;
    const auto piece = content->text();
    if (!piece) return fail({ModelFailure::unreadable});
    reply_.add(*piece);
    if (reply_.isTooLong()) fail({ModelFailure::tooLong});
}

void ChatStream::fail(ModelError error) {
    if (state_ != State::reading) return;
    state_ = State::failed;
    error_ = std::move(error);
}

void ChatStream::complete() {
    if (state_ != State::reading) return;
    if (reply_.isBlank()) return fail({ModelFailure::blank});
    state_ = State::complete;
}

}  // namespace orvu

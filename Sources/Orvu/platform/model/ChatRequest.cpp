#include "platform/model/ChatRequest.h"

#include "foundation/json/Json.h"

#include <string_view>
#include <utility>

namespace orvu {
namespace {

void writeMessage(JsonWriter& writer, std::string_view role, std::string_view content) {
    writer.beginObject().key("role").value(role).key("content").value(content).endObject();
}

void writeOllamaSwitches(JsonWriter& writer, const ChatRequest& request) {
    if (request.leavesThoughtsOut) writer.key("think").value(false);
    // A prompt that is too long is an error, where it would lose its head in silence otherwise.
    writer.key("truncate").value(false);
    if (!request.asksForContext) return;
    writer.key("options").beginObject();
    writer.key("num_ctx").value(ChatRequest::contextTokens).endObject();
}

void writeOpenAISwitches(JsonWriter& writer, const ChatRequest& request) {
    if (!request.leavesThoughtsOut) return;
    writer.key("chat_template_kwargs").beginObject();
    writer.key("enable_thinking").value(false).endObject();
}

}  // namespace

const char* chatPath(ModelProtocol protocol) {
    return protocol == ModelProtocol::ollama ? "/api/chat" : "/v1/chat/completions";
}

std::string chatBody(ModelProtocol protocol, const ChatRequest& request) {
    JsonWriter writer;
    writer.beginObject().key("model").value(request.model).key("messages").beginArray();
    writeMessage(writer, "system", request.instructions);
    writeMessage(writer, "user", request.prompt);
    writer.endArray().key("stream").value(true);
    if (protocol == ModelProtocol::ollama) {
        writeOllamaSwitches(writer, request);
    } else {
        writeOpenAISwitches(writer, request);
    }
    writer.endObject();
    return std::move(writer).finish().value_or("");
}

}  // namespace orvu

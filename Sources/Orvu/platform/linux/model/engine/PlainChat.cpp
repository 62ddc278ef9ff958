// The templates that llama.cpp itself knows, where its library for all others is not there.
#include "platform/linux/model/engine/Chat.h"
#include "platform/model/ReplyText.h"

#include <llama.h>

#include <array>
#include <utility>

namespace orvu {
namespace {

class PlainChat : public Chat {
public:
    explicit PlainChat(std::string text) : text_(std::move(text)) {}

    [[nodiscard]] const std::string& text() const override { return text_; }
    [[nodiscard]] std::vector<std::string> shownMarks() const override {
        return {"<think>", "</think>"};
    }
    [[nodiscard]] std::vector<std::string> stops() const override { return {}; }
    [[nodiscard]] std::vector<std::string> thoughtEnds() const override { return {"</think>"}; }
    [[nodiscard]] std::string reply(const std::string& said) const override {
        ReplyText reply;
        reply.add(said);
        return reply.text();
    }

private:
    const std::string text_;
};

}  // namespace

std::unique_ptr<Chat> Chat::begin(const llama_model* model, const std::string& instructions,
                                  const std::string& prompt) {
    const char* const known = llama_model_chat_template(model, nullptr);
    if (!known) return nullptr;
    const std::array messages{llama_chat_message{"system", instructions.c_str()},
                              llama_chat_message{"user", prompt.c_str()}};
    const auto fill = [&](std::string& text) {
        return llama_chat_apply_template(known, messages.data(), messages.size(), true, text.data(),
                                         static_cast<int>(text.size()));
    };
    std::string text;
    const int length = fill(text);
    if (length <= 0) return nullptr;
    text.resize(static_cast<std::size_t>(length) + 1);  // and an end that nobody needs
    if (fill(text) != length) return nullptr;
    text.resize(static_cast<std::size_t>(length));
    return std::make_unique<PlainChat>(std::move(text));
}

}  // namespace orvu

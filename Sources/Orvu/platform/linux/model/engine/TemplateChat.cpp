// The model's own template, run by the library that llama.cpp's own programs use.
#include "platform/linux/model/engine/Chat.h"
#include "platform/model/ReplyText.h"

#include "chat.h"

#include <exception>
#include <utility>

namespace orvu {
namespace {

common_chat_msg message(const char* role, const std::string& content) {
    common_chat_msg result;
    result.role = role;
    result.content = content;
    return result;
}

class TemplateChat : public Chat {
public:
    explicit TemplateChat(common_chat_params params) : params_(std::move(params)) {}

    [[nodiscard]] const std::string& text() const override { return params_.prompt; }
    [[nodiscard]] std::vector<std::string> shownMarks() const override {
        auto marks = params_.preserved_tokens;
        if (!params_.thinking_start_tag.empty()) marks.push_back(params_.thinking_start_tag);
        marks.insert(marks.end(), params_.thinking_end_tags.begin(),
                     params_.thinking_end_tags.end());
        return marks;
    }
    [[nodiscard]] std::vector<std::string> stops() const override {
        return params_.additional_stops;
    }
    [[nodiscard]] std::vector<std::string> thoughtEnds() const override {
        return params_.thinking_end_tags;
    }
    [[nodiscard]] std::string reply(const std::string& said) const override {
        ReplyText reply;
        reply.add(parsed(said));
        return reply.text();
    }

private:
    /// The reply of a model whose thoughts stand in marks of their own; all of it if it doesn't
    /// keep to its template.
    [[nodiscard]] std::string parsed(const std::string& said) const {
        common_chat_parser_params syntax{params_};
        syntax.reasoning_format = COMMON_REASONING_FORMAT_DEEPSEEK;
        syntax.parse_tool_calls = false;
        try {
            if (!params_.parser.empty()) syntax.parser.load(params_.parser);
            return common_chat_parse(said, false, syntax).content;
        } catch (const std::exception&) {
            return said;
        }
    }

    const common_chat_params params_;
};

}  // namespace

std::unique_ptr<Chat> Chat::begin(const llama_model* model, const std::string& instructions,
                                  const std::string& prompt) {
    try {
        const auto templates = common_chat_templates_init(model, "");
        if (!templates) return nullptr;
        common_chat_templates_inputs inputs;
        inputs.messages = {message("system", instructions), message("user", prompt)};
        inputs.enable_thinking = false;
        inputs.reasoning_format = COMMON_REASONING_FORMAT_DEEPSEEK;
        return std::make_unique<TemplateChat>(common_chat_templates_apply(templates.get(), inputs));
    } catch (const std::exception&) {
        return nullptr;
    }
}

}  // namespace orvu

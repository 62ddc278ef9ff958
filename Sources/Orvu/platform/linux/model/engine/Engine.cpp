#include "platform/linux/model/engine/Engine.h"

#include "foundation/text/Text.h"
#include "platform/linux/model/engine/Chat.h"
#include "platform/model/ChatRequest.h"
#include "platform/model/GgufHeader.h"
#include "platform/model/MarkedText.h"
#include "platform/model/ReplyText.h"

#include <dlfcn.h>
#include <ggml-backend.h>
#include <llama.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <random>
#include <span>

namespace orvu {
namespace {

constexpr std::uint32_t batchTokens = 512;
constexpr std::uint32_t replyTokens = ReplyText::tokenLimit;
/// What a model may think though it was told not to.
constexpr std::uint32_t thoughtTokens = 2048;

/// Chooses the next token as llama.cpp's own programs do unless they are told otherwise.
class Choice {
public:
    Choice() : chain_(llama_sampler_chain_init(llama_sampler_chain_default_params())) {
        constexpr int kept = 40;
        constexpr float most = 0.95F;
        constexpr float least = 0.05F;
        constexpr float warmth = 0.8F;
        llama_sampler_chain_add(chain_, llama_sampler_init_top_k(kept));
        llama_sampler_chain_add(chain_, llama_sampler_init_top_p(most, 1));
        llama_sampler_chain_add(chain_, llama_sampler_init_min_p(least, 1));
        llama_sampler_chain_add(chain_, llama_sampler_init_temp(warmth));
        llama_sampler_chain_add(chain_, llama_sampler_init_dist(std::random_device{}()));
    }
    Choice(const Choice&) = delete;
    Choice& operator=(const Choice&) = delete;
    ~Choice() { llama_sampler_free(chain_); }

    llama_token next(llama_context* context) { return llama_sampler_sample(chain_, context, -1); }

private:
    llama_sampler* const chain_;
};

FileBytes bytesOf(std::FILE* file, std::uint64_t size) {
    return {.size = size, .read = [file](std::uint64_t offset, std::span<char> target) {
                const auto count =
                    pread(fileno(file), target.data(), target.size(), static_cast<off_t>(offset));
                return count > 0 ? static_cast<std::size_t>(count) : 0;
            }};
}

void endsOfThought(std::string_view said, const std::vector<std::string>& ends,
                   std::size_t& tokens) {
    if (std::ranges::any_of(ends, [&](const auto& each) { return said.ends_with(each); })) {
        tokens = 0;
    }
}

/// Cuts what the model says at a stop; whether there was one.
bool cutAtStop(std::string& said, const std::vector<std::string>& stops) {
    for (const auto& each : stops) {
        if (const auto at = said.find(each); !each.empty() && at != std::string::npos) {
            said.resize(at);
            return true;
        }
    }
    return false;
}

}  // namespace

void Engine::Freed::operator()(llama_model* model) const { llama_model_free(model); }
void Engine::Freed::operator()(llama_context* context) const { llama_free(context); }

bool Engine::loadLibraries() {
    llama_log_set([](ggml_log_level, const char*, void*) {}, nullptr);
    Dl_info facts{};
    if (dladdr(reinterpret_cast<const void*>(&ggml_backend_load_all), &facts) != 0) {
        const auto folder = std::filesystem::path{facts.dli_fname}.parent_path();
        ggml_backend_load_all_from_path(folder.c_str());
    }
    if (ggml_backend_dev_count() == 0) ggml_backend_load_all();
    llama_backend_init();
    return ggml_backend_dev_by_type(GGML_BACKEND_DEVICE_TYPE_CPU) != nullptr;
}

Engine::Model Engine::load(bool whole) {
    auto params = llama_model_default_params();
    params.n_gpu_layers = 0;
    params.vocab_only = !whole;
    params.progress_callback = [](float, void* engine) {
        return !static_cast<const Engine*>(engine)->isCancelled_;
    };
    params.progress_callback_user_data = this;
    if (std::fseek(file_, 0, SEEK_SET) != 0) return nullptr;
    return Model{llama_model_load_from_file_ptr(file_, params)};
}

EngineAnswer Engine::describe() {
    const auto header = GgufHeader::read(bytesOf(file_, size_));
    ModelDescription description;
    if (header && header->isOfChatModel()) {
        model_ = load(false);
        description = {.canAnswer = model_ && llama_model_has_decoder(model_.get()) &&
                                    Chat::begin(model_.get(), "", "") != nullptr,
                       .name = header->name,
                       .contextBytes = header->contextBytes,
                       .contextTokens = static_cast<std::uint32_t>(
                           std::min<std::uint64_t>(header->contextTokens, UINT32_MAX))};
        model_.reset();
    }
    return EngineAnswer::of(description);
}

const llama_vocab* Engine::vocabulary() const { return llama_model_get_vocab(model_.get()); }

std::string Engine::withoutMarks(const std::string& text) const {
    std::vector<std::string> marks{"<think>", "</think>"};
    const int count = llama_vocab_n_tokens(vocabulary());
    for (llama_token token = 0; token < count; ++token) {
        if (!llama_vocab_is_control(vocabulary(), token)) continue;
        marks.emplace_back(llama_vocab_get_text(vocabulary(), token));
    }
    return withMarksBroken(text, marks);
}

Engine::Tokens Engine::tokensOf(const std::string& text) const {
    const auto fill = [&](Tokens& tokens) {
        return llama_tokenize(vocabulary(), text.data(), static_cast<int>(text.size()),
                              tokens.data(), static_cast<int>(tokens.size()), true, true);
    };
    Tokens tokens(text.size() + 16);
    int count = fill(tokens);
    if (count < 0) {
        tokens.resize(static_cast<std::size_t>(-count));
        count = fill(tokens);
    }
    tokens.resize(static_cast<std::size_t>(std::max(count, 0)));
    return tokens;
}

std::string Engine::pieceOf(std::int32_t token, const Tokens& shown) const {
    const bool isShown = std::ranges::find(shown, token) != shown.end();
    std::string piece(256, '\0');
    const auto fill = [&] {
        return llama_token_to_piece(vocabulary(), token, piece.data(),
                                    static_cast<int>(piece.size()), 0, isShown);
    };
    int length = fill();
    if (length < 0) {
        piece.resize(static_cast<std::size_t>(-length));
        length = fill();
    }
    piece.resize(static_cast<std::size_t>(std::max(length, 0)));
    return piece;
}

Engine::Context Engine::contextFor(std::size_t promptTokens) const {
    constexpr auto most = static_cast<std::uint32_t>(ChatRequest::contextTokens);
    const auto longest =
        std::min(most, static_cast<std::uint32_t>(llama_model_n_ctx_train(model_.get())));
    const auto wanted = static_cast<std::uint32_t>(std::min<std::size_t>(promptTokens, most)) +
                        thoughtTokens + replyTokens;
    auto params = llama_context_default_params();
    params.n_ctx = std::min(longest, wanted);
    params.n_batch = batchTokens;
    params.n_threads = threads_;
    params.n_threads_batch = threads_;
    params.abort_callback = [](void* engine) {
        return static_cast<const Engine*>(engine)->isCancelled_.load();
    };
    params.abort_callback_data = const_cast<Engine*>(this);
    params.no_perf = true;
    return Context{llama_init_from_model(model_.get(), params)};
}

bool Engine::read(llama_context* context, Tokens& tokens) const {
    for (std::size_t at = 0; at < tokens.size(); at += batchTokens) {
        const auto count = std::min<std::size_t>(batchTokens, tokens.size() - at);
        const auto batch = llama_batch_get_one(tokens.data() + at, static_cast<int>(count));
        if (isCancelled_ || llama_decode(context, batch) != 0) return false;
    }
    return true;
}

EngineAnswer Engine::answer(const std::string& instructions, const std::string& prompt) {
    if (!model_) model_ = load(true);
    if (!model_) return EngineAnswer::of(ModelFailure::unloadable);
    const auto chat = Chat::begin(model_.get(), withoutMarks(instructions), withoutMarks(prompt));
    if (!chat) return EngineAnswer::of(ModelFailure::unloadable);

    Tokens tokens = tokensOf(chat->text());
    const Context context = contextFor(tokens.size());
    if (!context) return EngineAnswer::of(ModelFailure::noMemory);
    const std::size_t room = llama_n_ctx(context.get());
    if (tokens.empty() || tokens.size() >= room) {
        return EngineAnswer::of(ModelFailure::contextTooSmall);
    }

    Tokens shown;
    for (const auto& each : chat->shownMarks()) {
        const Tokens mark = tokensOf(each);
        if (!mark.empty()) shown.push_back(mark.back());
    }
    Choice choice;
    std::string said;
    std::size_t replied = 0;  // tokens since the last thought
    for (std::size_t used = tokens.size();; ++used) {
        if (!read(context.get(), tokens)) return EngineAnswer::of(ModelFailure::brokeOff);
        const auto token = choice.next(context.get());
        if (llama_vocab_is_eog(vocabulary(), token)) break;
        said += pieceOf(token, shown);
        if (cutAtStop(said, chat->stops())) break;
        ++replied;
        endsOfThought(said, chat->thoughtEnds(), replied);
        if (replied > replyTokens || used + 1 >= room || said.size() > ReplyText::byteLimit) {
            return EngineAnswer::of(ModelFailure::tooLong);
        }
        tokens = {token};
    }
    const std::string reply = chat->reply(said);
    if (trimmed(reply, TrimSet::whitespacesAndNewlines).empty()) {
        return EngineAnswer::of(ModelFailure::blank);
    }
    return {.kind = EngineAnswer::Kind::reply, .content = reply};
}

}  // namespace orvu

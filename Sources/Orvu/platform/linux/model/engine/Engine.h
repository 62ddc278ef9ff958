#pragma once

#include "platform/model/EngineMessages.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

struct llama_context;
struct llama_model;
struct llama_vocab;

namespace orvu {

/// Runs the model of one open file. Nothing of a question is left behind its answer.
class Engine {
public:
    /// `file` is read from its beginning each time, and has to outlive this.
    Engine(std::FILE* file, std::uint64_t size, int threads)
        : file_(file), size_(size), threads_(threads) {}

    /// Opens the engine's libraries, the one for this processor among them: later no file can be
    /// opened any more. False if there is none for it.
    [[nodiscard]] static bool loadLibraries();

    [[nodiscard]] EngineAnswer describe();
    [[nodiscard]] EngineAnswer answer(const std::string& instructions, const std::string& prompt);

    /// Ends the work at hand, from any thread, and all that begins until `allow`.
    void cancel() { isCancelled_ = true; }
    void allow() { isCancelled_ = false; }

private:
    struct Freed {
        void operator()(llama_model* model) const;
        void operator()(llama_context* context) const;
    };
    using Model = std::unique_ptr<llama_model, Freed>;
    using Context = std::unique_ptr<llama_context, Freed>;
    using Tokens = std::vector<std::int32_t>;

    [[nodiscard]] Model load(bool whole);
    [[nodiscard]] Context contextFor(std::size_t promptTokens) const;
    [[nodiscard]] const llama_vocab* vocabulary() const;
    /// What a page says of the template's own marks is text like any other.
    [[nodiscard]] std::string withoutMarks(const std::string& text) const;
    [[nodiscard]] Tokens tokensOf(const std::string& text) const;
    [[nodiscard]] std::string pieceOf(std::int32_t token, const Tokens& shown) const;
    [[nodiscard]] bool read(llama_context* context, Tokens& tokens) const;

    std::FILE* const file_;
    const std::uint64_t size_;
    const int threads_;
    std::atomic<bool> isCancelled_ = false;
    Model model_;  ///< whole, once there was a question
};

}  // namespace orvu

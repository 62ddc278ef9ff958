#pragma once

#include "platform/model/ModelFailure.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What the program asks the process that runs a model: this head, and `length` bytes behind it. Both
/// are on one machine, so numbers stand as they stand in memory.
struct EngineRequest {
    enum class Kind : std::uint32_t {
        describe = 1,  ///< says what the model file is
        ask = 2,       ///< answers: the instructions, then the prompt
        cancel = 3,    ///< ends the request under way
    };

    static constexpr std::uint32_t expectedMagic = 0x4F724D71;
    static constexpr std::uint32_t maxLength = 1U << 20;

    std::uint32_t magic = expectedMagic;
    std::uint32_t number = 0;  ///< told back in the answer
    Kind kind = Kind::describe;
    std::uint32_t instructions = 0;  ///< bytes of them
    std::uint32_t length = 0;        ///< bytes of both

    /// Whether the process may read on.
    [[nodiscard]] bool isSound() const;
};

/// What a model file is.
struct ModelDescription {
    bool canAnswer = false;  ///< it is a chat model that the engine knows
    std::string name = {};
    std::uint64_t contextBytes = 0;   ///< memory for each token of a context
    std::uint32_t contextTokens = 0;  ///< the longest context

    friend bool operator==(const ModelDescription&, const ModelDescription&) = default;
};

/// What the process says. Its first word is `ready`, with the number 0.
struct EngineAnswer {
    enum class Kind : std::uint32_t { ready = 1, description = 2, reply = 3, failure = 4 };

    Kind kind = Kind::ready;
    std::uint32_t number = 0;
    std::string content = {};

    [[nodiscard]] static EngineAnswer of(const ModelDescription& description);
    [[nodiscard]] static EngineAnswer of(ModelFailure failure);

    /// As it is sent.
    [[nodiscard]] std::string bytes() const;
    /// What a `description` tells; nothing if it makes no sense.
    [[nodiscard]] std::optional<ModelDescription> description() const;
    /// What a `failure` is; `brokeOff` if it makes no sense.
    [[nodiscard]] ModelFailure failure() const;

    friend bool operator==(const EngineAnswer&, const EngineAnswer&) = default;
};

/// Puts answers together from pieces as they come, and believes nothing of them that was not
/// checked: the process may be in the hands of whoever made the model.
class EngineAnswerReader {
public:
    /// A longer name is cut, a longer answer breaks the stream.
    static constexpr std::size_t maxName = 256;

    /// The answers that are whole now. A broken stream gives none and stays so.
    [[nodiscard]] std::vector<EngineAnswer> add(std::string_view bytes);
    [[nodiscard]] bool isBroken() const { return isBroken_; }

private:
    /// Takes the next whole answer out of what came.
    [[nodiscard]] std::optional<EngineAnswer> take();

    std::string bytes_;
    bool isBroken_ = false;
};

}  // namespace orvu

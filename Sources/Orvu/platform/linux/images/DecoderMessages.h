#pragma once

#include "foundation/Image.h"
#include "platform/ImageCodec.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// What the program asks its decoder: this head, and `length` bytes behind it. Both are on one
/// machine, so numbers stand as they stand in memory.
struct DecoderRequest {
    enum class Kind : std::uint32_t { decode = 1, encodePng = 2 };

    static constexpr std::uint32_t expectedMagic = 0x4F724471;
    static constexpr std::uint32_t maxLength = 1U << 20;

    std::uint32_t magic = expectedMagic;
    std::uint32_t number = 0;  ///< told back in the answer
    Kind kind = Kind::decode;
    std::uint32_t width = 0;  ///< of the picture to encode
    std::uint32_t height = 0;
    std::uint32_t length = 0;

    /// Whether the decoder may read on. Pictures to encode have `length` bytes of pixels.
    [[nodiscard]] bool isSound() const;
};

/// What the decoder says: this head, and `length` bytes behind it. Its first one, with the number 0
/// and nothing else, says that it is ready.
struct DecoderAnswer {
    static constexpr std::uint32_t expectedMagic = 0x4F724461;
    static constexpr std::uint32_t maxPngLength = 1U << 20;

    std::uint32_t magic = expectedMagic;
    std::uint32_t number = 0;
    std::uint32_t width = 0;  ///< of a decoded picture; 0 if there is none, and for PNG files
    std::uint32_t height = 0;
    std::uint32_t length = 0;  ///< 0 if there is no picture
};

/// Puts together one answer from pieces as they come, and believes nothing of it that was not
/// checked: the decoder may be in the hands of whoever made the picture.
class DecoderAnswerReader {
public:
    enum class State { incomplete, complete, broken };

    /// Waits for the decoder's first word.
    DecoderAnswerReader() : DecoderAnswerReader(DecoderRequest{}) { isGreeting_ = true; }
    /// Waits for the answer to `request`.
    explicit DecoderAnswerReader(const DecoderRequest& request) : request_(request) {}

    /// Takes what came. A byte more than the answer breaks it, and a broken one stays so.
    State add(std::string_view bytes);
    [[nodiscard]] State state() const { return state_; }

    /// The picture of a complete answer; null if there is none.
    [[nodiscard]] ImagePointer image() const;
    /// The file of a complete answer; empty if there is none.
    [[nodiscard]] std::string png() const;

private:
    void readHead();
    [[nodiscard]] bool isSound() const;

    DecoderRequest request_;
    bool isGreeting_ = false;
    State state_ = State::incomplete;
    std::optional<DecoderAnswer> head_;
    std::string bytes_;  ///< of the head, then of what is behind it
};

}  // namespace orvu

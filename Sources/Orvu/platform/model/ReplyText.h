#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvu {

/// The reply of a model, gathered from its pieces. What the model thinks before and between its
/// words is left out: all between <think> and </think>, and all that stands before the first mark
/// if that one is </think>, as of models whose prompt opens the thought already.
class ReplyText {
public:
    /// Bytes, thoughts included.
    static constexpr std::size_t byteLimit = std::size_t{256} * 1024;
    /// Pieces behind the last thought. Servers send a token in each.
    static constexpr std::size_t tokenLimit = 4096;

    void add(std::string_view piece);
    [[nodiscard]] bool isTooLong() const { return bytes_ > byteLimit || tokens_ > tokenLimit; }
    /// Whether there is nothing to read in it.
    [[nodiscard]] bool isBlank() const;
    [[nodiscard]] std::string text() const;

private:
    /// Takes the text up to and with the next mark out of `pending_`; false if there is none.
    bool takeMark();
    void take(std::size_t bytes);

    std::string visible_;
    std::string pending_;  ///< its end may be the head of a mark
    std::size_t bytes_ = 0;
    std::size_t tokens_ = 0;
    bool isThinking_ = false;
    bool hadMark_ = false;
};

}  // namespace orvu

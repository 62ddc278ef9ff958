#include "platform/model/ReplyText.h"

#include "foundation/text/Text.h"

#include <algorithm>

namespace orvu {
namespace {

constexpr std::string_view opening = "<think>";
constexpr std::string_view closing = "</think>";

/// How many bytes at the end of `text` may be the head of `mark`.
std::size_t headLength(std::string_view text, std::string_view mark) {
    std::size_t length = std::min(text.size(), mark.size() - 1);
    while (!text.ends_with(mark.substr(0, length))) --length;
    return length;
}

}  // namespace

void ReplyText::add(std::string_view piece) {
    if (piece.empty()) return;
    bytes_ += piece.size();
    pending_ += piece;
    while (takeMark()) {
    }
    take(pending_.size() - std::max(headLength(pending_, opening), headLength(pending_, closing)));
    if (!isThinking_) ++tokens_;
}

bool ReplyText::takeMark() {
    const auto closes = pending_.find(closing);
    const auto opens = isThinking_ ? std::string::npos : pending_.find(opening);
    const auto at = std::min(opens, closes);
    if (at == std::string::npos) return false;
    take(at);
    const bool isOpening = at == opens;
    if (!isOpening && !hadMark_) visible_.clear();
    if (!isOpening) tokens_ = 0;
    isThinking_ = isOpening;
    hadMark_ = true;
    pending_.erase(0, (isOpening ? opening : closing).size());
    return true;
}

void ReplyText::take(std::size_t bytes) {
    if (!isThinking_) visible_.append(pending_, 0, bytes);
    pending_.erase(0, bytes);
}

bool ReplyText::isBlank() const { return trimmed(text(), TrimSet::whitespacesAndNewlines).empty(); }

std::string ReplyText::text() const {
    return wellFormed(isThinking_ ? visible_ : visible_ + pending_);
}

}  // namespace orvu

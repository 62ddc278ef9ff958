#include "foundation/text/FoldedText.h"

#include "foundation/text/Text.h"

namespace orvu {

FoldedText::FoldedText(std::string_view text) : text_(composed(lowercased(text))) {}

FoldedText FoldedText::fromLowercased(std::string_view text) {
    FoldedText result;
    result.text_ = composed(text);
    return result;
}

bool FoldedText::contains(const FoldedText& part) const {
    if (part.text_.empty()) return true;
    for (auto at = positionOf(part.text_, text_); at != std::string::npos;
         at = positionOf(part.text_, text_, at + 1)) {
        if (areWholeCharacters(text_, at, part.text_.size())) return true;
    }
    return false;
}

bool FoldedText::beginsWith(const FoldedText& part) const {
    return text_.starts_with(part.text_) && isCharacterBoundary(text_, part.text_.size());
}

bool areWholeCharacters(std::string_view text, std::size_t at, std::size_t size) {
    return isCharacterBoundary(text, at) && isCharacterBoundary(text, at + size);
}

}  // namespace orvu

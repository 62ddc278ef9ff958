#include "pagetools/ReaderExtraction.h"

#include "foundation/json/Json.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

using Block = ReaderArticle::Block;

/// The blocks of an answer; nothing if they are not a list of lists of texts.
std::optional<std::vector<Block>> readBlocks(const JsonValue& answer) {
    const auto field = answer.field("blocks");
    const auto entries = field ? field->array() : std::nullopt;
    if (!entries) return std::nullopt;
    std::vector<Block> blocks;
    blocks.reserve(entries->size());
    for (const JsonValue& entry : *entries) {
        const auto pair = entry.texts();
        if (!pair) return std::nullopt;
        if (pair->size() != 2) continue;
        blocks.push_back({.kind = std::string{(*pair)[0]}, .text = std::string{(*pair)[1]}});
    }
    return blocks;
}

/// The number of pieces between blanks that are not empty.
std::size_t words(std::string_view text) {
    std::size_t count = 0;
    char previous = ' ';
    for (const char c : text) {
        count += static_cast<std::size_t>((previous == ' ') & (c != ' '));
        previous = c;
    }
    return count;
}

}  // namespace

const std::string_view ReaderExtraction::script =
#include "pagetools/ReaderScript.inc"
    ;

std::optional<ReaderArticle> ReaderExtraction::article(const ScriptResult& answer,
                                                       const Page& page) {
    if (answer.kind != ScriptResult::Kind::json) return std::nullopt;
    const auto document = JsonDocument::parse(answer.text);
    if (!document) return std::nullopt;
    auto blocks = readBlocks(document->root());
    if (!blocks) return std::nullopt;
    const auto field = document->root().field("title");
    const auto told = field ? field->text() : std::nullopt;
    std::string title{told.value_or(page.title)};

    // The title stands above the blocks already.
    const bool repeats =
        !blocks->empty() && blocks->front().kind == "h1" && blocks->front().text == title;
    if (repeats) blocks->erase(blocks->begin());
    const int duration = minutes(*blocks);
    return ReaderArticle{page.url, std::move(title), page.site, std::move(*blocks), duration};
}

int ReaderExtraction::minutes(std::span<const Block> blocks) {
    std::size_t count = 0;
    for (const Block& block : blocks) count += words(block.text);
    return std::max(1, static_cast<int>(count / wordsPerMinute));
}

}  // namespace orvu

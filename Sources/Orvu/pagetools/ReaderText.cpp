#include "pagetools/ReaderText.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"
#include "look/text/TextDirection.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace orvu {
namespace {

constexpr double minDrawn = 4;
constexpr double maxDrawn = 200;

/// Capitals, whatever the language.
std::string capitals(std::string_view text) {
    std::string result;
    icu::UnicodeString::fromUTF8(wellFormed(text))
        .toUpper(icu::Locale::getRoot())
        .toUTF8String(result);
    return result;
}

ReaderPiece piece(ReaderRole role, std::string_view text) {
    std::string shown{text};
    // No text view takes it, and nobody sees it.
    std::erase(shown, '\0');
    return {role, std::move(shown), runsLeftwards(text)};
}

}  // namespace

ReaderStyle ReaderStyle::of(ReaderRole role, double baseSize) {
    const double size = std::clamp(baseSize, minDrawn, maxDrawn);
    const double apart = size * 0.9;
    switch (role) {
        case ReaderRole::meta:
            return {.fontSize = 11,
                    .weight = Weight::medium,
                    .isMonospaced = true,
                    .isMuted = true,
                    .letterSpacing = 1};
        case ReaderRole::title:
            return {.fontSize = size * 2,
                    .weight = Weight::semibold,
                    .letterSpacing = -0.5,
                    .above = apart};
        case ReaderRole::heading:
            return {
                .fontSize = size * 1.35, .weight = Weight::semibold, .above = apart + size * 0.6};
        case ReaderRole::subheading:
            return {
                .fontSize = size * 1.1, .weight = Weight::semibold, .above = apart + size * 0.4};
        case ReaderRole::paragraph:
            return {.fontSize = size, .above = apart, .lineSpacing = size * 0.5};
        case ReaderRole::item:
            return {.fontSize = size, .above = apart, .lineSpacing = size * 0.45};
        case ReaderRole::quote:
            return {
                .fontSize = size, .isItalic = true, .isMuted = true, .above = apart, .indent = 16};
    }
    return {};
}

int ReaderColumn::margin(int room) { return std::max(sidePadding, (room - width) / 2); }

ReaderRole readerRole(std::string_view kind) {
    if (kind == "h1" || kind == "h2") return ReaderRole::heading;
    if (kind == "h3") return ReaderRole::subheading;
    if (kind == "li") return ReaderRole::item;
    if (kind == "blockquote") return ReaderRole::quote;
    return ReaderRole::paragraph;
}

std::string readerMeta(const ReaderArticle& article) {
    return tr("{1} · {2} MIN", capitals(article.site), std::to_string(article.minutes));
}

std::vector<ReaderPiece> readerPieces(const ReaderArticle& article) {
    std::vector<ReaderPiece> pieces;
    pieces.reserve(article.blocks.size() + 2);
    pieces.push_back(piece(ReaderRole::meta, readerMeta(article)));
    pieces.push_back(piece(ReaderRole::title, article.title));
    for (const auto& block : article.blocks) {
        pieces.push_back(piece(readerRole(block.kind), block.text));
    }
    return pieces;
}

}  // namespace orvu

#pragma once

#include "pagetools/Reader.h"
#include "platform/WebView.h"

#include <optional>
#include <span>
#include <string_view>

namespace orvu {

/// How an article is taken out of a page.
struct ReaderExtraction {
    static constexpr int wordsPerMinute = 230;

    /// What is known of the page beside its script's answer.
    struct Page {
        Url url;
        std::string title;  ///< for an article that tells none
        std::string site;
    };

    /// An expression that finds the part of the page with the most text in paragraphs and gives
    /// its title and blocks; null for a page with too little of it. It is the file
    /// data/scripts/reader.js.
    static const std::string_view script;

    /// The article that the script's answer tells of. Nothing if it tells of none, or is not
    /// what the script gives.
    [[nodiscard]] static std::optional<ReaderArticle> article(const ScriptResult& answer,
                                                              const Page& page);
    /// How long it takes to read, at least 1. Only blanks part words.
    [[nodiscard]] static int minutes(std::span<const ReaderArticle::Block> blocks);
};

}  // namespace orvu

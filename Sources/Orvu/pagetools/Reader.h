#pragma once

#include "foundation/Url.h"
#include "foundation/Uuid.h"

#include <string>
#include <vector>

namespace orvu {

/// The article of a page: what the reader shows in the page's place.
struct ReaderArticle {
    /// A heading, a paragraph, an item of a list or a quote.
    struct Block {
        Uuid id = Uuid::random();
        std::string kind;  ///< the element's name: h1, h2, h3, p, li or blockquote
        std::string text;

        friend bool operator==(const Block&, const Block&) = default;
    };

    Url url;  ///< where the page was when its article was asked for
    std::string title;
    std::string site;           ///< the host; empty without one
    std::vector<Block> blocks;  ///< as they stand in the page; may be none
    int minutes = 1;            ///< how long it takes to read, at least 1

    friend bool operator==(const ReaderArticle&, const ReaderArticle&) = default;
};

}  // namespace orvu

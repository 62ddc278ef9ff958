#pragma once

#include "pagetools/Reader.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What a piece of the reader's text is, and so how it looks.
enum class ReaderRole { meta, title, heading, subheading, paragraph, item, quote };

/// How large and how far apart something is, in points.
struct ReaderStyle {
    enum class Weight { regular, medium, semibold };

    double fontSize = 0;
    Weight weight = Weight::regular;
    bool isItalic = false;
    bool isMonospaced = false;
    bool isMuted = false;
    double letterSpacing = 0;
    double above = 0;        ///< from what stands above, the first piece apart
    double lineSpacing = 0;  ///< between its own lines
    double indent = 0;       ///< of quotes, at the side where their lines begin

    /// The style at a text size. Sizes that nothing can be read at, or that no screen could hold,
    /// are taken for the nearest that can be drawn.
    [[nodiscard]] static ReaderStyle of(ReaderRole role, double size);

    friend bool operator==(const ReaderStyle&, const ReaderStyle&) = default;
};

/// The measures that don't depend on the text size.
struct ReaderColumn {
    static constexpr int width = 680;  ///< at most
    static constexpr int sidePadding = 32;
    static constexpr int endPadding = 56;  ///< above and below
    static constexpr int bulletSpacing = 10;
    static constexpr int quoteBar = 3;

    /// The space at each side of the text where there is `room` for it.
    [[nodiscard]] static int margin(int room);
};

/// One piece of the reader's text.
struct ReaderPiece {
    ReaderRole role;
    std::string text;
    bool isLeftward = false;  ///< runs from right to left

    friend bool operator==(const ReaderPiece&, const ReaderPiece&) = default;
};

[[nodiscard]] ReaderRole readerRole(std::string_view kind);
/// The line above the title: site and reading time.
[[nodiscard]] std::string readerMeta(const ReaderArticle& article);
/// All that the reader shows of an article, from top to bottom.
[[nodiscard]] std::vector<ReaderPiece> readerPieces(const ReaderArticle& article);

}  // namespace orvu

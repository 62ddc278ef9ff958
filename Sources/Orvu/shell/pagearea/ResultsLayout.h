#pragma once

namespace orvu {

/// Where a page and the answer beside it lie in their room, in points from the left.
struct ResultsLayout {
    static constexpr int answerWidth = 360;  ///< of the card with its padding
    /// What a page keeps beside the answer. In less room the answer lies over the page's end.
    static constexpr int leastPage = 260;

    int pageWidth = 0;
    int answerBegin = 0;
    int answerWidthHere = 0;

    /// From the left to the right.
    [[nodiscard]] static constexpr ResultsLayout in(int room) {
        const int answer = room < answerWidth ? room : answerWidth;
        const bool isBeside = room - answer >= leastPage;
        return {isBeside ? room - answer : room, room - answer, answer};
    }

    friend constexpr bool operator==(const ResultsLayout&, const ResultsLayout&) = default;
};

}  // namespace orvu

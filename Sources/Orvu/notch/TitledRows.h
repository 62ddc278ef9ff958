#pragma once

#include "foundation/FoldedText.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace orvu {

/// The texts of many rows, a title and an address each, kept so that all of them are searched in
/// a fraction of a millisecond: many texts lie in one piece of memory. Rows come at the end and
/// may go at both ends.
class TitledRows {
public:
    enum class Order { forward, backward };

    /// What a row is to hold: whole characters in its title, or exact text in its address.
    struct Wanted {
        const FoldedText& inTitle;     ///< not empty
        const std::string& inAddress;  ///< not empty
    };

    /// `title` is folded; `address` stands in the letter case in which it is to be compared.
    void append(std::string_view title, std::string_view address);
    void dropFirst(std::size_t count);
    void keepFirst(std::size_t count);
    void clear();

    /// Gives `take` the number of each row that holds what is wanted, counted from the first one,
    /// until it answers no.
    template <class Take>
    void search(const Wanted& wanted, Order order, const Take& take) const {
        for (std::size_t step = 0; step < blocks_.size(); ++step) {
            const std::size_t block = order == Order::forward ? step : blocks_.size() - 1 - step;
            for (Marks left = matches(block, wanted); left != 0;) {
                const int bit = order == Order::forward ? std::countr_zero(left)
                                                        : lastBit - std::countl_zero(left);
                left &= ~(Marks{1} << bit);
                if (!take(block * blockRows + static_cast<std::size_t>(bit) - dropped_)) return;
            }
        }
    }

private:
    /// One bit for each row of a block, the first row's the lowest.
    using Marks = std::uint64_t;
    static constexpr std::size_t blockRows = 64;
    static constexpr int lastBit = 63;

    /// One text of each row, one behind the other.
    struct Column {
        std::string text;
        std::array<std::size_t, blockRows> ends{};
        std::size_t longest = 0;  ///< no text of a row is longer
    };
    struct Block {
        std::size_t rows = 0;
        Column titles;
        Column addresses;
    };

    [[nodiscard]] Marks matches(std::size_t block, const Wanted& wanted) const;

    std::deque<Block> blocks_;
    std::size_t dropped_ = 0;  ///< rows of the first block that are gone, fewer than it has
};

}  // namespace orvu

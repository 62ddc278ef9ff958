#pragma once

#include "foundation/text/FoldedText.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace orvu {

/// The texts of many rows, a title and an address each, kept so that all of them are searched in
/// a fraction of a millisecond: many texts lie in one piece of memory.
///
/// The rows stand in blocks of up to 64. Within a block all titles are one text and all addresses
/// another, so that one search with the processor's wide instructions finds every row at once,
/// instead of a call, an allocation and a cache miss for each; what a search found in a block is
/// one bit a row in a single word. Blocks are small enough that a row put in or taken out anywhere
/// moves only some kilobytes; one that is full splits in the middle.
class TitledRows {
public:
    enum class Order { forward, backward };

    /// What a row is to hold: whole characters in its title, or exact text in its address.
    struct Query {
        const FoldedText& inTitle;     ///< not empty
        const std::string& inAddress;  ///< not empty
    };

    [[nodiscard]] std::size_t size() const { return size_; }

    /// Puts a row before the one that has the number `row` now. `title` is folded; `address`
    /// stands in the letter case in which it is to be compared.
    void insert(std::size_t row, std::string_view title, std::string_view address);
    void append(std::string_view title, std::string_view address) { insert(size_, title, address); }
    void erase(std::size_t row);
    void clear();

    /// Gives `take` the number of each row that matches `query`, until it answers no.
    template <class Take>
    void search(const Query& query, Order order, const Take& take) const {
        const bool isForward = order == Order::forward;
        std::size_t begin = isForward ? 0 : size_;
        for (std::size_t step = 0; step < blocks_.size(); ++step) {
            const Block& block = blocks_[isForward ? step : blocks_.size() - 1 - step];
            if (!isForward) begin -= block.rows;
            for (Marks left = matches(block, query); left != 0;) {
                const int bit =
                    isForward ? std::countr_zero(left) : lastBit - std::countl_zero(left);
                left &= ~(Marks{1} << bit);
                if (!take(begin + static_cast<std::size_t>(bit))) return;
            }
            if (isForward) begin += block.rows;
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
        std::array<std::size_t, blockRows> ends{};  ///< of the rows that there are
        std::size_t longest = 0;                    ///< no text of a row is longer

        [[nodiscard]] std::size_t begin(std::size_t row) const {
            return row == 0 ? 0 : ends.at(row - 1);
        }
        void insert(std::size_t rows, std::size_t row, std::string_view added);
        void erase(std::size_t rows, std::size_t row);
    };
    struct Block {
        std::size_t rows = 0;
        Column titles;
        Column addresses;

        void insert(std::size_t row, std::string_view title, std::string_view address);
        void erase(std::size_t row);
        /// The later half of the rows, which leave this block.
        [[nodiscard]] Block split();
    };

    [[nodiscard]] static Marks matches(const Block& block, const Query& query);

    std::deque<Block> blocks_;  ///< none is empty
    std::size_t size_ = 0;
};

}  // namespace orvu

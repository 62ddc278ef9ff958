#include "notch/candidates/TitledRows.h"

#include "foundation/text/Text.h"

#include <algorithm>

namespace orvu {
namespace {

/// Gives `take` each row of `column` in whose text `part` stands where `accept` takes it.
///
/// `part` is sought in the joined texts, so a hit may lie across the border of two rows, which is
/// none. After a row was taken, or such a border was met, the search goes on with the next row;
/// after a hit that `accept` refuses, one byte on, since the same row may hold a better one.
template <class Accept, class Take>
void eachRowWith(std::string_view part, const auto& column, const Accept& accept,
                 const Take& take) {
    if (part.size() > column.longest) return;
    const std::string_view text = column.text;
    std::size_t row = 0;
    std::size_t begin = 0;
    for (auto at = positionOf(part, text); at != std::string_view::npos;) {
        for (; column.ends[row] <= at; ++row) begin = column.ends[row];
        const std::size_t end = column.ends[row];
        // What reaches into the next row is no match, and neither is what begins behind it.
        const bool isWithin = at + part.size() <= end;
        const bool isTaken = isWithin && accept(text.substr(begin, end - begin), at - begin);
        if (isTaken) take(row);
        at = positionOf(part, text, isWithin && !isTaken ? at + 1 : end);
    }
}

}  // namespace

void TitledRows::Column::insert(std::size_t rows, std::size_t row, std::string_view added) {
    text.insert(begin(row), added);
    for (std::size_t each = rows; each > row; --each)
        ends.at(each) = ends.at(each - 1) + added.size();
    ends.at(row) = begin(row) + added.size();
    longest = std::max(longest, added.size());
}

void TitledRows::Column::erase(std::size_t rows, std::size_t row) {
    const std::size_t size = ends.at(row) - begin(row);
    text.erase(begin(row), size);
    for (std::size_t each = row; each + 1 < rows; ++each) ends.at(each) = ends.at(each + 1) - size;
}

void TitledRows::Block::insert(std::size_t row, std::string_view title, std::string_view address) {
    titles.insert(rows, row, title);
    addresses.insert(rows, row, address);
    ++rows;
}

void TitledRows::Block::erase(std::size_t row) {
    titles.erase(rows, row);
    addresses.erase(rows, row);
    --rows;
}

TitledRows::Block TitledRows::Block::split() {
    const std::size_t kept = rows / 2;
    Block later;
    for (std::size_t row = kept; row < rows; ++row) {
        const auto text = [row](const Column& column) {
            const std::size_t begin = column.begin(row);
            return std::string_view{column.text}.substr(begin, column.ends.at(row) - begin);
        };
        later.insert(later.rows, text(titles), text(addresses));
    }
    titles.text.resize(titles.begin(kept));
    addresses.text.resize(addresses.begin(kept));
    rows = kept;
    return later;
}

void TitledRows::insert(std::size_t row, std::string_view title, std::string_view address) {
    const bool isLast = row == size_++;
    auto block = blocks_.begin();
    if (isLast) {
        if (blocks_.empty() || blocks_.back().rows == blockRows) blocks_.emplace_back();
        block = blocks_.end() - 1;
        row = block->rows;
    } else {
        for (; row >= block->rows; ++block) row -= block->rows;
        if (block->rows == blockRows) {
            block = blocks_.insert(block + 1, block->split()) - 1;
            if (row > block->rows) row -= block++->rows;
        }
    }
    block->insert(row, title, address);
}

void TitledRows::erase(std::size_t row) {
    --size_;
    auto block = blocks_.begin();
    for (; row >= block->rows; ++block) row -= block->rows;
    block->erase(row);
    if (block->rows == 0) blocks_.erase(block);
}

void TitledRows::clear() {
    blocks_.clear();
    size_ = 0;
}

TitledRows::Marks TitledRows::matches(const Block& block, const Query& query) {
    Marks result = 0;
    const auto mark = [&](std::size_t row) { result |= Marks{1} << row; };
    const std::string& inTitle = query.inTitle.text();
    const auto isWhole = [&](std::string_view title, std::size_t at) {
        return areWholeCharacters(title, at, inTitle.size());
    };
    eachRowWith(inTitle, block.titles, isWhole, mark);
    const auto anywhere = [](std::string_view, std::size_t) { return true; };
    eachRowWith(query.inAddress, block.addresses, anywhere, mark);
    return result;
}

}  // namespace orvu

#include "notch/TitledRows.h"

#include "foundation/Text.h"

#include <algorithm>

namespace orvu {
namespace {

/// Gives `take` each row of `column` in whose text `part` stands where `accept` takes it.
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

void TitledRows::append(std::string_view title, std::string_view address) {
    if (blocks_.empty() || blocks_.back().rows == blockRows) blocks_.emplace_back();
    Block& block = blocks_.back();
    const auto add = [&](Column& column, std::string_view text) {
        column.text.append(text);
        column.ends.at(block.rows) = column.text.size();
        column.longest = std::max(column.longest, text.size());
    };
    add(block.titles, title);
    add(block.addresses, address);
    ++block.rows;
}

void TitledRows::dropFirst(std::size_t count) {
    dropped_ += count;
    while (!blocks_.empty() && dropped_ >= blocks_.front().rows) {
        dropped_ -= blocks_.front().rows;
        blocks_.pop_front();
    }
    if (blocks_.empty()) dropped_ = 0;
}

void TitledRows::keepFirst(std::size_t count) {
    if (count == 0) return clear();
    const std::size_t end = dropped_ + count;
    while (blocks_.size() > 1 && (blocks_.size() - 1) * blockRows >= end) blocks_.pop_back();
    if (blocks_.empty()) return;
    Block& last = blocks_.back();
    const std::size_t rows = end - (blocks_.size() - 1) * blockRows;
    if (rows >= last.rows) return;
    last.rows = rows;
    last.titles.text.resize(last.titles.ends.at(rows - 1));
    last.addresses.text.resize(last.addresses.ends.at(rows - 1));
}

void TitledRows::clear() {
    blocks_.clear();
    dropped_ = 0;
}

TitledRows::Marks TitledRows::matches(std::size_t block, const Wanted& wanted) const {
    Marks result = 0;
    const auto mark = [&](std::size_t row) { result |= Marks{1} << row; };
    const auto& [rows, titles, addresses] = blocks_[block];
    const std::string& inTitle = wanted.inTitle.text();
    eachRowWith(
        inTitle, titles,
        [&](std::string_view title, std::size_t at) {
            return areWholeCharacters(title, at, inTitle.size());
        },
        mark);
    eachRowWith(
        wanted.inAddress, addresses, [](std::string_view, std::size_t) { return true; }, mark);
    return block == 0 ? result & (~Marks{0} << dropped_) : result;
}

}  // namespace orvu

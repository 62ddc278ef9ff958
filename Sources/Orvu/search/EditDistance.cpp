#include "search/EditDistance.h"

#include "foundation/text/Text.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvu {
namespace {

/// Gives equal characters equal numbers, since numbers are compared faster than texts.
class Numbering {
public:
    std::vector<std::uint32_t> operator()(std::string_view composedText) {
        std::vector<std::uint32_t> result;
        for (const auto character : characters(composedText)) {
            const auto next = static_cast<std::uint32_t>(numbers_.size());
            result.push_back(numbers_.try_emplace(character, next).first->second);
        }
        return result;
    }

private:
    std::unordered_map<std::string_view, std::uint32_t> numbers_;
};

}  // namespace

std::size_t editDistance(std::string_view a, std::string_view b) {
    const std::string from = composed(a);
    const std::string to = composed(b);
    Numbering numbers;
    const auto rows = numbers(from);
    const auto columns = numbers(to);

    // Before each round, `row[j]` is the distance of the rows seen so far to the first j columns.
    std::vector<std::size_t> row(columns.size() + 1);
    for (std::size_t j = 0; j < row.size(); ++j) row[j] = j;
    for (const auto character : rows) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 1; j < row.size(); ++j) {
            const std::size_t replaced = diagonal + (columns[j - 1] == character ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

}  // namespace orvu

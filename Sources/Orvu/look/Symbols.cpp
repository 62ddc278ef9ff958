#include "look/Symbols.h"

#include <algorithm>
#include <array>

namespace orvu {
namespace {

struct SymbolRow {
    std::string_view symbol;
    std::string_view icon;
};

/// The rows of data/symbols.csv.
constexpr auto rows = std::to_array<SymbolRow>({
#include "look/SymbolTable.inc"
});
static_assert(std::ranges::is_sorted(rows, std::ranges::less_equal{}, &SymbolRow::symbol),
              "each symbol stands once, in the order in which it is looked up");

}  // namespace

std::string symbolIcon(std::string_view symbol) {
    const auto* const row = std::ranges::lower_bound(rows, symbol, {}, &SymbolRow::symbol);
    if (row == rows.end() || row->symbol != symbol) return {};
    return std::string{row->icon} + "-symbolic";
}

}  // namespace orvu

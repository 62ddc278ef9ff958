#include "look/Symbols.h"

#include "support/SymbolTable.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(SymbolsTest, EachSymbolOfTheTableHasItsIcon) {
    const auto table = symbolTable();

    ASSERT_GT(table.size(), 100U);
    for (const auto& [symbol, icon] : table) EXPECT_EQ(symbolIcon(symbol), icon + "-symbolic");
}

TEST(SymbolsTest, AWellKnownSymbolIsFound) {
    EXPECT_EQ(symbolIcon("plus"), "plus-bold-symbolic");
    EXPECT_EQ(symbolIcon("tortoise.fill"), "tortoise-fill-symbolic");
}

TEST(SymbolsTest, ASymbolThatIsNotInTheTableHasNoIcon) {
    EXPECT_EQ(symbolIcon(""), "");
    EXPECT_EQ(symbolIcon("plu"), "");
    EXPECT_EQ(symbolIcon("pluss"), "");
    EXPECT_EQ(symbolIcon("~"), "");
    EXPECT_EQ(symbolIcon("book."), "");
}

TEST(SymbolsTest, TheColumnsNamesAreNoSymbol) { EXPECT_EQ(symbolIcon("symbol"), ""); }

}  // namespace
}  // namespace orvu

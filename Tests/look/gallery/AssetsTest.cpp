#include "look/Symbols.h"
#include "support/SymbolTable.h"

#include <giomm/resource.h>
#include <gtest/gtest.h>

namespace orvu {
namespace {

std::string resource(const std::string& path) {
    const auto bytes = Gio::Resource::lookup_data_global("/app/orvu/Orvu/" + path);
    gsize size = 0;
    const auto* const text = static_cast<const char*>(bytes->get_data(size));
    return {text, size};
}

TEST(AssetsTest, EachSymbolHasItsDrawing) {
    for (const auto& [symbol, icon] : symbolTable()) {
        const std::string name = "icons/scalable/actions/" + symbolIcon(symbol) + ".svg";

        EXPECT_TRUE(resource(name).starts_with("<svg ")) << name;
    }
}

TEST(AssetsTest, NoDrawingHasStrokesWhichRecolouringWouldFill) {
    for (const auto& [symbol, icon] : symbolTable()) {
        const std::string name = "icons/scalable/actions/" + symbolIcon(symbol) + ".svg";

        EXPECT_EQ(resource(name).find("stroke"), std::string::npos) << name;
    }
}

TEST(AssetsTest, TheFontsAreUnpacked) {
    const std::string trueType{"\0\1\0\0", 4};

    EXPECT_TRUE(resource("fonts/Doto.ttf").starts_with(trueType));
    EXPECT_TRUE(resource("fonts/DotoBlack.ttf").starts_with(trueType));
}

TEST(AssetsTest, TheLicencesComeWithThem) {
    EXPECT_NE(resource("licences/phosphor-icons.txt").find("MIT"), std::string::npos);
    EXPECT_NE(resource("licences/doto.txt").find("SIL Open Font License"), std::string::npos);
}

}  // namespace
}  // namespace orvu

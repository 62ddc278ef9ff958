#include "engine/EngineWorld.h"
#include "support/IconFiles.h"

#include <chrono>
#include <fstream>

namespace orvu {
namespace {

using namespace std::chrono_literals;

/// Pictures on their way through the decoder's process.
class ImageCodecTest : public EngineTest {
protected:
    [[nodiscard]] std::string sizeOf(const std::string& bytes) {
        const auto image = decoded(bytes);
        return image ? std::to_string(image->width) + "x" + std::to_string(image->height) : "";
    }
    /// The red, green, blue and alpha of the middle pixel; empty without a picture.
    [[nodiscard]] std::vector<int> middleOf(const std::string& bytes) {
        const auto image = decoded(bytes);
        if (!image) return {};
        const auto at =
            static_cast<std::size_t>(image->height / 2 * image->width + image->width / 2);
        const auto* const pixel = image->rgba.data() + at * 4;
        return {pixel, pixel + 4};
    }
};

const std::vector<int> blue{0x33, 0x66, 0xCC, 0xFF};

TEST_F(ImageCodecTest, PicturesOfEachKindAreReadWithTheirColours) {
    EXPECT_EQ(middleOf(IconFiles::png(16)), blue);
    EXPECT_EQ(middleOf(IconFiles::ico()), blue);
    EXPECT_EQ(middleOf(IconFiles::icoOfPng(IconFiles::png(32), 32)), blue);
    EXPECT_EQ(middleOf(IconFiles::svg("<rect width='16' height='16' fill='#36c'/>")), blue);
    EXPECT_EQ(middleOf(IconFiles::bmp(5, 3, 3)), blue);
    EXPECT_EQ(middleOf(IconFiles::gif()), blue);
    EXPECT_EQ(middleOf(IconFiles::jpeg()), (std::vector<int>{0x35, 0x66, 0xCD, 0xFF}));
}

TEST_F(ImageCodecTest, LargePicturesAreScaledDownAndSmallOnesStay) {
    EXPECT_EQ(sizeOf(IconFiles::png(16)), "16x16");
    EXPECT_EQ(sizeOf(IconFiles::png(256)), "256x256");
    EXPECT_EQ(sizeOf(IconFiles::png(300)), "256x256");
    EXPECT_EQ(sizeOf(IconFiles::png(400, 100, 100)), "256x64");
    EXPECT_EQ(sizeOf(IconFiles::png(2000, 1, 1)), "256x1");
}

TEST_F(ImageCodecTest, DrawingsAreDrawnAtTheLargestSize) {
    EXPECT_EQ(sizeOf(IconFiles::svg("<rect width='16' height='16'/>")), "256x256");
    EXPECT_EQ(sizeOf("<svg xmlns='http://www.w3.org/2000/svg' width='100000' height='50000'/>"),
              "256x128");
}

TEST_F(ImageCodecTest, APictureThatDeclaresAHugeSizeIsRefusedBeforeMemoryIsTaken) {
    ASSERT_EQ(sizeOf(IconFiles::png(1)), "1x1");  // the decoder is there
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_EQ(sizeOf(IconFiles::png(30'000, 30'000, 1)), "");
    EXPECT_EQ(sizeOf(IconFiles::icoOfPng(IconFiles::png(30'000, 30'000, 1), 16)), "");
    EXPECT_EQ(sizeOf(IconFiles::png(4097, 1, 1)), "");
    EXPECT_EQ(sizeOf(IconFiles::png(100'000, 100'000, 0)), "");
    EXPECT_EQ(sizeOf(IconFiles::bmp(100'000, 100'000, 0)), "");
    EXPECT_EQ(sizeOf(IconFiles::bmp(1, 100'000, 1)), "");
    EXPECT_EQ(sizeOf(IconFiles::gif(65'535)), "");

    EXPECT_LT(std::chrono::steady_clock::now() - begin, 1s);
}

TEST_F(ImageCodecTest, NoTruncatedFileIsReadAsAnotherSizeOrBreaksAnything) {
    const std::string wholeFiles[] = {IconFiles::png(4),
                                      IconFiles::ico(),
                                      IconFiles::icoOfPng(IconFiles::png(4), 4),
                                      IconFiles::jpeg(),
                                      IconFiles::gif(),
                                      IconFiles::bmp(4, 4, 4),
                                      IconFiles::svg("<rect width='1' height='1'/>")};
    for (const auto& whole : wholeFiles) {
        const std::string size = sizeOf(whole);
        ASSERT_NE(size, "");
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const std::string found = sizeOf(whole.substr(0, length));
            EXPECT_TRUE(found.empty() || found == size) << length << ": " << found;
        }
    }
}

TEST_F(ImageCodecTest, OtherFilesAreNoPictures) {
    EXPECT_EQ(sizeOf(""), "");
    EXPECT_EQ(sizeOf("<!doctype html><title>404</title>"), "");
    EXPECT_EQ(sizeOf(std::string(999'999, 'B')), "");
    EXPECT_EQ(sizeOf("/* XPM */ static char *x[] = {\"1 1 1 1\", \"a c #fff\", \"a\"};"), "");
    EXPECT_EQ(sizeOf("<svg"), "");
}

TEST_F(ImageCodecTest, ADrawingReadsNothingOutsideItself) {
    const auto outside = std::filesystem::temp_directory_path() /
                         ("orvu-drawing-" + std::to_string(getpid()) + ".svg");
    std::ofstream{outside} << IconFiles::svg("<rect id='r' width='16' height='16' fill='#f00'/>");
    const std::string file = "file://" + outside.string();

    const auto used = middleOf(IconFiles::svg("<use xlink:href='" + file + "#r'/>"));
    const auto pictured =
        middleOf(IconFiles::svg("<image width='16' height='16' xlink:href='" + file + "'/>"));
    const auto entity = middleOf("<!DOCTYPE svg [<!ENTITY e SYSTEM '" + file + "'>]>" +
                                 IconFiles::svg("<text>&e;</text>"));
    std::filesystem::remove(outside);

    EXPECT_EQ(used, (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(pictured, std::vector<int>{});
    EXPECT_EQ(entity, std::vector<int>{});
}

TEST_F(ImageCodecTest, BombsEndInBoundedTime) {
    std::string deep;
    for (int i = 0; i < 20'000; ++i) deep += "<g>";
    std::string uses = "<g id='l0'><rect width='1' height='1'/></g>";
    for (int i = 1; i < 12; ++i) {
        uses += "<g id='l" + std::to_string(i) + "'>";
        for (int k = 0; k < 10; ++k) uses += "<use xlink:href='#l" + std::to_string(i - 1) + "'/>";
        uses += "</g>";
    }
    const auto begin = std::chrono::steady_clock::now();

    static_cast<void>(sizeOf(IconFiles::svg(deep)));
    static_cast<void>(sizeOf(IconFiles::svg(uses)));

    EXPECT_LT(std::chrono::steady_clock::now() - begin, 30s);
}

}  // namespace
}  // namespace orvu

#include "engine/EngineWorld.h"
#include "support/IconFiles.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace orvu {
namespace {

using namespace std::chrono_literals;
using Isolation = ConfinedProcess::Isolation;
using Sizes = std::vector<int>;

const auto realDecoder = installedDecoder();
const auto faultyDecoder = realDecoder.parent_path() / "orvu-faulty-decoder";
constexpr auto keptName = "orvu-image-deco";  // as the kernel cuts it

std::string compressed(std::string_view raw) {
    auto* const compressor = G_CONVERTER(g_zlib_compressor_new(G_ZLIB_COMPRESSOR_FORMAT_ZLIB, 9));
    std::string result(raw.size() / 100 + 10'000, '\0');
    gsize taken = 0;
    gsize given = 0;
    const auto end =
        g_converter_convert(compressor, raw.data(), raw.size(), result.data(), result.size(),
                            G_CONVERTER_INPUT_AT_END, &taken, &given, nullptr);
    g_object_unref(compressor);
    EXPECT_EQ(end, G_CONVERTER_FINISHED);
    result.resize(given);
    return result;
}

/// The lines of a report that end with a word, without it.
std::vector<std::string> linesWith(const std::string& report, const std::string& end) {
    std::vector<std::string> found;
    std::istringstream lines{report};
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with(end)) found.push_back(line.substr(0, line.size() - end.size()));
    }
    return found;
}

/// Decoders that are shut in by bubblewrap, or by themselves where that can't work.
class DecoderTest : public EngineTest, public testing::WithParamInterface<Isolation> {
protected:
    /// The decoders of this test. Those of earlier ones end when they like.
    [[nodiscard]] std::vector<int> decoders() const { return processesSince(earlier_, keptName); }
    /// What a decoder says when it is told to try what it must not be able to do.
    [[nodiscard]] static std::string probed(std::vector<std::string> command,
                                            std::initializer_list<std::string> layers) {
        command.emplace_back("--probe");
        command.insert(command.end(), layers);
        std::string report;
        bool ended = false;
        const auto process = ConfinedProcess::start(
            std::move(command), {.said = [&](std::string_view bytes) { report += bytes; },
                                 .ended = [&] { ended = true; }});
        EXPECT_TRUE(process);
        EXPECT_TRUE(waitFor([&] { return ended; }));
        return report;
    }
    [[nodiscard]] SandboxedImageCodec::Options options() const {
        return {.decoder = realDecoder, .isolation = GetParam()};
    }
    [[nodiscard]] static int widthOf(SandboxedImageCodec& codec, const std::string& bytes) {
        const auto image = awaited(codec.decode(bytes));
        if (!image) return -1;
        return *image ? (*image)->width : 0;
    }

private:
    const std::vector<int> earlier_ = processesNamed(keptName);
};

INSTANTIATE_TEST_SUITE_P(Isolations, DecoderTest,
                         testing::Values(Isolation::bubblewrap, Isolation::own),
                         [](const auto& each) {
                             return each.param == Isolation::own ? "Own" : "Bubblewrap";
                         });

TEST_P(DecoderTest, PicturesOfEachKindComeThrough) {
    SandboxedImageCodec codec{loop, options()};

    EXPECT_EQ(widthOf(codec, IconFiles::png(20)), 20);
    EXPECT_EQ(widthOf(codec, IconFiles::jpeg()), 8);
    EXPECT_EQ(widthOf(codec, IconFiles::gif()), 16);
    EXPECT_EQ(widthOf(codec, IconFiles::ico()), 16);
    EXPECT_EQ(widthOf(codec, IconFiles::icoOfPng(IconFiles::png(32), 32)), 32);
    EXPECT_EQ(widthOf(codec, IconFiles::bmp(7, 3, 3)), 7);
    EXPECT_EQ(widthOf(codec, IconFiles::svg("<circle r='9'/>")), 256);

    EXPECT_EQ(codec.isolation(), GetParam());
}

TEST_P(DecoderTest, PicturesBecomePngFilesAndBack) {
    SandboxedImageCodec codec{loop, options()};
    const auto image =
        std::make_shared<Image>(Image{2, 1, {0x33, 0x66, 0xCC, 0xFF, 0x01, 0x02, 0x03, 0x80}});

    const auto png = awaited(codec.encodePng(image));

    ASSERT_TRUE(png && png->starts_with("\x89PNG"));
    const auto back = awaited(codec.decode(*png));
    ASSERT_TRUE(back && *back);
    EXPECT_EQ(**back, *image);
}

TEST_P(DecoderTest, WithinItNothingOutsideCanBeReached) {
    const auto report =
        probed(decoderCommand(realDecoder, GetParam()), {"namespaces", "files", "calls"});

    EXPECT_EQ(linesWith(report, ": possible"), std::vector<std::string>{}) << report;
    EXPECT_EQ(linesWith(report, ": refused").size(), 16U) << report;
    EXPECT_EQ(linesWith(report, "environment: empty").size(), 1U) << report;
    EXPECT_EQ(linesWith(report, "descriptors: 3").size(), 1U) << report;
}

TEST_F(DecoderTest, WhatIsTriedIsPossibleForAProcessThatGaveUpNothing) {
    const auto report = probed({realDecoder.string()}, {});

    EXPECT_EQ(linesWith(report, ": refused"), std::vector<std::string>{}) << report;
    EXPECT_EQ(linesWith(report, ": possible").size(), 16U) << report;
}

TEST_F(DecoderTest, EachLayerHoldsForItself) {
    const auto withoutFiles = linesWith(probed({realDecoder.string()}, {"files"}), ": refused");
    const auto calls = linesWith(probed({realDecoder.string()}, {"calls"}), ": refused");
    const auto root =
        linesWith(probed(decoderCommand(realDecoder, Isolation::bubblewrap), {}), ": refused");

    for (const auto* each : {"read a file", "read a library", "read a folder", "write a file"}) {
        EXPECT_TRUE(std::ranges::count(withoutFiles, each)) << each;
    }
    EXPECT_EQ(calls.size(), 16U);
    EXPECT_TRUE(std::ranges::count(root, "read a file"));
    EXPECT_TRUE(std::ranges::count(root, "write a file"));
}

TEST_F(DecoderTest, ADecoderThatShutsItselfInEndsWithItsParent) {
    std::string said;
    bool ended = false;
    const auto process = ConfinedProcess::start(
        {"sh", "-c", "\"$0\" --own-namespaces <&1 & wait", realDecoder.string()},
        {.said = [&](std::string_view bytes) { said += bytes; }, .ended = [&] { ended = true; }});
    ASSERT_TRUE(process);
    ASSERT_TRUE(waitFor([&] { return !said.empty(); }));
    ASSERT_EQ(decoders().size(), 1U);
    EXPECT_FALSE(ended);

    for (const int shell : processesNamed("sh")) kill(shell, SIGKILL);

    EXPECT_TRUE(waitFor([&] { return ended && decoders().empty(); }));
}

TEST_P(DecoderTest, LettersAreDrawn) {
    SandboxedImageCodec codec{loop, options()};
    const auto drawn = [&](const std::string& attributes) {
        const auto image =
            awaited(codec.decode(IconFiles::svg("<text y='12' " + attributes + ">A</text>")));
        if (!image || !*image) return std::ptrdiff_t{-1};
        return std::ranges::count_if((*image)->rgba, [](auto each) { return each != 0; });
    };

    const auto regular = drawn("font-size='11'");

    EXPECT_GT(regular, 100);
    EXPECT_NE(drawn("font-size='11' font-weight='bold'"), regular);
    EXPECT_GT(drawn("font-size='14' font-family='sans-serif'"), 100);
    EXPECT_NE(drawn("font-size='14' font-family='no such font'"), -1);
}

TEST_P(DecoderTest, EffectsAreDrawn) {
    SandboxedImageCodec codec{loop, options()};

    EXPECT_EQ(widthOf(codec, IconFiles::svg("<filter id='f'><feGaussianBlur stdDeviation='2'/>"
                                            "</filter><rect filter='url(#f)' width='9' "
                                            "height='9'/>")),
              256);
}

TEST_P(DecoderTest, ADrawingFetchesNothingAndMayReferToItself) {
    SandboxedImageCodec codec{loop, options()};
    server.serve("/i", IconFiles::svg("<rect id='r' width='16' height='16'/>"));
    const std::string address = url("/i").absoluteString();

    for (const auto& content :
         {"<use xlink:href='" + address + "#r'/>", "<image href='" + address + "' width='9'/>",
          "<style>@import url(" + address + ");</style><rect fill='url(" + address + "#r)'/>",
          "<feImage href='" + address + "'/>"}) {
        EXPECT_NE(widthOf(codec, IconFiles::svg(content)), -1) << content;
    }
    EXPECT_NE(widthOf(codec, "<?xml-stylesheet href='" + address + "'?>" + IconFiles::svg("")), -1);
    EXPECT_NE(widthOf(codec, IconFiles::svg("<g id='a'><use xlink:href='#a'/></g>")), -1);
    settle();

    EXPECT_EQ(server.requests("/i"), 0);
    EXPECT_EQ(widthOf(codec, IconFiles::png(5)), 5);
}

TEST_P(DecoderTest, ABombOfPixelsIsScaledDownOrRefusedAndTheNextPictureComes) {
    SandboxedImageCodec codec{loop, options()};
    const std::string rows((4 * 4096 + 1) * 4096, '\0');  // 67 MB, in 65 KB
    const std::string bomb = IconFiles::pngOf(4096, 4096, compressed(rows));
    ASSERT_LT(bomb.size(), 100'000U);

    const int width = widthOf(codec, bomb);

    EXPECT_TRUE(width == 256 || width == 0) << width;
    EXPECT_EQ(widthOf(codec, IconFiles::png(5)), 5);
}

TEST_P(DecoderTest, RandomBytesBehindEachBeginningEndNothingButThemselves) {
    SandboxedImageCodec codec{loop, options()};
    std::mt19937 random{20260801};
    const std::vector<std::string> whole{IconFiles::png(8), IconFiles::jpeg(), IconFiles::gif(),
                                         IconFiles::ico(), IconFiles::bmp(8, 8, 8)};
    for (int round = 0; round < 40; ++round) {
        for (std::string file : whole) {
            for (int changes = 0; changes < 8; ++changes) {
                file[random() % file.size()] = static_cast<char>(random());
            }
            EXPECT_NE(widthOf(codec, file), -1);
            for (std::size_t i = 12; i < file.size(); ++i) file[i] = static_cast<char>(random());
            EXPECT_NE(widthOf(codec, file), -1);
        }
    }
    EXPECT_EQ(widthOf(codec, IconFiles::png(5)), 5);
}

TEST_P(DecoderTest, AProcessIsStartedWhenItIsNeededAndGoesWhenItIsIdle) {
    auto hasty = options();
    hasty.idleTime = 200ms;
    SandboxedImageCodec codec{loop, hasty};
    EXPECT_FALSE(codec.isRunning());

    EXPECT_EQ(widthOf(codec, IconFiles::png(5)), 5);
    EXPECT_TRUE(codec.isRunning());
    EXPECT_EQ(decoders().size(), 1U);

    EXPECT_TRUE(waitFor([&] { return !codec.isRunning() && decoders().empty(); }));
    EXPECT_EQ(widthOf(codec, IconFiles::png(6)), 6);
}

TEST_P(DecoderTest, PicturesInARowShareOneProcess) {
    SandboxedImageCodec codec{loop, options()};
    EXPECT_EQ(widthOf(codec, IconFiles::png(5)), 5);
    const auto first = decoders();

    for (int i = 0; i < 20; ++i) EXPECT_EQ(widthOf(codec, IconFiles::png(6)), 6);

    EXPECT_EQ(decoders(), first);
}

TEST_P(DecoderTest, TheEndOfTheCodecEndsItsProcess) {
    {
        SandboxedImageCodec codec{loop, options()};
        EXPECT_EQ(widthOf(codec, IconFiles::png(5)), 5);
    }
    EXPECT_TRUE(waitFor([this] { return decoders().empty(); }));
}

TEST_P(DecoderTest, AProcessThatIsKilledWhileIdleCostsNoPicture) {
    SandboxedImageCodec codec{loop, options()};
    EXPECT_EQ(widthOf(codec, IconFiles::png(5)), 5);
    const auto processes = decoders();
    ASSERT_EQ(processes.size(), 1U);

    kill(processes.front(), SIGKILL);

    EXPECT_EQ(widthOf(codec, IconFiles::png(6)), 6);
}

/// Decoders that do not do what they should.
class FaultyDecoderTest : public DecoderTest {
protected:
    [[nodiscard]] SandboxedImageCodec::Options faulty() const {
        return {.decoder = faultyDecoder, .isolation = GetParam(), .deadline = 1500ms};
    }
};

INSTANTIATE_TEST_SUITE_P(Isolations, FaultyDecoderTest,
                         testing::Values(Isolation::bubblewrap, Isolation::own),
                         [](const auto& each) {
                             return each.param == Isolation::own ? "Own" : "Bubblewrap";
                         });

TEST_P(FaultyDecoderTest, AFaultCostsOnePictureAndTheNextComesFromAFreshProcess) {
    SandboxedImageCodec codec{loop, faulty()};
    for (const auto* fault : {"crash", "leave", "garbage", "other number", "huge", "wide", "short",
                              "half", "flood", "more", "hang"}) {
        EXPECT_EQ(widthOf(codec, fault), 0) << fault;
        EXPECT_EQ(widthOf(codec, "fine"), 1) << fault;
        // The same again from a process that did well before.
        EXPECT_EQ(widthOf(codec, fault), 0) << fault;
        EXPECT_EQ(widthOf(codec, "fine"), 1) << fault;
    }
}

TEST_P(FaultyDecoderTest, AFaultAfterAnAnswerCostsNothing) {
    SandboxedImageCodec codec{loop, faulty()};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(widthOf(codec, "crash later"), 1);
        EXPECT_EQ(widthOf(codec, "flood later"), 1);
        EXPECT_EQ(widthOf(codec, "fine"), 1);
    }
}

TEST_P(FaultyDecoderTest, PicturesThatWaitBehindAFaultAllCome) {
    SandboxedImageCodec codec{loop, faulty()};
    std::vector<Future<ImagePointer>> futures;
    for (const auto* each : {"fine", "crash", "fine", "hang", "fine", "garbage", "fine"}) {
        futures.push_back(codec.decode(each));
    }

    Sizes widths;
    for (auto& each : futures) {
        const auto image = awaited(std::move(each));
        widths.push_back(image && *image ? (*image)->width : 0);
    }

    EXPECT_EQ(widths, (Sizes{1, 0, 1, 0, 1, 0, 1}));
}

TEST_P(FaultyDecoderTest, PicturesThatNobodyWaitsForAreNotDecoded) {
    SandboxedImageCodec codec{loop, faulty()};
    auto first = codec.decode("fine");
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < 50; ++i) static_cast<void>(codec.decode("hang"));

    EXPECT_EQ(widthOf(codec, "fine"), 1);

    EXPECT_LT(std::chrono::steady_clock::now() - begin, 15s);
    EXPECT_TRUE(awaited(std::move(first)).value_or(nullptr));
}

TEST_P(FaultyDecoderTest, TheCodecMayGoWhileItsProcessHangs) {
    {
        SandboxedImageCodec codec{loop, faulty()};
        const auto picture = codec.decode("hang");
        settle();
    }
    EXPECT_TRUE(waitFor([] { return processesNamed("orvu-faulty-dec").empty(); }));
}

TEST_F(FaultyDecoderTest, ADecoderThatNeverGetsReadyGivesNoPicture) {
    for (const auto* name : {"mute", "gone", "babbling"}) {
        std::filesystem::create_symlink(faultyDecoder, folder / name);
        SandboxedImageCodec codec{
            loop, {.decoder = folder / name, .isolation = Isolation::own, .deadline = 300ms}};

        EXPECT_EQ(widthOf(codec, "fine"), 0) << name;
        EXPECT_EQ(widthOf(codec, "fine"), 0) << name;
    }
}

TEST_F(FaultyDecoderTest, WithoutADecoderThereIsNoPicture) {
    SandboxedImageCodec codec{loop, {.decoder = folder / "none"}};

    EXPECT_EQ(widthOf(codec, "fine"), 0);
    EXPECT_EQ(widthOf(codec, "fine"), 0);
    EXPECT_FALSE(codec.isRunning());
}

TEST_F(FaultyDecoderTest, WhereBubblewrapCanNotWorkTheDecoderShutsItselfIn) {
    // A stand-in that ends at once, as the real one does where it may make no namespaces.
    std::filesystem::create_symlink("/bin/false", folder / "bwrap");
    const std::string path = getenv("PATH");
    setenv("PATH", folder.c_str(), 1);
    SandboxedImageCodec codec{loop, {.decoder = realDecoder}};

    const int width = widthOf(codec, IconFiles::png(5));
    setenv("PATH", path.c_str(), 1);

    EXPECT_EQ(width, 5);
    EXPECT_EQ(codec.isolation(), Isolation::own);
}

}  // namespace
}  // namespace orvu

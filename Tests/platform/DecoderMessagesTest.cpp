#include "platform/linux/images/DecoderMessages.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace orvu {
namespace {

using State = DecoderAnswerReader::State;
using Kind = DecoderRequest::Kind;

std::string bytesOf(const DecoderAnswer& head, const std::string& content = "") {
    return std::string{reinterpret_cast<const char*>(&head), sizeof(head)} + content;
}

State stateAfter(const DecoderRequest& request, const std::string& bytes) {
    DecoderAnswerReader reader{request};
    return reader.add(bytes);
}

const DecoderRequest decoding{.number = 7, .length = 10};
const DecoderRequest encoding{
    .number = 8, .kind = Kind::encodePng, .width = 2, .height = 1, .length = 8};

TEST(DecoderMessagesTest, APictureComesInPiecesOfAnySize) {
    const auto bytes = bytesOf({.number = 7, .width = 2, .height = 1, .length = 8}, "abcdefgh");
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece) {
        DecoderAnswerReader reader{decoding};
        for (std::size_t at = 0; at < bytes.size(); at += piece) {
            EXPECT_EQ(reader.state(), State::incomplete);
            EXPECT_EQ(reader.image(), nullptr);
            reader.add(std::string_view{bytes}.substr(at, piece));
        }
        ASSERT_EQ(reader.state(), State::complete);
        EXPECT_EQ(*reader.image(), (Image{2, 1, {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'}}));
    }
}

TEST(DecoderMessagesTest, NoPictureIsAnAnswerToo) {
    DecoderAnswerReader reader{decoding};

    EXPECT_EQ(reader.add(bytesOf({.number = 7})), State::complete);

    EXPECT_EQ(reader.image(), nullptr);
    EXPECT_EQ(reader.png(), "");
}

TEST(DecoderMessagesTest, AFileIsOneOnlyIfItBeginsAsSuch) {
    const std::string png = "\x89PNG\r\n\x1A\nmore";
    DecoderAnswerReader right{encoding};
    DecoderAnswerReader wrong{encoding};

    EXPECT_EQ(right.add(bytesOf({.number = 8, .length = 12}, png)), State::complete);
    EXPECT_EQ(wrong.add(bytesOf({.number = 8, .length = 4}, "GIF8")), State::complete);

    EXPECT_EQ(right.png(), png);
    EXPECT_EQ(wrong.png(), "");
}

TEST(DecoderMessagesTest, HeadsThatPromiseWhatCanNotBeAreBroken) {
    for (const DecoderAnswer& each : {
             DecoderAnswer{.magic = 1, .number = 7},
             DecoderAnswer{.number = 6},
             DecoderAnswer{.number = 7, .width = 1, .height = 1},
             DecoderAnswer{.number = 7, .length = 4},
             DecoderAnswer{.number = 7, .width = 1, .height = 1, .length = 3},
             DecoderAnswer{.number = 7, .width = 1, .height = 1, .length = 5},
             DecoderAnswer{.number = 7, .width = 257, .height = 1, .length = 1028},
             DecoderAnswer{.number = 7, .width = 0, .height = 9, .length = 36},
             DecoderAnswer{.number = 7, .width = 65536, .height = 65536, .length = 0},
             DecoderAnswer{.number = 7, .width = 32768, .height = 32769, .length = 131072},
             DecoderAnswer{.number = 7, .width = ~0U, .height = ~0U, .length = ~0U},
         }) {
        EXPECT_EQ(stateAfter(decoding, bytesOf(each)), State::broken);
    }
    EXPECT_EQ(stateAfter(encoding, bytesOf({.number = 8, .length = (1U << 20) + 1})),
              State::broken);
    EXPECT_EQ(stateAfter(encoding, bytesOf({.number = 8, .width = 1, .height = 1, .length = 4})),
              State::broken);
}

TEST(DecoderMessagesTest, AByteTooManyBreaksAnAnswerForGood) {
    DecoderAnswerReader reader{decoding};
    EXPECT_EQ(reader.add(bytesOf({.number = 7, .width = 1, .height = 1, .length = 4}, "abcd")),
              State::complete);

    EXPECT_EQ(reader.add("e"), State::broken);
    EXPECT_EQ(reader.add(bytesOf({.number = 7})), State::broken);

    EXPECT_EQ(reader.image(), nullptr);
}

TEST(DecoderMessagesTest, TheFirstWordHasNothingToSay) {
    DecoderAnswerReader greeted;
    DecoderAnswerReader cheated;

    EXPECT_EQ(greeted.add(bytesOf({})), State::complete);
    EXPECT_EQ(cheated.add(bytesOf({.width = 1, .height = 1, .length = 4})), State::broken);
}

TEST(DecoderMessagesTest, RequestsAreSoundOnlyIfTheirSizesAgree) {
    EXPECT_TRUE(decoding.isSound());
    EXPECT_TRUE(encoding.isSound());
    for (const DecoderRequest& each : {
             DecoderRequest{.magic = 1, .length = 10},
             DecoderRequest{.length = 0},
             DecoderRequest{.length = DecoderRequest::maxLength + 1},
             DecoderRequest{.width = 1, .length = 10},
             DecoderRequest{.kind = static_cast<Kind>(3), .length = 10},
             DecoderRequest{.kind = Kind::encodePng, .width = 2, .height = 2, .length = 8},
             DecoderRequest{.kind = Kind::encodePng, .width = 257, .height = 1, .length = 1028},
             DecoderRequest{.kind = Kind::encodePng, .length = 0},
         }) {
        EXPECT_FALSE(each.isSound());
    }
}

TEST(DecoderMessagesTest, RandomBytesAreNeverAPictureThatBreaksTheLimits) {
    std::mt19937 random{11};
    for (int round = 0; round < 20'000; ++round) {
        DecoderAnswer head{.number = 7,
                           .width = static_cast<std::uint32_t>(random() % 300),
                           .height = static_cast<std::uint32_t>(random() % 300),
                           .length = static_cast<std::uint32_t>(random() % 2000)};
        if (random() % 2 == 0) head.length = head.width * head.height * 4;
        if (random() % 8 == 0) head.magic ^= 1U << random() % 32;
        DecoderAnswerReader reader{decoding};
        reader.add(bytesOf(head, std::string(head.length, 'x')));
        const auto image = reader.image();
        if (!image) continue;
        EXPECT_LE(image->width, 256);
        EXPECT_LE(image->height, 256);
        EXPECT_EQ(image->rgba.size(), static_cast<std::size_t>(image->width * image->height * 4));
    }
}

}  // namespace
}  // namespace orvu

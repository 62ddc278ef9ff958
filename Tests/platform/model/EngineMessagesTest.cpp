#include "platform/model/EngineMessages.h"

#include "platform/model/ReplyText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace orvu {
namespace {

using Answers = std::vector<EngineAnswer>;

EngineAnswer reply(std::string text, std::uint32_t number) {
    return {EngineAnswer::Kind::reply, number, std::move(text)};
}

/// What a head says, with a body of nought.
std::string answer(std::uint32_t magic, std::uint32_t kind, std::uint32_t number,
                   std::uint32_t length) {
    const std::uint32_t head[] = {magic, number, kind, length};
    return std::string{reinterpret_cast<const char*>(head), sizeof(head)} +
           std::string(std::min(length, 1U << 20), '\0');
}
constexpr std::uint32_t magic = 0x4F724D61;

TEST(EngineMessagesTest, AnswersComeBackWhereverTheStreamIsCut) {
    const Answers all{{},
                      EngineAnswer::of(ModelDescription{true, "Otter", 131072, 8192}),
                      reply("They swim.", 7),
                      reply("", 8),
                      EngineAnswer::of(ModelFailure::tooLong)};
    std::string stream;
    for (const auto& each : all) stream += each.bytes();

    for (std::size_t cut = 0; cut <= stream.size(); ++cut) {
        EngineAnswerReader reader;
        Answers read = reader.add(stream.substr(0, cut));
        for (auto& each : reader.add(stream.substr(cut))) read.push_back(std::move(each));
        EXPECT_EQ(read, all) << cut;
        EXPECT_FALSE(reader.isBroken());
    }
}

TEST(EngineMessagesTest, ADescriptionComesBack) {
    const ModelDescription whole{true, "Otter 1B", std::uint64_t{1} << 40, 131072};
    EXPECT_EQ(EngineAnswer::of(whole).description(), whole);
    EXPECT_EQ(EngineAnswer::of(ModelDescription{}).description(), ModelDescription{});
    EXPECT_EQ(reply("x", 1).description(), std::nullopt);
}

TEST(EngineMessagesTest, ALongNameIsCutBetweenItsCharacters) {
    std::string name;
    for (int i = 0; i < 200; ++i) name += "\u00E9";
    const auto read = EngineAnswer::of(ModelDescription{.name = name}).description();
    ASSERT_TRUE(read);
    EXPECT_EQ(read->name.size(), EngineAnswerReader::maxName);
    EXPECT_TRUE(name.starts_with(read->name));
}

TEST(EngineMessagesTest, EveryFailureComesBack) {
    for (int each = 0; each < static_cast<int>(ModelFailure::refused); ++each) {
        const auto failure = static_cast<ModelFailure>(each);
        EXPECT_EQ(EngineAnswer::of(failure).failure(), failure);
    }
    EngineAnswer strange = EngineAnswer::of(ModelFailure::tooLong);
    strange.content = std::string(4, '\xFF');
    EXPECT_EQ(strange.failure(), ModelFailure::brokeOff);
    strange.content = "x";
    EXPECT_EQ(strange.failure(), ModelFailure::brokeOff);
}

TEST(EngineMessagesTest, WhatBreaksTheRulesBreaksTheStreamForGood) {
    const auto limit = static_cast<std::uint32_t>(ReplyText::byteLimit);
    for (const auto& bytes :
         {answer(magic + 1, 3, 1, 4), answer(magic, 0, 1, 4), answer(magic, 9, 1, 4),
          answer(magic, 1, 1, 0), answer(magic, 1, 0, 4), answer(magic, 2, 1, 15),
          answer(magic, 2, 1, 16 + 257), answer(magic, 3, 1, limit + 1),
          answer(magic, 3, 1, 0xFFFFFFFF), answer(magic, 4, 1, 3), answer(magic, 4, 1, 5)}) {
        EngineAnswerReader reader;
        EXPECT_EQ(reader.add(reply("before", 1).bytes() + bytes), Answers{});
        EXPECT_TRUE(reader.isBroken());
        EXPECT_EQ(reader.add(reply("after", 2).bytes()), Answers{});
    }
}

TEST(EngineMessagesTest, RequestsAreSoundOnlyWithinTheirLimits) {
    const auto sound = [](EngineRequest::Kind kind, std::uint32_t instructions,
                          std::uint32_t length) {
        return EngineRequest{.kind = kind, .instructions = instructions, .length = length}
            .isSound();
    };
    using Kind = EngineRequest::Kind;
    EXPECT_TRUE(sound(Kind::ask, 0, 0));
    EXPECT_TRUE(sound(Kind::ask, 5, 9));
    EXPECT_TRUE(sound(Kind::ask, 9, 9));
    EXPECT_FALSE(sound(Kind::ask, 10, 9));
    EXPECT_FALSE(sound(Kind::ask, 0, EngineRequest::maxLength + 1));
    EXPECT_TRUE(sound(Kind::describe, 0, 0));
    EXPECT_FALSE(sound(Kind::describe, 0, 1));
    EXPECT_FALSE(sound(Kind::cancel, 1, 0));
    EXPECT_FALSE(sound(static_cast<Kind>(0), 0, 0));
    EXPECT_FALSE(sound(static_cast<Kind>(77), 0, 0));
    EXPECT_FALSE((EngineRequest{.magic = 1}.isSound()));
}

TEST(EngineMessagesTest, RandomBytesGiveAClearOutcome) {
    std::mt19937 random{20261123};
    const std::string stream = EngineAnswer{}.bytes() +
                               EngineAnswer::of(ModelDescription{true, "x", 1, 2}).bytes() +
                               reply("They swim.", 1).bytes();
    int broken = 0;
    for (int round = 0; round < 5000; ++round) {
        std::string bytes = stream;
        for (int change = 0; change < 3; ++change) {
            bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        EngineAnswerReader reader;
        for (const auto& each : reader.add(bytes)) {
            EXPECT_LE(each.content.size(), bytes.size());
            static_cast<void>(each.description());
            static_cast<void>(each.failure());
        }
        broken += reader.isBroken();
    }
    EXPECT_GT(broken, 1000);
}

}  // namespace
}  // namespace orvu

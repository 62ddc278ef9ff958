#include "platform/model/ReplyText.h"

#include <gtest/gtest.h>

#include <vector>

namespace orvu {
namespace {

std::string gathered(const std::vector<std::string>& pieces) {
    ReplyText reply;
    for (const auto& piece : pieces) reply.add(piece);
    return reply.text();
}

/// What a text becomes, which is the same wherever it is cut into two or into single bytes.
std::string replyOf(const std::string& text) {
    const std::string whole = gathered({text});
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        EXPECT_EQ(gathered({text.substr(0, cut), text.substr(cut)}), whole) << cut;
    }
    ReplyText reply;
    for (const char each : text) reply.add({&each, 1});
    EXPECT_EQ(reply.text(), whole);
    return whole;
}

TEST(ReplyTextTest, PiecesAreJoinedUnchanged) {
    EXPECT_EQ(gathered({" Otters", " swim", "", ".\n"}), " Otters swim.\n");
}

TEST(ReplyTextTest, ThoughtsAreCutWhereverTheyAreSplit) {
    EXPECT_EQ(replyOf("<think>hm, otters</think>They swim."), "They swim.");
    EXPECT_EQ(replyOf("<think>a</think>They <think>b</think>swim."), "They swim.");
    EXPECT_EQ(replyOf("<think></think>Yes."), "Yes.");
}

TEST(ReplyTextTest, ALoneClosingMarkEndsAThoughtThatBeganInThePrompt) {
    EXPECT_EQ(replyOf("hm, otters</think>They swim."), "They swim.");
    EXPECT_EQ(replyOf("</think>They swim."), "They swim.");
}

TEST(ReplyTextTest, AMarkWithinAThoughtDoesNotOpenAnother) {
    EXPECT_EQ(replyOf("<think>a <think> b</think>They swim."), "They swim.");
}

TEST(ReplyTextTest, AClosingMarkBehindAnotherTakesNothingOfTheAnswer) {
    EXPECT_EQ(replyOf("<think>a</think>They </think>swim."), "They swim.");
}

TEST(ReplyTextTest, AThoughtWithoutAnEndIsNoAnswer) {
    EXPECT_EQ(replyOf("<think>and so on"), "");
    EXPECT_EQ(replyOf("Yes.<think>and so on"), "Yes.");
    EXPECT_EQ(replyOf("Yes.<think>and so on</thin"), "Yes.");
}

TEST(ReplyTextTest, WhatOnlyLooksLikeAMarkStays) {
    EXPECT_EQ(replyOf("1 <thin 2 </thin <THINK> < think>"), "1 <thin 2 </thin <THINK> < think>");
    EXPECT_EQ(replyOf("<<think>a</think>b<"), "<b<");
    EXPECT_EQ(replyOf("ends with <think"), "ends with <think");
}

TEST(ReplyTextTest, BytesThatAreNoTextAreReplaced) {
    EXPECT_EQ(replyOf("a\xFFz"), "a\uFFFDz");
    EXPECT_EQ(replyOf("ot\xC3"), "ot\uFFFD");
    EXPECT_EQ(replyOf(std::string{"a\0b", 3}), (std::string{"a\0b", 3}));
    EXPECT_EQ(replyOf("söß 👩‍👩‍👧"), "söß 👩‍👩‍👧");
}

TEST(ReplyTextTest, BlankIsWhatHasNothingToRead) {
    for (const auto* text : {"", " \n\t", "<think>much</think>", "<think>x</think>\n\u00A0\n"}) {
        ReplyText reply;
        reply.add(text);
        EXPECT_TRUE(reply.isBlank()) << text;
    }
    ReplyText reply;
    reply.add("<think>x</think>.");
    EXPECT_FALSE(reply.isBlank());
}

TEST(ReplyTextTest, FourThousandAndNinetySixTokensAreNotTooLong) {
    ReplyText reply;
    for (int token = 0; token < 4096; ++token) reply.add("a");
    reply.add("");
    EXPECT_FALSE(reply.isTooLong());

    reply.add("a");

    EXPECT_TRUE(reply.isTooLong());
}

TEST(ReplyTextTest, TokensOfThoughtsAreNotCounted) {
    ReplyText reply;
    reply.add("<think>");
    for (int token = 0; token < 20000; ++token) reply.add("b");
    reply.add("</think>");
    for (int token = 0; token < 4095; ++token) reply.add("a");
    EXPECT_FALSE(reply.isTooLong());

    reply.add("a");
    reply.add("a");

    EXPECT_TRUE(reply.isTooLong());
}

TEST(ReplyTextTest, ALoneClosingMarkTakesBackTheTokensBeforeIt) {
    ReplyText reply;
    for (int token = 0; token < 4000; ++token) reply.add("b");
    reply.add("</think>");
    for (int token = 0; token < 4000; ++token) reply.add("a");

    EXPECT_FALSE(reply.isTooLong());
    EXPECT_EQ(reply.text(), std::string(4000, 'a'));
}

TEST(ReplyTextTest, BytesAreLimitedThoughtsIncluded) {
    ReplyText most;
    most.add(std::string(ReplyText::byteLimit, 'a'));
    EXPECT_FALSE(most.isTooLong());
    most.add("a");
    EXPECT_TRUE(most.isTooLong());

    ReplyText thought;
    thought.add("<think>" + std::string(ReplyText::byteLimit, 'b'));
    EXPECT_TRUE(thought.isTooLong());
}

}  // namespace
}  // namespace orvu

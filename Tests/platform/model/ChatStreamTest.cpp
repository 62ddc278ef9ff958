#include "platform/model/ChatStream.h"

#include "foundation/RandomText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvu {
namespace {

using State = ChatStream::State;

constexpr auto ollama = ModelProtocol::ollama;
constexpr auto openAI = ModelProtocol::openAI;

/// The reply, or the sentence for a failure with a mark before it.
std::string outcome(const ChatStream& stream) {
    if (stream.state() == State::complete) return stream.reply();
    return "! " + sentence(stream.error());
}
std::string read(ModelProtocol protocol, const std::vector<std::string_view>& pieces) {
    ChatStream stream{protocol};
    for (const auto piece : pieces) stream.add(piece);
    stream.end();
    return outcome(stream);
}
/// What an answer comes to, which is the same wherever it is cut in two, and byte by byte.
std::string outcomeOf(ModelProtocol protocol, std::string_view answer) {
    const std::string whole = read(protocol, {answer});
    for (std::size_t cut = 0; cut <= answer.size(); ++cut) {
        EXPECT_EQ(read(protocol, {answer.substr(0, cut), answer.substr(cut)}), whole) << cut;
    }
    std::vector<std::string_view> bytes;
    for (std::size_t at = 0; at < answer.size(); ++at) bytes.push_back(answer.substr(at, 1));
    EXPECT_EQ(read(protocol, bytes), whole);
    return whole;
}

std::string failed(ModelFailure failure) { return "! " + sentence(ModelError{failure}); }

std::string line(const std::string& content) {
    return R"({"model":"m","message":{"role":"assistant","content":")" + content +
           R"("},"done":false})" + "\n";
}
const std::string lastLine =
    R"({"model":"m","message":{"role":"assistant","content":""},"done":true,"done_reason":"stop"})"
    "\n";
std::string event(const std::string& content) {
    return R"(data: {"choices":[{"index":0,"delta":{"content":")" + content +
           R"("},"finish_reason":null}]})" + "\n\n";
}
const std::string lastEvent = R"(data: {"choices":[{"index":0,"delta":{},"finish_reason":"stop"}]})"
                              "\n\ndata: [DONE]\n\n";

TEST(ChatStreamTest, LinesOfJsonGiveAReply) {
    EXPECT_EQ(outcomeOf(ollama, line("Otters") + line(" sw\\u00efm.") + lastLine), "Otters swïm.");
}

TEST(ChatStreamTest, EventsGiveAReply) {
    EXPECT_EQ(outcomeOf(openAI, event("Otters") + event(" sw\\u00efm.") + lastEvent),
              "Otters swïm.");
}

TEST(ChatStreamTest, ThoughtsInOtherFieldsAreNotRead) {
    EXPECT_EQ(outcomeOf(ollama, R"({"message":{"content":"","thinking":"hm"},"done":false})"
                                "\n" +
                                    line("Yes.") + lastLine),
              "Yes.");
    EXPECT_EQ(outcomeOf(openAI, R"(data: {"choices":[{"delta":{"reasoning_content":"hm"}}]})"
                                "\n\n" +
                                    event("Yes.") + lastEvent),
              "Yes.");
}

TEST(ChatStreamTest, ThoughtsInTheTextAreCutWhateverPiecesTheyComeIn) {
    EXPECT_EQ(outcomeOf(ollama, line("<th") + line("ink>hm</thi") + line("nk>Yes.") + lastLine),
              "Yes.");
    EXPECT_EQ(outcomeOf(openAI, event("hm</th") + event("ink>") + event("Yes.") + lastEvent),
              "Yes.");
}

TEST(ChatStreamTest, CommentsAndOtherFieldsOfEventsSayNothing) {
    EXPECT_EQ(outcomeOf(openAI,
                        ": ping\r\n\r\nevent: message\r\nid: 4\r\nretry: 10\r\n"
                        "data:{\"choices\":[{\"delta\":\r\n"
                        "data:{\"content\":\"Yes.\"}}]}\r\n\r\n"
                        "data: {\"choices\":[],\"usage\":{}}\r\n\r\ndata: [DONE]\r\n\r\n"),
              "Yes.");
}

TEST(ChatStreamTest, ALastEventNeedsNoEmptyLineBehindIt) {
    EXPECT_EQ(outcomeOf(openAI, event("Yes.") + "data: [DONE]"), "Yes.");
    EXPECT_EQ(outcomeOf(ollama, line("Yes.") + R"({"done":true})"), "Yes.");
}

TEST(ChatStreamTest, AReasonToEndIsAnEndToo) {
    EXPECT_EQ(outcomeOf(openAI, R"(data: {"choices":[{"delta":{"content":"Yes."},)"
                                R"("finish_reason":"length"}]})"
                                "\n\n"),
              "Yes.");
}

TEST(ChatStreamTest, NothingBehindTheEndIsRead) {
    EXPECT_EQ(outcomeOf(ollama, line("Yes.") + lastLine + line("No.") + "rubbish"), "Yes.");
    EXPECT_EQ(outcomeOf(openAI, event("Yes.") + "data: [DONE]\n\n" + event("No.") + "rubbish"),
              "Yes.");
}

TEST(ChatStreamTest, AnEndInTheMiddleIsAFailure) {
    EXPECT_EQ(outcomeOf(ollama, line("Yes.")), failed(ModelFailure::brokeOff));
    EXPECT_EQ(outcomeOf(openAI, event("Yes.")), failed(ModelFailure::brokeOff));
    EXPECT_EQ(outcomeOf(ollama, ""), failed(ModelFailure::hungUp));
    EXPECT_EQ(outcomeOf(openAI, "\n\n: ping\n\n"), failed(ModelFailure::hungUp));
}

TEST(ChatStreamTest, ABlankReplyIsAFailure) {
    EXPECT_EQ(outcomeOf(ollama, lastLine), failed(ModelFailure::blank));
    EXPECT_EQ(outcomeOf(ollama, line(" \\n\\t") + lastLine), failed(ModelFailure::blank));
    EXPECT_EQ(outcomeOf(openAI, event("<think>hm</think>\\n") + lastEvent),
              failed(ModelFailure::blank));
    EXPECT_EQ(outcomeOf(openAI, "data: [DONE]\n\n"), failed(ModelFailure::blank));
}

TEST(ChatStreamTest, ErrorsWithinAnAnswerAreFailures) {
    EXPECT_EQ(outcomeOf(ollama, line("Yes.") + "{\"error\":\"runner died\"}\n"),
              "! The model server reports an error: “runner died”.");
    for (const auto* name : {"data", "error"}) {
        EXPECT_EQ(outcomeOf(openAI, std::string{name} +
                                        ": {\"error\":{\"message\":\"the request exceeds the "
                                        "available context size\"}}\n\n"),
                  failed(ModelFailure::contextTooSmall));
    }
}

TEST(ChatStreamTest, WhatIsNoAnswerIsAFailureAtOnce) {
    using namespace std::string_view_literals;
    const std::string nested(2000, '[');
    const std::vector<std::string_view> lines{"<!doctype html>\n<p>Hello\n",
                                              "null\n",
                                              "[]\n",
                                              "{\"message\":\n",
                                              "{\"message\":{\"content\":5}}\n",
                                              "{\"message\":{\"content\":\"\xFF\"}}\n",
                                              "\0\0\n"sv,
                                              nested,
                                              "\x1F\x8B\x08 zipped\n"};
    for (const auto answer : lines) {
        EXPECT_EQ(outcomeOf(ollama, answer), failed(ModelFailure::unreadable)) << answer;
    }
    const std::string nestedEvent = "data: " + nested;
    const std::vector<std::string_view> events{
        "<!doctype html>\n<p>Hello\n",
        "data: null\n\n",
        "data: {\"choices\":\n\n",
        "data: {\"choices\":[{\"delta\":{\"content\":[]}}]}\n\n",
        "data: \0\n\n"sv,
        "{\"choices\":[]}\n",
        nestedEvent};
    for (const auto answer : events) {
        EXPECT_EQ(outcomeOf(openAI, answer), failed(ModelFailure::unreadable)) << answer;
    }
}

TEST(ChatStreamTest, ShapesWithoutATextAreNoPieces) {
    EXPECT_EQ(outcomeOf(ollama, "{}\n{\"message\":5}\n{\"message\":null,\"done\":5}\n\n \n" +
                                    line("Yes.") + lastLine),
              "Yes.");
    EXPECT_EQ(outcomeOf(openAI,
                        "data: {}\n\ndata: {\"choices\":{}}\n\ndata: "
                        "{\"choices\":[5]}\n\ndata: {\"choices\":[{\"delta\":"
                        "{\"content\":null}}]}\n\n" +
                            event("Yes.") + lastEvent),
              "Yes.");
}

TEST(ChatStreamTest, ALineWithoutAnEndIsAFailureAtItsLimit) {
    for (const auto protocol : {ollama, openAI}) {
        ChatStream stream{protocol};
        const std::string piece(65536, ' ');
        std::size_t bytes = 0;
        while (stream.add(piece) == State::reading) bytes += piece.size();

        EXPECT_EQ(stream.error(), ModelError{ModelFailure::unreadable});
        EXPECT_LE(bytes, ChatStream::lineLimit);
    }
}

TEST(ChatStreamTest, AnEventWithoutAnEndIsAFailureAtItsLimit) {
    ChatStream stream{openAI};
    const std::string piece = "data: " + std::string(60000, 'x') + "\n";
    std::size_t bytes = 0;
    while (stream.add(piece) == State::reading) bytes += piece.size();

    EXPECT_EQ(stream.error(), ModelError{ModelFailure::unreadable});
    EXPECT_LE(bytes, ChatStream::lineLimit);
}

TEST(ChatStreamTest, MoreTokensThanAReplyMayHaveEndIt) {
    ChatStream stream{ollama};
    const std::string piece = line("a");
    int tokens = 0;
    while (stream.add(piece) == State::reading) ++tokens;

    EXPECT_EQ(tokens, 4096);
    EXPECT_EQ(stream.error(), ModelError{ModelFailure::tooLong});
}

TEST(ChatStreamTest, MoreBytesThanAReplyMayHaveEndIt) {
    ChatStream stream{openAI};
    stream.add(event(std::string(ReplyText::byteLimit, 'a')));
    EXPECT_EQ(stream.state(), State::reading);

    stream.add(event("a"));

    EXPECT_EQ(stream.error(), ModelError{ModelFailure::tooLong});
}

TEST(ChatStreamTest, AnAnswerThatSaysNothingForEverEndsAtItsLimit) {
    ChatStream stream{openAI};
    std::string piece;
    while (piece.size() < 65536) piece += ": ping\n\n";
    std::size_t bytes = 0;
    while (stream.add(piece) == State::reading) bytes += piece.size();

    EXPECT_EQ(stream.error(), ModelError{ModelFailure::tooLong});
    EXPECT_LE(bytes, ChatStream::answerLimit);
}

TEST(ChatStreamTest, RandomTextsHaveAnOutcomeThatNoCutChanges) {
    RandomText random{11};
    for (int round = 0; round < 2000; ++round) {
        std::string answer;
        for (std::size_t left = random.below(4); left > 0; --left) {
            answer += random.below(2) == 0 ? line("a") : event("b");
            answer += random.text(6);
        }
        for (const auto protocol : {ollama, openAI}) {
            const auto cut = random.below(answer.size() + 1);
            const std::string_view view = answer;
            EXPECT_EQ(read(protocol, {view.substr(0, cut), view.substr(cut)}),
                      read(protocol, {view}));
        }
    }
}

}  // namespace
}  // namespace orvu

#include "assistant/Kesto.h"

#include "fakes/FakeLanguageModel.h"
#include "look/text/PlatformText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace orvu {
namespace {

using Kind = Kesto::Phase::Kind;
using Strings = std::vector<std::string>;
using testing::HasSubstr;

class KestoTest : public testing::Test {
protected:
    [[nodiscard]] static std::vector<Kesto::Page> pagesCalled(const Strings& titles) {
        std::vector<Kesto::Page> pages;
        for (const auto& title : titles) pages.push_back({title, "https://a.example/", "text"});
        return pages;
    }

    FakeLanguageModel model;
    Kesto kesto{model};
};

TEST_F(KestoTest, NothingWasAskedAtFirst) {
    EXPECT_EQ(kesto.phase(), (Kesto::Phase{Kind::idle, ""}));
    EXPECT_EQ(kesto.answer(), "");
    EXPECT_EQ(kesto.sources(), Strings{});
    EXPECT_TRUE(model.requests.empty());
}

TEST_F(KestoTest, AQuestionGoesToTheModelAndItsReplyIsTheAnswer) {
    kesto.ask("Why?", pagesCalled({"One"}));

    EXPECT_EQ(kesto.phase().kind, Kind::thinking);
    ASSERT_EQ(model.requests.size(), 1U);
    EXPECT_EQ(model.requests[0].prompt, Kesto::prompt("Why?", pagesCalled({"One"})));
    EXPECT_EQ(model.requests[0].instructions, Kesto::systemPrompt);
    model.requests[0].succeed(" \n Because.\t\r\n");

    EXPECT_EQ(kesto.phase(), (Kesto::Phase{Kind::done, ""}));
    EXPECT_EQ(kesto.answer(), "Because.");
    EXPECT_EQ(kesto.sources(), Strings{"One"});
}

TEST_F(KestoTest, TheInstructionsAreOneLineOf582Characters) {
    EXPECT_EQ(Kesto::systemPrompt.size(), 582U);
    EXPECT_EQ(Kesto::systemPrompt.find('\n'), std::string_view::npos);
}

TEST_F(KestoTest, TheQuestionIsCutTo1800Characters) {
    std::string question;
    for (int each = 0; each < 1801; ++each) question += "e\u0301";

    kesto.ask(question, {});

    EXPECT_EQ(model.requests[0].prompt.size(), 1800 * std::string_view{"e\u0301"}.size());
}

TEST_F(KestoTest, AllPagesGivenAreSourcesThoughFourAreRead) {
    const Strings titles{"1", "2", "3", "4", "5", "6"};

    kesto.ask("Why?", pagesCalled(titles));

    EXPECT_EQ(kesto.sources(), titles);
    EXPECT_THAT(model.requests[0].prompt, HasSubstr(R"("title":"4")"));
    EXPECT_THAT(model.requests[0].prompt, Not(HasSubstr(R"("title":"5")")));
}

TEST_F(KestoTest, ANewQuestionEmptiesTheAnswerAndDropsTheReplyToTheOneBefore) {
    kesto.ask("First?", pagesCalled({"One"}));
    model.requests[0].succeed("first");
    kesto.ask("Second?", {});
    EXPECT_EQ(kesto.answer(), "");
    EXPECT_EQ(kesto.sources(), Strings{});

    kesto.ask("Third?", {});
    EXPECT_FALSE(model.requests[1].isWanted());
    model.requests[1].succeed("second");
    EXPECT_EQ(kesto.answer(), "");
    EXPECT_EQ(kesto.phase().kind, Kind::thinking);

    model.requests[2].succeed("third");
    EXPECT_EQ(kesto.answer(), "third");
}

TEST_F(KestoTest, AReplyThatArrivesInTheOtherOrderIsDropped) {
    kesto.ask("First?", {});
    kesto.ask("Second?", {});

    model.requests[1].succeed("second");
    model.requests[0].succeed("first");

    EXPECT_EQ(kesto.answer(), "second");
}

TEST_F(KestoTest, AReplyOfBlanksIsAnEmptyAnswer) {
    kesto.ask("Why?", {});
    model.requests[0].succeed(" \n ");

    EXPECT_EQ(kesto.answer(), "");
    EXPECT_EQ(kesto.phase().kind, Kind::done);
}

TEST_F(KestoTest, AFailureIsToldInOneSentenceAndWritesNoAnswer) {
    kesto.ask("Why?", pagesCalled({"One"}));
    model.requests[0].fail("It stopped.");

    EXPECT_EQ(kesto.phase(),
              (Kesto::Phase{Kind::error, "Kesto couldn't answer that. It stopped."}));
    EXPECT_EQ(kesto.answer(), "");
    EXPECT_EQ(kesto.sources(), Strings{"One"});
}

TEST_F(KestoTest, AModelThatCantBeUsedIsNotAsked) {
    model.setUnavailable(UnavailableReason::systemTooOld);

    kesto.ask("Why?", pagesCalled({"One"}));

    EXPECT_EQ(kesto.phase(), (Kesto::Phase{Kind::error, "Kesto needs macOS 26 or later."}));
    EXPECT_EQ(kesto.sources(), Strings{"One"});
    EXPECT_TRUE(model.requests.empty());
    EXPECT_EQ(model.looks, 1) << "so that the next question finds what came since";
}

TEST_F(KestoTest, AModelThatBecameUsableIsAskedWithTheNextQuestion) {
    model.setUnavailable(UnavailableReason::modelNotReady);
    kesto.ask("Why?", {});
    model.setUnavailable(std::nullopt);

    kesto.ask("Why?", {});

    EXPECT_EQ(kesto.phase().kind, Kind::thinking);
    EXPECT_EQ(model.requests.size(), 1U);
}

TEST_F(KestoTest, AQuestionDuringARequestEndsItThoughTheModelIsGone) {
    kesto.ask("First?", {});
    model.setUnavailable(UnavailableReason::noServer);

    kesto.ask("Second?", {});

    EXPECT_FALSE(model.requests[0].isWanted());
    EXPECT_EQ(kesto.phase().kind, Kind::error);
}

TEST_F(KestoTest, EachReasonHasItsSentence) {
    const std::array<std::pair<UnavailableReason, std::string_view>, 5> told{
        {{UnavailableReason::systemTooOld, "Kesto needs macOS 26 or later."},
         {UnavailableReason::deviceNotEligible,
          "This Mac can't run Apple's on-device model, which Kesto uses."},
         {UnavailableReason::appleIntelligenceNotEnabled,
          "Turn on Apple Intelligence in System Settings so Kesto can answer."},
         {UnavailableReason::modelNotReady,
          "Apple's on-device model is still downloading. Try again in a bit."},
         {UnavailableReason::other, "Apple's on-device model isn't available right now."}}};
    for (const auto& [reason, sentence] : told) EXPECT_EQ(Kesto::message(reason), sentence);
    EXPECT_EQ(Kesto::message(std::nullopt), std::nullopt);
    EXPECT_EQ(Kesto::message(UnavailableReason{99}),
              "Apple's on-device model isn't available right now.");
}

TEST_F(KestoTest, WhatIsMissingOnThisDesktopIsToldInItsOwnWords) {
    for (const auto reason :
         {UnavailableReason::noServer, UnavailableReason::noModel, UnavailableReason::othersServer,
          UnavailableReason::serverIsLoading}) {
        const auto sentence = Kesto::message(reason);
        ASSERT_TRUE(sentence);
        EXPECT_THAT(platformText(*sentence), Not(HasSubstr("Mac")));
        EXPECT_THAT(*sentence, Not(HasSubstr("Apple")));
    }
}

TEST_F(KestoTest, ObserversSeeEachStepOfAQuestion) {
    std::vector<Kind> seen;
    kesto.connectChanged([&] { seen.push_back(kesto.phase().kind); });

    kesto.ask("Why?", {});
    model.requests[0].succeed("Because.");

    EXPECT_EQ(seen, (std::vector{Kind::thinking, Kind::done}));
}

TEST_F(KestoTest, AnObserverMayAskAnew) {
    bool asked = false;
    kesto.connectChanged([&] {
        if (kesto.phase().kind != Kind::thinking || std::exchange(asked, true)) return;
        kesto.ask("Second?", {});
    });

    kesto.ask("First?", {});

    ASSERT_EQ(model.requests.size(), 1U);
    EXPECT_EQ(model.requests[0].prompt, "Second?");
    model.requests[0].succeed("second");
    EXPECT_EQ(kesto.answer(), "second");
}

TEST_F(KestoTest, AnObserverMayAskAnewAtTheAnswer) {
    kesto.connectChanged([&] {
        if (kesto.answer() == "first") kesto.ask("Second?", {});
    });
    kesto.ask("First?", {});

    model.requests[0].succeed("first");

    ASSERT_EQ(model.requests.size(), 2U);
    EXPECT_EQ(kesto.phase().kind, Kind::thinking);
    model.requests[1].succeed("second");
    EXPECT_EQ(kesto.answer(), "second");
}

TEST_F(KestoTest, AModelMayAnswerAtOnce) {
    model.atOnce = ModelResponse{true, "Because."};

    kesto.ask("Why?", {});

    EXPECT_EQ(kesto.answer(), "Because.");
    EXPECT_EQ(kesto.phase().kind, Kind::done);
}

TEST(KestoEndTest, AQuestionUnderWayEndsWithTheAssistant) {
    FakeLanguageModel model;
    {
        Kesto kesto{model};
        kesto.ask("Why?", {});
    }

    EXPECT_FALSE(model.requests[0].isWanted());
    model.requests[0].succeed("late");
}

}  // namespace
}  // namespace orvu

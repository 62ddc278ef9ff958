#include "site/permissions/CaptureQuestions.h"

#include "fakes/FakeUserDefaults.h"

#include <gtest/gtest.h>

#include <map>

namespace orvu {
namespace {

using Answer = MediaCaptureRequest::Answer;
using Choice = SitePermissions::Choice;
using Kind = CaptureKind;
using enum MediaCaptureType;

class CaptureQuestionsTest : public testing::Test {
protected:
    static constexpr auto host = "a.example";

    /// The page asks; the answer comes under `name` in `answers`.
    bool ask(const std::string& name, MediaCaptureType type, const std::string& from = host) {
        return questions.add({type, from, [this, name](Answer answer) { answers[name] = answer; }});
    }
    [[nodiscard]] std::optional<MediaCaptureType> asked() const {
        const auto question = questions.question();
        return question ? std::optional{question->type} : std::nullopt;
    }
    void choose(Choice choice, Kind kind) {
        permissions.set(choice, kind, host, Persistence::persistent);
    }

    using Answers = std::map<std::string, Answer>;

    FakeUserDefaults defaults;
    SitePermissions permissions{defaults};
    Answers answers;  // what still waits at the end is answered too
    CaptureQuestions questions{permissions, Persistence::persistent};
};

TEST_F(CaptureQuestionsTest, WhatWasChosenIsAnsweredWithoutAQuestion) {
    choose(Choice::allow, Kind::camera);
    choose(Choice::block, Kind::microphone);

    EXPECT_FALSE(ask("camera", camera));
    EXPECT_FALSE(ask("both", cameraAndMicrophone));

    EXPECT_EQ(answers, (Answers{{"camera", Answer::grant}, {"both", Answer::deny}}));
    EXPECT_EQ(asked(), std::nullopt);
}

TEST_F(CaptureQuestionsTest, TheRestIsAskedOneAtATime) {
    EXPECT_TRUE(ask("camera", camera));
    EXPECT_FALSE(ask("microphone", microphone));
    EXPECT_EQ(asked(), camera);

    EXPECT_TRUE(questions.answer(PageAnswer::allow));

    EXPECT_EQ(asked(), microphone);
    EXPECT_EQ(answers, (Answers{{"camera", Answer::grant}}));
}

TEST_F(CaptureQuestionsTest, OneAnswerServesAllRequestsThatItCovers) {
    ask("both", cameraAndMicrophone);
    ask("again", cameraAndMicrophone);
    ask("camera", camera);

    EXPECT_TRUE(questions.answer(PageAnswer::allow));

    EXPECT_EQ(answers.size(), 3u);
    EXPECT_EQ(asked(), std::nullopt);
}

TEST_F(CaptureQuestionsTest, AllowingOneKindDoesNotAllowTheOther) {
    ask("camera", camera);
    ask("both", cameraAndMicrophone);

    questions.answer(PageAnswer::allow);

    EXPECT_EQ(answers, (Answers{{"camera", Answer::grant}}));
    EXPECT_EQ(asked(), cameraAndMicrophone);
}

TEST_F(CaptureQuestionsTest, AnAnswerIsNotRemembered) {
    ask("camera", camera);

    questions.answer(PageAnswer::allow);

    EXPECT_TRUE(permissions.choices().empty());
    EXPECT_TRUE(ask("again", camera));
}

TEST_F(CaptureQuestionsTest, ARefusedPageIsNotHeardAgainOnThatKindUntilItIsLoadedAnew) {
    ask("camera", camera);
    questions.answer(PageAnswer::refuse);

    EXPECT_FALSE(ask("again", camera));
    EXPECT_FALSE(ask("both", cameraAndMicrophone));
    EXPECT_EQ(answers.at("again"), Answer::deny);
    EXPECT_EQ(answers.at("both"), Answer::deny);
    EXPECT_TRUE(ask("microphone", microphone));
    EXPECT_TRUE(questions.documentUnloaded());

    EXPECT_TRUE(ask("anew", camera));
}

TEST_F(CaptureQuestionsTest, ARefusalAnswersTheQueueAsWell) {
    ask("both", cameraAndMicrophone);
    ask("camera", camera);
    ask("microphone", microphone);

    questions.answer(PageAnswer::refuse);

    EXPECT_EQ(
        answers,
        (Answers{{"both", Answer::deny}, {"camera", Answer::deny}, {"microphone", Answer::deny}}));
    EXPECT_EQ(asked(), std::nullopt);
}

TEST_F(CaptureQuestionsTest, ADismissedPageMayAskAgainButNotForEver) {
    for (int i = 1; i < patienceWithPages; ++i) {
        EXPECT_TRUE(ask("camera", camera));
        EXPECT_TRUE(questions.answer(PageAnswer::dismiss));
        EXPECT_EQ(answers.at("camera"), Answer::deny);
    }
    EXPECT_TRUE(ask("last", camera));
    questions.answer(PageAnswer::dismiss);

    EXPECT_FALSE(ask("too often", camera));
    EXPECT_EQ(answers.at("too often"), Answer::deny);
}

TEST_F(CaptureQuestionsTest, AChoiceMadeMeanwhileAnswersTheQuestion) {
    ask("both", cameraAndMicrophone);
    ask("microphone", microphone);
    choose(Choice::allow, Kind::microphone);
    EXPECT_FALSE(questions.permissionsChanged());
    EXPECT_EQ(answers, (Answers{{"microphone", Answer::grant}}));

    choose(Choice::block, Kind::camera);
    EXPECT_TRUE(questions.permissionsChanged());

    EXPECT_EQ(answers.at("both"), Answer::deny);
    EXPECT_EQ(asked(), std::nullopt);
}

TEST_F(CaptureQuestionsTest, ARefusedPageIsHeardAgainAfterAChoice) {
    ask("camera", camera);
    questions.answer(PageAnswer::refuse);

    choose(Choice::block, Kind::microphone);
    questions.permissionsChanged();

    EXPECT_TRUE(ask("again", camera));
}

TEST_F(CaptureQuestionsTest, TheEndOfTheDocumentDeniesWhatWaits) {
    ask("camera", camera);
    ask("microphone", microphone);

    EXPECT_TRUE(questions.documentUnloaded());

    EXPECT_EQ(answers, (Answers{{"camera", Answer::deny}, {"microphone", Answer::deny}}));
    EXPECT_FALSE(questions.documentUnloaded());
}

TEST_F(CaptureQuestionsTest, TheEndOfTheTabDeniesWhatWaits) {
    std::optional<Answer> answer;
    {
        CaptureQuestions dropped{permissions, Persistence::persistent};
        dropped.add({camera, host, [&](Answer given) { answer = given; }});
    }

    EXPECT_EQ(answer, Answer::deny);
}

TEST_F(CaptureQuestionsTest, ARequestThatComesWhileAnotherIsAnsweredIsAskedNext) {
    bool askedAgain = false;
    questions.add({camera, host, [&](Answer) { askedAgain = ask("next", microphone); }});

    EXPECT_TRUE(questions.answer(PageAnswer::allow));

    EXPECT_TRUE(askedAgain);
    EXPECT_EQ(asked(), microphone);
}

TEST_F(CaptureQuestionsTest, WhatThePersonEndedIsAskedForAnewEvenWhereTheSiteIsAllowed) {
    choose(Choice::allow, Kind::camera);
    choose(Choice::allow, Kind::microphone);
    EXPECT_FALSE(ask("camera", camera));

    questions.captureStopped({.camera = true});

    EXPECT_TRUE(ask("again", camera));
    EXPECT_FALSE(ask("microphone", microphone));
    EXPECT_EQ(asked(), camera);
    EXPECT_EQ(answers, (Answers{{"camera", Answer::grant}, {"microphone", Answer::grant}}));
}

TEST_F(CaptureQuestionsTest, WhatIsAllowedAnewAfterAnEndIsAllowedFromThenOn) {
    choose(Choice::allow, Kind::camera);
    questions.captureStopped({.camera = true});
    ask("again", camera);

    questions.answer(PageAnswer::allow);

    EXPECT_FALSE(ask("third", camera));
    EXPECT_EQ(answers, (Answers{{"again", Answer::grant}, {"third", Answer::grant}}));
}

TEST_F(CaptureQuestionsTest, ARefusalAfterAnEndHoldsOnAnAllowedSite) {
    choose(Choice::allow, Kind::camera);
    questions.captureStopped({.camera = true});
    ask("again", camera);

    questions.answer(PageAnswer::refuse);

    EXPECT_FALSE(ask("third", camera));
    EXPECT_EQ(answers, (Answers{{"again", Answer::deny}, {"third", Answer::deny}}));
}

TEST_F(CaptureQuestionsTest, AChoiceOrAnotherDocumentForgetsThatThePersonEndedSomething) {
    choose(Choice::allow, Kind::camera);
    questions.captureStopped({.camera = true});
    questions.documentUnloaded();
    EXPECT_FALSE(ask("next document", camera));
    questions.captureStopped({.camera = true});

    choose(Choice::allow, Kind::microphone);
    questions.permissionsChanged();

    EXPECT_FALSE(ask("after a choice", camera));
    EXPECT_EQ(answers,
              (Answers{{"after a choice", Answer::grant}, {"next document", Answer::grant}}));
}

TEST_F(CaptureQuestionsTest, ABlockedSiteIsDeniedAlsoAfterAnEnd) {
    choose(Choice::block, Kind::camera);
    questions.captureStopped({.camera = true});

    EXPECT_FALSE(ask("camera", camera));

    EXPECT_EQ(answers, (Answers{{"camera", Answer::deny}}));
}

TEST_F(CaptureQuestionsTest, OnlyAPageThatAskedIsAffectedByABlock) {
    choose(Choice::block, Kind::camera);
    EXPECT_TRUE(questions.blockedKinds().empty());
    ask("other", camera, "b.example");
    EXPECT_TRUE(questions.blockedKinds().empty());

    ask("camera", camera);

    EXPECT_EQ(questions.blockedKinds(), std::vector{Kind::camera});
}

TEST_F(CaptureQuestionsTest, AnAnswerWithoutAQuestionDoesNothing) {
    EXPECT_FALSE(questions.answer(PageAnswer::allow));
}

TEST_F(CaptureQuestionsTest, TheTextNamesTheHostAndWhatItWants) {
    EXPECT_EQ((CaptureQuestion{camera, "a.example"}).text(),
              "“a.example” wants to use your camera");
    EXPECT_EQ((CaptureQuestion{microphone, "a.example"}).text(),
              "“a.example” wants to use your microphone");
    EXPECT_EQ((CaptureQuestion{cameraAndMicrophone, ""}).text(),
              "This page wants to use your camera and microphone");
}

TEST_F(CaptureQuestionsTest, ARequestIsAnsweredOnceWhoeverHoldsIt) {
    std::vector<Answer> given;
    {
        MediaCaptureRequest first{camera, host, [&](Answer answer) { given.push_back(answer); }};
        MediaCaptureRequest second{std::move(first)};
        second.answer(Answer::grant);
        second.answer(Answer::deny);
        second = MediaCaptureRequest{camera, host, [&](Answer answer) { given.push_back(answer); }};
    }

    EXPECT_EQ(given, (std::vector{Answer::grant, Answer::deny}));
}

}  // namespace
}  // namespace orvu

#include "site/downloads/DownloadQuestions.h"

#include "fakes/FakeDownloadRequest.h"
#include "fakes/VirtualMainLoop.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using enum DownloadCause;
using Log = FakeDownloadRequest::Log;

class DownloadQuestionsTest : public testing::Test {
protected:
    bool ask(const std::string& name, DownloadCause cause) {
        return questions.add(std::make_unique<FakeDownloadRequest>(log, name, cause));
    }
    enum class SetAside { no, yes };
    /// One that keeps a connection busy.
    void askHolding(const std::string& name, SetAside mayBe) {
        auto request = std::make_unique<FakeDownloadRequest>(log, name, page);
        request->holdConnection(mayBe == SetAside::yes);
        static_cast<void>(questions.add(std::move(request)));
    }
    [[nodiscard]] bool asks() const { return questions.question().has_value(); }

    VirtualMainLoop clock;
    Log log;  // what still waits at the end is dropped into it
    DownloadQuestions questions{clock};
};

TEST_F(DownloadQuestionsTest, TheFirstOfAPageGoesAndTheOthersWaitForOneAnswer) {
    EXPECT_FALSE(ask("a", page));
    EXPECT_TRUE(ask("b", page));
    EXPECT_FALSE(ask("c", page));

    EXPECT_EQ(log, Log{"a begun"});
    EXPECT_EQ(questions.question()->text, "“a.example” wants to download more files");
}

TEST_F(DownloadQuestionsTest, AllowedOnesGoInOrderAndSoDoThoseThatFollow) {
    ask("a", page);
    ask("b", page);
    ask("c", page);

    EXPECT_TRUE(questions.answer(PageAnswer::allow));
    EXPECT_FALSE(ask("d", page));

    EXPECT_EQ(log, (Log{"a begun", "b begun", "c begun", "d begun"}));
    EXPECT_FALSE(asks());
}

TEST_F(DownloadQuestionsTest, RefusedOnesAreDroppedAndSoAreThoseThatFollow) {
    ask("a", page);
    ask("b", page);

    EXPECT_TRUE(questions.answer(PageAnswer::refuse));
    EXPECT_FALSE(ask("c", page));

    EXPECT_EQ(log, (Log{"a begun", "b dropped", "c dropped"}));
    EXPECT_FALSE(asks());
}

TEST_F(DownloadQuestionsTest, ADismissedQuestionComesAgainUntilItWasDismissedThreeTimes) {
    ask("a", page);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(ask("b", page));
        EXPECT_TRUE(questions.answer(PageAnswer::dismiss));
    }

    EXPECT_FALSE(ask("c", page));

    EXPECT_EQ(log, (Log{"a begun", "b dropped", "b dropped", "b dropped", "c dropped"}));
}

TEST_F(DownloadQuestionsTest, WhatThePersonBeginsNeverWaits) {
    ask("a", page);
    ask("b", page);
    questions.answer(PageAnswer::refuse);
    log.clear();

    for (const char* const name : {"c", "d"}) EXPECT_FALSE(ask(name, person));

    EXPECT_EQ(log, (Log{"c begun", "d begun"}));
}

TEST_F(DownloadQuestionsTest, OneGestureIsGoodForOneDownload) {
    EXPECT_FALSE(ask("a", gesture));
    clock.advance(std::chrono::milliseconds{1000});
    EXPECT_FALSE(ask("the first of the page", gesture));
    EXPECT_TRUE(ask("b", gesture));
    clock.advance(std::chrono::milliseconds{1});
    EXPECT_FALSE(ask("c", gesture));

    EXPECT_EQ(log, (Log{"a begun", "the first of the page begun", "c begun"}));
}

TEST_F(DownloadQuestionsTest, TenThousandKeepAHundred) {
    ask("first", page);
    log.clear();

    for (int i = 0; i < 10'000; ++i) ask("x", page);
    EXPECT_EQ(log.size(), 9'900U);
    log.clear();
    questions.answer(PageAnswer::allow);

    EXPECT_EQ(log, Log(DownloadQuestions::waitingLimit, "x begun"));
}

TEST_F(DownloadQuestionsTest, OnlyTwoKeepAConnectionWhileTheyWait) {
    ask("first", page);
    log.clear();
    askHolding("a", SetAside::no);
    askHolding("b", SetAside::yes);

    askHolding("c", SetAside::yes);
    askHolding("d", SetAside::no);
    ask("made by the page", page);
    questions.answer(PageAnswer::allow);

    EXPECT_EQ(log, (Log{"c set aside", "d dropped", "a begun", "b begun", "c begun",
                        "made by the page begun"}));
}

TEST_F(DownloadQuestionsTest, WhatWaitsGoesWithItsDocument) {
    ask("a", page);
    ask("b", page);

    EXPECT_TRUE(questions.documentUnloaded());

    EXPECT_EQ(log, (Log{"a begun", "b dropped"}));
    EXPECT_FALSE(asks());
}

TEST_F(DownloadQuestionsTest, WhereThePersonLedTheNextDocumentBeginsAnew) {
    ask("a", page);
    ask("b", page);
    questions.answer(PageAnswer::refuse);
    log.clear();

    questions.personLeads();
    questions.documentUnloaded();
    ask("c", page);
    EXPECT_TRUE(ask("d", page));

    EXPECT_EQ(log, Log{"c begun"});
}

TEST_F(DownloadQuestionsTest, APageThatLeadsToItselfGetsNoSecondFirst) {
    ask("a", page);
    questions.documentUnloaded();

    EXPECT_TRUE(ask("b", page));

    EXPECT_EQ(log, Log{"a begun"});
}

TEST_F(DownloadQuestionsTest, ARefusalOutlivesAPageThatLeadsToItselfAndAnAllowanceDoesNot) {
    ask("a", page);
    ask("b", page);
    questions.answer(PageAnswer::allow);
    questions.documentUnloaded();
    EXPECT_TRUE(ask("c", page));
    questions.answer(PageAnswer::refuse);
    questions.documentUnloaded();

    EXPECT_FALSE(ask("d", page));

    EXPECT_EQ(log, (Log{"a begun", "b begun", "c dropped", "d dropped"}));
}

TEST_F(DownloadQuestionsTest, APageWithoutAHostIsNamedAsSuch) {
    for (const char* const name : {"a", "b"}) {
        static_cast<void>(
            questions.add(std::make_unique<FakeDownloadRequest>(log, name, page, "")));
    }

    EXPECT_EQ(questions.question()->text, "This page wants to download more files");
}

}  // namespace
}  // namespace orvu

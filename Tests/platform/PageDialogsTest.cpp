#include "platform/PageDialogs.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvu {
namespace {

using Kind = PageDialog::Kind;

class PageDialogsTest : public testing::Test {
protected:
    /// What became of one that was asked.
    struct Asked {
        PageDialogs::Id id = 0;
        std::optional<PageDialogAnswer> answer;
        int answers = 0;
    };

    std::shared_ptr<Asked> ask(PageDialog dialog) {
        auto asked = std::make_shared<Asked>();
        asked->id = dialogs->ask(std::move(dialog), now, [asked](const PageDialogAnswer& answer) {
            asked->answer = answer;
            ++asked->answers;
        });
        return asked;
    }
    std::shared_ptr<Asked> ask(Kind kind, const std::string& text = "") {
        return ask({.kind = kind, .host = "a.example", .text = text});
    }
    [[nodiscard]] static PageDialog signIn(const std::string& space) {
        return {.kind = Kind::authentication, .host = "b.example", .space = space};
    }
    /// The text of the one in front; nothing without one.
    [[nodiscard]] std::optional<std::string> front() const {
        const auto* const shown = dialogs->current();
        return shown ? std::optional{shown->dialog.text} : std::nullopt;
    }
    [[nodiscard]] bool offersSilence() const { return dialogs->current()->offersSilence; }
    void pass(double seconds) { now = now.after(std::chrono::duration<double>{seconds}); }
    [[nodiscard]] static PageDialogAnswer yes(const std::string& text = "") {
        return {.isAccepted = true, .text = text};
    }

    Date now{780000000};
    std::unique_ptr<PageDialogs> dialogs = std::make_unique<PageDialogs>();
};

TEST_F(PageDialogsTest, OneIsInFrontAndTheOthersWaitBehindIt) {
    const auto first = ask(Kind::confirm, "first");
    const auto second = ask(Kind::prompt, "second");
    EXPECT_EQ(front(), "first");

    dialogs->answer(first->id, yes());
    EXPECT_EQ(front(), "second");
    dialogs->answer(second->id, yes("typed"));

    EXPECT_EQ(front(), std::nullopt);
    EXPECT_EQ(first->answer, yes());
    EXPECT_EQ(second->answer, yes("typed"));
}

TEST_F(PageDialogsTest, OnlyTheFirstAnswerCounts) {
    const auto asked = ask(Kind::confirm);

    dialogs->answer(asked->id, yes());
    dialogs->answer(asked->id, {});
    dialogs->cancelAll();

    EXPECT_EQ(asked->answers, 1);
    EXPECT_EQ(asked->answer, yes());
}

TEST_F(PageDialogsTest, AChangeIsToldOnceWhenAnotherOneComesToTheFront) {
    int changes = 0;
    dialogs->connectChanged([&] { ++changes; });

    const auto first = ask(Kind::alert);
    const auto second = ask(Kind::alert);
    EXPECT_EQ(changes, 1);
    dialogs->withdraw(second->id);
    EXPECT_EQ(changes, 1);
    dialogs->answer(first->id, yes());

    EXPECT_EQ(changes, 2);
}

TEST_F(PageDialogsTest, WhetherToLeaveIsAskedBeforeAllElse) {
    ask(signIn("x"));

    ask(Kind::beforeUnload, "leave");

    EXPECT_EQ(front(), "leave");
}

TEST_F(PageDialogsTest, WhatIsWithdrawnGetsNoAnswer) {
    const auto asked = ask(signIn("x"));

    dialogs->withdraw(asked->id);
    dialogs->withdraw(asked->id);

    EXPECT_EQ(front(), std::nullopt);
    EXPECT_EQ(asked->answers, 0);
}

TEST_F(PageDialogsTest, TheEndCancelsAllThatWait) {
    const auto first = ask(Kind::confirm);
    const auto second = ask(signIn("x"));

    dialogs.reset();

    EXPECT_EQ(first->answer, PageDialogAnswer{});
    EXPECT_EQ(second->answer, PageDialogAnswer{});
}

TEST_F(PageDialogsTest, AnObserverMayEndThemAllInTheMiddle) {
    const auto first = ask(Kind::confirm);
    const auto second = ask(Kind::confirm);
    dialogs->connectChanged([&] { dialogs.reset(); });

    dialogs->answer(first->id, yes());

    EXPECT_EQ(first->answer, yes());
    EXPECT_EQ(second->answer, PageDialogAnswer{});
}

TEST_F(PageDialogsTest, AnAnswerMayAskTheNextOne) {
    std::shared_ptr<Asked> next;
    const auto id = dialogs->ask({.kind = Kind::alert}, now,
                                 [&](const PageDialogAnswer&) { next = ask(Kind::alert, "next"); });

    dialogs->answer(id, yes());

    EXPECT_EQ(front(), "next");
    EXPECT_EQ(next->answers, 0);
}

TEST_F(PageDialogsTest, OneSignInAnswersAllThatWaitForTheSame) {
    const auto first = ask(signIn("same"));
    const auto other = ask(signIn("other"));
    const auto second = ask(signIn("same"));
    const PageDialogAnswer typed{.isAccepted = true, .text = "me", .password = "secret"};

    dialogs->answer(first->id, typed);

    EXPECT_EQ(first->answer, typed);
    EXPECT_EQ(second->answer, typed);
    EXPECT_EQ(other->answers, 0);
    EXPECT_EQ(dialogs->current()->id, other->id);
}

TEST_F(PageDialogsTest, ARefusedSignInRefusesAllThatWaitForTheSame) {
    const auto first = ask(signIn("same"));
    const auto second = ask(signIn("same"));

    dialogs->answer(first->id, {});

    EXPECT_EQ(second->answer, PageDialogAnswer{});
}

// --- Silence ------------------------------------------------------------------------------------

TEST_F(PageDialogsTest, TheThirdWithinTenSecondsOffersSilence) {
    for (int i = 0; i < 2; ++i) {
        const auto asked = ask(Kind::alert);
        EXPECT_FALSE(offersSilence());
        dialogs->answer(asked->id, yes());
        pass(5);
    }

    ask(Kind::alert);

    EXPECT_TRUE(offersSilence());
}

TEST_F(PageDialogsTest, TheThirdAfterMoreThanTenSecondsDoesNot) {
    for (const double wait : {5.0, 5.1}) {
        dialogs->answer(ask(Kind::alert)->id, yes());
        pass(wait);
    }

    ask(Kind::alert);

    EXPECT_FALSE(offersSilence());
}

TEST_F(PageDialogsTest, ADocumentThatLoadsItselfAnewIsCountedOn) {
    for (int i = 0; i < 2; ++i) {
        dialogs->answer(ask(Kind::alert)->id, yes());
        dialogs->documentGone();
    }

    ask(Kind::alert);

    EXPECT_TRUE(offersSilence());
}

TEST_F(PageDialogsTest, AnotherHostIsCountedForItself) {
    for (int i = 0; i < 2; ++i) dialogs->answer(ask(Kind::alert)->id, yes());

    ask({.kind = Kind::alert, .host = "b.example"});

    EXPECT_FALSE(offersSilence());
}

TEST_F(PageDialogsTest, ASilencedPageIsCancelledAtOnceUntilItsDocumentGoes) {
    const auto standing = ask(Kind::confirm);
    const auto waiting = ask(signIn("x"));

    dialogs->silence();

    EXPECT_EQ(standing->answer, PageDialogAnswer{});
    EXPECT_EQ(waiting->answer, PageDialogAnswer{});
    for (const auto kind : {Kind::alert, Kind::prompt, Kind::authentication, Kind::beforeUnload}) {
        EXPECT_EQ(ask(kind)->answer, PageDialogAnswer{});
    }
    EXPECT_EQ(front(), std::nullopt);
    dialogs->documentGone();
    ask(Kind::alert, "again");
    EXPECT_EQ(front(), "again");
}

TEST_F(PageDialogsTest, WhatThePersonSetOffIsAskedAlsoByASilencedPage) {
    dialogs->silence();

    const auto leaving = ask({.kind = Kind::beforeUnload, .startedByPerson = true});

    EXPECT_EQ(leaving->answers, 0);
    EXPECT_EQ(dialogs->current()->id, leaving->id);
}

TEST_F(PageDialogsTest, AThousandAlertsOfASilencedPageShowNothing) {
    int changes = 0;
    dialogs->silence();
    dialogs->connectChanged([&] { ++changes; });

    int answers = 0;
    for (int i = 0; i < 1000; ++i) answers += ask(Kind::alert)->answers;

    EXPECT_EQ(answers, 1000);
    EXPECT_EQ(changes, 0);
}

TEST_F(PageDialogsTest, WhatGoesBeyondTheLimitOfThoseThatWaitIsCancelled) {
    std::vector<std::shared_ptr<Asked>> asked;
    for (std::size_t i = 0; i <= PageDialogs::waitingLimit; ++i) {
        asked.push_back(ask(signIn(std::to_string(i))));
    }

    EXPECT_EQ(asked.back()->answer, PageDialogAnswer{});
    EXPECT_EQ(asked[PageDialogs::waitingLimit - 1]->answers, 0);
}

TEST_F(PageDialogsTest, APageThatIsBeingLeftAsksNothingButWhetherToLeave) {
    const auto standing = ask(Kind::alert);

    dialogs->setLeaving(true);

    EXPECT_EQ(standing->answer, PageDialogAnswer{});
    EXPECT_EQ(ask(Kind::alert)->answer, PageDialogAnswer{});
    EXPECT_EQ(ask(Kind::beforeUnload)->answers, 0);
    dialogs->setLeaving(false);
    EXPECT_EQ(ask(Kind::alert)->answers, 0);
}

// --- Texts --------------------------------------------------------------------------------------

TEST_F(PageDialogsTest, ALongTextIsCutAndSaysSo) {
    const std::string megabytes(2'000'000, 'x');

    const auto shown = PageDialogs::presentable(megabytes);

    EXPECT_EQ(shown, std::string(PageDialogs::textLimit, 'x').append("…"));
    EXPECT_EQ(PageDialogs::presentable("short"), "short");
}

TEST_F(PageDialogsTest, OneCharacterOfAMillionMarksIsCutToo) {
    std::string marks = "a";
    for (int i = 0; i < 1'000'000; ++i) marks += "\u0301";

    EXPECT_LE(PageDialogs::presentable(marks).size(), 5 * PageDialogs::textLimit);
}

TEST_F(PageDialogsTest, TooManyLinesAreCut) {
    const auto shown = PageDialogs::presentable(std::string(3000, '\n'));

    EXPECT_EQ(shown, std::string(PageDialogs::lineLimit - 1, '\n').append("…"));
}

TEST_F(PageDialogsTest, AllLineEndsAreOneAndControlCharactersGo) {
    EXPECT_EQ(PageDialogs::presentable("a\r\nb\rc\u2028d\u2029e\u0085f\tg"), "a\nb\nc\nd\ne\nf\tg");
    EXPECT_EQ(PageDialogs::presentable("a\x01"
                                       "b\x1b[31mc\x7f\u009b"),
              "ab[31mc");
}

TEST_F(PageDialogsTest, WhatTurnsTheDirectionOfTextGoes) {
    EXPECT_EQ(PageDialogs::presentable("\u202emoc.knab\u202c \u2066x\u2069\u200f\u061c"),
              "moc.knab x");
    EXPECT_EQ(PageDialogs::presentable("שלום"), "שלום");
}

TEST_F(PageDialogsTest, BytesThatAreNoTextAreReplaced) {
    EXPECT_EQ(PageDialogs::presentable("a\xff"
                                       "b"),
              "a\uFFFDb");
}

TEST_F(PageDialogsTest, AWordWithoutEndIsBroken) {
    ask({.kind = Kind::confirm, .text = "short words stay " + std::string(2'000'000, 'a')});

    const std::string& text = dialogs->current()->dialog.text;
    EXPECT_TRUE(text.starts_with("short words stay " + std::string(60, 'a') + "\naaa")) << text;
    for (std::size_t at = 0; at != std::string::npos;) {
        const auto end = text.find('\n', at);
        EXPECT_LE((end == std::string::npos ? text.size() : end) - at, 80U);
        at = end == std::string::npos ? end : end + 1;
    }
}

TEST_F(PageDialogsTest, TheTextsOfADialogAreMadePresentable) {
    ask({.kind = Kind::prompt, .text = "a\r\nb", .suggestion = std::string(5000, 'y')});

    EXPECT_EQ(dialogs->current()->dialog.text, "a\nb");
    EXPECT_EQ(dialogs->current()->dialog.suggestion.size(),
              PageDialogs::textLimit + std::string_view{"…"}.size());
}

}  // namespace
}  // namespace orvu

#include "shell/pagearea/PageDialogText.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using Kind = PageDialog::Kind;

PageDialogText textOf(Kind kind, const std::string& words = "") {
    return PageDialogText::of({.kind = kind, .host = "a.example", .text = words});
}

TEST(PageDialogTextTest, EachKindHasItsAnswers) {
    EXPECT_EQ(textOf(Kind::alert).accept, "OK");
    EXPECT_EQ(textOf(Kind::alert).cancel, "");
    for (const auto kind : {Kind::confirm, Kind::prompt}) {
        EXPECT_EQ(textOf(kind).accept, "OK");
        EXPECT_EQ(textOf(kind).cancel, "Cancel");
    }
    EXPECT_EQ(textOf(Kind::beforeUnload).accept, "Leave");
    EXPECT_EQ(textOf(Kind::beforeUnload).cancel, "Stay on Page");
    EXPECT_EQ(textOf(Kind::authentication).accept, "Sign In");
    EXPECT_EQ(textOf(Kind::authentication).cancel, "Cancel");
}

TEST(PageDialogTextTest, TheAskerIsTheHostWhateverThePageSays) {
    const auto text = textOf(Kind::alert, "bank.example");

    EXPECT_EQ(text.asker, "a.example");
    EXPECT_EQ(text.message, "bank.example");
}

TEST(PageDialogTextTest, AHostStandsInLettersThatCannotBeMistaken) {
    EXPECT_EQ(PageDialogText::of({.host = "xn--pple-43d.com"}).asker, "xn--pple-43d.com");
    EXPECT_EQ(PageDialogText::of({.host = "xn--bcher-kva.example"}).asker, "bücher.example");
}

TEST(PageDialogTextTest, APageWithoutAHostIsCalledThisPage) {
    EXPECT_EQ(PageDialogText::of({.kind = Kind::alert}).asker, "This page");
}

TEST(PageDialogTextTest, WhatAPageSaysOnLeavingIsNotShown) {
    EXPECT_EQ(textOf(Kind::beforeUnload, "Win a prize!").message,
              "What you typed here may be lost.");
}

TEST(PageDialogTextTest, OnlyLeavingHasCancelAsItsDefault) {
    for (const auto kind : {Kind::alert, Kind::confirm, Kind::prompt, Kind::authentication}) {
        EXPECT_FALSE(PageDialogText::isCancelDefault({.kind = kind}));
    }
    EXPECT_TRUE(PageDialogText::isCancelDefault({.kind = Kind::beforeUnload}));
}

TEST(PageDialogTextTest, WhatAServerCallsItselfIsQuoted) {
    EXPECT_EQ(textOf(Kind::authentication, "Staff").message, "It says: “Staff”");
    EXPECT_EQ(textOf(Kind::authentication).message, "");
}

TEST(PageDialogTextTest, AProxyIsNamedAsOne) {
    const auto text = PageDialogText::of(
        {.kind = Kind::authentication, .host = "gate.example", .isForProxy = true});

    EXPECT_EQ(text.asker, "Proxy gate.example");
    EXPECT_EQ(text.caption, "The proxy wants a name and a password.");
}

TEST(PageDialogTextTest, ThePersonIsWarnedOfAnOpenConnectionAndOfARefusedPassword) {
    PageDialog dialog{.kind = Kind::authentication, .host = "a.example"};
    EXPECT_EQ(PageDialogText::of(dialog).warning, "");

    dialog.isEncrypted = false;
    EXPECT_EQ(PageDialogText::of(dialog).warning,
              "What you enter goes over the network unencrypted.");
    dialog.isRetry = true;
    EXPECT_EQ(PageDialogText::of(dialog).warning,
              "That name or password wasn't accepted. What you enter goes over the network "
              "unencrypted.");
}

TEST(PageDialogTextTest, AllOfItIsSpokenTheAskerFirst) {
    EXPECT_EQ(textOf(Kind::confirm, "Sure?").spoken(),
              "a.example. The page, or something embedded in it, asks: Sure?");
}

}  // namespace
}  // namespace orvu

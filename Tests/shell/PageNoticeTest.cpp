#include "shell/pagearea/PageNotice.h"

#include <gtest/gtest.h>

#include <vector>

namespace orvu {
namespace {

using Action = PageNotice::Action;
using Cause = LoadFailureCause;
using Fault = CertificateFault;

LoadFailure failureOf(Cause cause, const std::string& address = "https://example.org/page") {
    return {cause, *Url::parse(address), std::nullopt};
}

LoadFailure badCertificate(Fault fault) {
    return {Cause::certificate, *Url::parse("https://example.org/page"), fault};
}

PageNotice noticeOf(const LoadFailure& failure) {
    return PageNotice::of(failure, PageNotice::Explained::no, std::nullopt);
}

std::vector<Action> actionsOf(const PageNotice& notice) {
    std::vector<Action> actions;
    for (const auto& button : notice.buttons) actions.push_back(button.action);
    return actions;
}

TEST(PageNoticeTest, SaysInPlainWordsWhy) {
    const std::vector<std::pair<Cause, std::string>> reasons{
        {Cause::noNetwork, "this computer is not connected to a network"},
        {Cause::noSuchName, "there is no site of that name"},
        {Cause::refused, "it refused the connection"},
        {Cause::unreachable, "no way leads there"},
        {Cause::timedOut, "it did not answer in time"},
        {Cause::connectionLost, "the connection broke off"},
        {Cause::tooManyRedirects, "it sends from one address to the next without end"},
        {Cause::secureConnection, "no secure connection came about"},
        {Cause::noSuchFile, "there is no such file"},
        {Cause::other, "something went wrong"},
    };
    for (const auto& [cause, reason] : reasons) {
        const auto notice = noticeOf(failureOf(cause));
        EXPECT_EQ(notice.text, "Couldn't open example.org: " + reason + ".");
        EXPECT_EQ(actionsOf(notice), (std::vector{Action::edit, Action::tryAgain}));
    }
}

TEST(PageNoticeTest, SaysWhatIsWrongWithACertificate) {
    const std::vector<std::pair<Fault, std::string>> faults{
        {Fault::revoked, "its certificate was called back"},
        {Fault::wrongHost, "its certificate belongs to another site"},
        {Fault::unknownAuthority, "nobody known vouches for its certificate"},
        {Fault::expired, "its certificate has expired"},
        {Fault::notYetValid, "its certificate is not valid yet"},
        {Fault::insecure, "its certificate could be forged"},
        {Fault::other, "its certificate is not right"},
    };
    for (const auto& [fault, reason] : faults) {
        EXPECT_EQ(noticeOf(badCertificate(fault)).text,
                  "Couldn't open example.org: " + reason + ".");
    }
}

TEST(PageNoticeTest, ABadCertificateIsTakenBehindASecondPressOnly) {
    const auto failure = badCertificate(Fault::expired);

    const auto first = noticeOf(failure);
    EXPECT_EQ(actionsOf(first), (std::vector{Action::explain, Action::edit, Action::tryAgain}));

    const auto second = PageNotice::of(failure, PageNotice::Explained::yes, std::nullopt);
    EXPECT_EQ(actionsOf(second), (std::vector{Action::openAnyway, Action::tryAgain}));
    EXPECT_NE(second.text.find("Somebody else may pass for example.org"), std::string::npos);
}

TEST(PageNoticeTest, AnAddressOfAnotherProgramOpensThere) {
    const auto failure = failureOf(Cause::otherProgram, "mailto:ada@example.org");

    const auto notice = PageNotice::of(failure, PageNotice::Explained::no, "Letters");

    EXPECT_EQ(notice.text, "mailto:ada@example.org opens in another program.");
    ASSERT_EQ(notice.buttons.size(), 1U);
    EXPECT_EQ(notice.buttons[0], (PageNotice::Button{Action::openWith, "Open with Letters"}));
}

TEST(PageNoticeTest, AnAddressThatNobodyOpensCanOnlyBeEdited) {
    const auto notice = noticeOf(failureOf(Cause::otherProgram, "made-up:thing"));

    EXPECT_EQ(notice.text, "Couldn't open made-up:thing: no program here opens such addresses.");
    EXPECT_EQ(actionsOf(notice), std::vector{Action::edit});
}

TEST(PageNoticeTest, APageWhoseProcessEndedTwiceCanBeReloaded) {
    const auto notice = noticeOf(failureOf(Cause::processEnded));

    EXPECT_EQ(notice.text, "This page ended unexpectedly, twice.");
    EXPECT_EQ(actionsOf(notice), std::vector{Action::reload});
}

TEST(PageNoticeTest, APageThatWasStoppedCanBeReloaded) {
    const auto notice = noticeOf(failureOf(Cause::addressFlood));

    EXPECT_EQ(notice.text,
              "Stopped this page: it changed its address without end, and held everything up.");
    EXPECT_EQ(actionsOf(notice), std::vector{Action::reload});
}

TEST(PageNoticeTest, AnAddressWithoutAHostStandsWhole) {
    EXPECT_EQ(noticeOf(failureOf(Cause::noSuchFile, "file:///home/ada/note.html")).text,
              "Couldn't open file:///home/ada/note.html: there is no such file.");
}

TEST(PageNoticeTest, WhatAPageWroteIsCutAndBreaksNoLine) {
    const auto failure =
        failureOf(Cause::otherProgram, "made-up:" + std::string(100'000, 'x') + "%0Aend");

    const auto notice =
        PageNotice::of(failure, PageNotice::Explained::no, "A\nB" + std::string(100'000, 'y'));

    EXPECT_LT(notice.text.size(), 300U);
    EXPECT_LT(notice.buttons[0].title.size(), 300U);
    EXPECT_EQ(notice.buttons[0].title.find('\n'), std::string::npos);
}

TEST(PageNoticeTest, AHostThatPassesForAnotherStandsInTheLettersOfItsServer) {
    // A Cyrillic letter in place of the Latin one.
    const auto notice = noticeOf(failureOf(Cause::refused, "https://xn--pple-43d.example/"));

    EXPECT_NE(notice.text.find("xn--pple-43d.example"), std::string::npos);
}

}  // namespace
}  // namespace orvu

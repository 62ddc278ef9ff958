#include "platform/InitiatedLoad.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvu {
namespace {

using Navigation = InitiatedLoad::Navigation;

Url url(std::string_view text) { return *Url::parse(text); }

std::optional<InitiatedLoad> loadOf(std::string_view target, const char* referrer) {
    return InitiatedLoad::of(url(target), {referrer ? std::optional{url(referrer)} : std::nullopt});
}

/// What leads to the target, in the document.
std::string refreshOf(const InitiatedLoad& load) {
    const std::string& document = load.document();
    const auto begin = document.find("content=\"0;url=");
    const auto end = document.find("\">", begin);
    return document.substr(begin + 15, end - begin - 15);
}

TEST(InitiatedLoadTest, TheDocumentStandsWhereThePageLetsItBeKnown) {
    const auto load = loadOf("https://b.example/", "https://a.example/");

    ASSERT_TRUE(load);
    EXPECT_EQ(load->place(), url("https://a.example/"));
    EXPECT_EQ(refreshOf(*load), "https://b.example/");
}

TEST(InitiatedLoadTest, WithoutAReferrerItStandsNowhere) {
    const auto load = loadOf("https://b.example/", nullptr);

    ASSERT_TRUE(load);
    EXPECT_EQ(load->place(), std::nullopt);
}

TEST(InitiatedLoadTest, NoFileAndNoBlobIsAPlaceForIt) {
    for (const char* const page :
         {"file:///home/a.html", "blob:https://a.example/1", "about:blank"}) {
        const auto load = loadOf("https://b.example/", page);
        ASSERT_TRUE(load) << page;
        EXPECT_EQ(load->place(), std::nullopt) << page;
    }
}

TEST(InitiatedLoadTest, WhatIsNotOfTheWebNeedsNone) {
    for (const auto target : {"about:blank", "file:///home/a.html", "blob:https://a.example/1"}) {
        EXPECT_FALSE(loadOf(target, "https://a.example/")) << target;
    }
}

TEST(InitiatedLoadTest, APageThatOpensItselfNeedsNone) {
    EXPECT_FALSE(loadOf("https://a.example/x", "https://a.example/x"));
    EXPECT_FALSE(loadOf("https://a.example/x#part", "https://a.example/x"));
    EXPECT_TRUE(loadOf("https://a.example/x?y", "https://a.example/x"));
}

TEST(InitiatedLoadTest, NoAddressBreaksOutOfItsPlaceInTheDocument) {
    const auto load = loadOf("https://b.example/?q=\"><script>alert(1)</script>&amp;x'", nullptr);

    ASSERT_TRUE(load);
    EXPECT_EQ(refreshOf(*load),
              "https://b.example/?q=&quot;>&lt;script>alert(1)&lt;/script>&amp;amp;x'");
    EXPECT_EQ(load->document().find("<script"), std::string::npos);
}

TEST(InitiatedLoadTest, OnlyTheTargetsEventsConcernOthers) {
    auto load = *loadOf("https://b.example/", nullptr);

    EXPECT_EQ(load.navigates(), Navigation::ownDocument);
    EXPECT_FALSE(load.started());
    EXPECT_FALSE(load.committed());
    EXPECT_EQ(load.navigates(), Navigation::target);
    EXPECT_TRUE(load.started());
    EXPECT_EQ(load.navigates(), Navigation::target);
    EXPECT_TRUE(load.committed());
}

TEST(InitiatedLoadTest, ItLoadsUntilTheTargetsOwnLoadEnds) {
    auto load = *loadOf("https://b.example/", nullptr);

    EXPECT_TRUE(load.isLoading(false));
    static_cast<void>(load.committed());
    EXPECT_TRUE(load.isLoading(false));
    static_cast<void>(load.started());
    EXPECT_TRUE(load.isLoading(true));
    EXPECT_FALSE(load.isLoading(false));
}

TEST(InitiatedLoadTest, FromTheLeaveToItsStartTheTargetStartsAnyMoment) {
    auto load = *loadOf("https://b.example/", nullptr);

    load.allowed();  // its own document, not the target
    EXPECT_FALSE(load.startsAnyMoment());
    static_cast<void>(load.committed());
    EXPECT_FALSE(load.startsAnyMoment());
    load.allowed();
    EXPECT_TRUE(load.startsAnyMoment());
    EXPECT_TRUE(load.isLoading(false));
    EXPECT_EQ(load.navigates(), Navigation::target);
    EXPECT_TRUE(load.started());
    EXPECT_FALSE(load.startsAnyMoment());
    EXPECT_TRUE(load.committed());
}

TEST(InitiatedLoadTest, OnceGivenUpItLeadsNowhere) {
    auto load = *loadOf("https://b.example/", nullptr);
    static_cast<void>(load.committed());

    load.giveUp();

    EXPECT_TRUE(load.isGivenUp());
    EXPECT_EQ(load.navigates(), Navigation::stray);
    EXPECT_FALSE(load.started());
    EXPECT_FALSE(load.committed());
    EXPECT_FALSE(load.isLoading(true));  // the engine may go on saying so
    EXPECT_FALSE(load.isLoading(false));
}

TEST(InitiatedLoadTest, AFailureOfTheTargetEndsItAndOneOfAnEarlierLoadDoesNot) {
    auto load = *loadOf("https://b.example/", nullptr);

    load.failed();
    EXPECT_TRUE(load.isLoading(false));
    static_cast<void>(load.committed());
    static_cast<void>(load.started());
    load.failed();

    EXPECT_FALSE(load.isLoading(false));
    EXPECT_EQ(load.navigates(), Navigation::stray);
}

}  // namespace
}  // namespace orvu

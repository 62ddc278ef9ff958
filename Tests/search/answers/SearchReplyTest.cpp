#include "search/answers/SearchAnswer.h"

#include "foundation/text/Text.h"
#include "foundation/RandomText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace orvu {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Reply = SearchAnswer::Reply;

TEST(SearchReplyTest, AReplyWithoutNextIsAllAnswer) {
    EXPECT_EQ(SearchAnswer::reply(" \n One [1]. \t\r\n"), (Reply{"One [1].", {}}));
    EXPECT_EQ(SearchAnswer::reply(""), (Reply{"", {}}));
}

TEST(SearchReplyTest, AReplyThatBeginsWithNextHasNoAnswer) {
    EXPECT_EQ(SearchAnswer::reply("Next: a | b"), (Reply{"", {"a", "b"}}));
}

TEST(SearchReplyTest, OfFourSearchesTheFirstThreeAreTaken) {
    EXPECT_THAT(SearchAnswer::reply("A\nNext: a | b | c | d").followUps,
                ElementsAre("a", "b", "c"));
}

TEST(SearchReplyTest, SearchesOf90CharactersAreDroppedBeforeTheyAreCounted) {
    const std::string longest(89, 'x');
    const std::string tooLong(90, 'y');

    EXPECT_THAT(SearchAnswer::reply("Next:" + tooLong + "|" + longest + "|b|c").followUps,
                ElementsAre(longest, "b", "c"));
}

TEST(SearchReplyTest, SearchesAreMeasuredInCharacters) {
    const std::string flags = repeated("🇩🇪", 89);

    EXPECT_THAT(SearchAnswer::reply("Next:" + flags).followUps, ElementsAre(flags));
    EXPECT_THAT(SearchAnswer::reply("Next:" + flags + "x").followUps, IsEmpty());
}

TEST(SearchReplyTest, MarksOfListsAndQuotesGoFromTheEnds) {
    EXPECT_THAT(SearchAnswer::reply("Next: - “one” | • two- \n| \"three\"").followUps,
                ElementsAre("one", "two", "\"three\""));
    EXPECT_THAT(SearchAnswer::reply("Next: a-b | “ - • ” || ").followUps, ElementsAre("a-b"));
}

TEST(SearchReplyTest, WhatFollowsASecondNextIsIgnored) {
    EXPECT_EQ(SearchAnswer::reply("A Next: b Next: c | d"), (Reply{"A", {"b"}}));
}

TEST(SearchReplyTest, NextIsFoundAsItIsWritten) {
    EXPECT_EQ(SearchAnswer::reply("A next: b NEXT: c Next : d"),
              (Reply{"A next: b NEXT: c Next : d", {}}));
    EXPECT_EQ(SearchAnswer::reply("ANext:b"), (Reply{"A", {"b"}}));
}

TEST(SearchReplyTest, MarksOfHtmlAreTakenOut) {
    EXPECT_EQ(SearchAnswer::reply("<pages>One</pages> <b\nid='x'>two</B>").answer, "One two");
    EXPECT_EQ(SearchAnswer::reply("1 < 2, 3 > 2, <3>, <-a>, </ b>, <").answer,
              "1 < 2, 3 > 2, <3>, <-a>, </ b>, <");
    EXPECT_EQ(SearchAnswer::reply("<<a>b>").answer, "<b>");
    EXPECT_EQ(SearchAnswer::reply("<a <b>c").answer, "c");
    EXPECT_EQ(SearchAnswer::reply("one <a two").answer, "one <a two");
}

TEST(SearchReplyTest, MarksGoBeforeTheWordNextIsLookedFor) {
    EXPECT_EQ(SearchAnswer::reply("A<br>Ne<i>xt</i>: b"), (Reply{"A", {"b"}}));
}

TEST(SearchReplyTest, LongRepliesTakeLinearTime) {
    const std::string marks = repeated("<a", 100000);
    EXPECT_EQ(SearchAnswer::reply(marks).answer, marks);
    EXPECT_THAT(SearchAnswer::reply("Next:" + repeated("|", 300000)).followUps, IsEmpty());
    EXPECT_EQ(SearchAnswer::reply(repeated("Next:", 50000)), (Reply{"", {}}));
}

TEST(SearchReplyTest, WhateverIsSaidKeepsTheLimits) {
    RandomText random{7};
    for (int round = 0; round < 2000; ++round) {
        const auto reply = SearchAnswer::reply(random.text(20) + "Next:" + random.text(60) + "|-" +
                                               random.text(300) + "|“" + random.text(60));
        ASSERT_LE(reply.followUps.size(), SearchAnswer::followUpsLimit);
        for (const auto& each : reply.followUps) {
            ASSERT_FALSE(each.empty());
            ASSERT_LT(characterCount(each), SearchAnswer::followUpLimit);
            ASSERT_EQ(trimmed(each, TrimSet::whitespacesAndNewlines), each);
        }
    }
}

}  // namespace
}  // namespace orvu

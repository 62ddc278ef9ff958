#include "core/TrackerBlocker.h"

#include "foundation/json/Json.h"
#include "foundation/text/Regex.h"
#include "support/StoreWorld.h"

#include <algorithm>
#include <set>

namespace orvu {
namespace {

class TrackerBlockerTest : public testing::Test {
protected:
    using Controller = std::shared_ptr<FakeUserContent>;

    static Controller controller() { return std::make_shared<FakeUserContent>(); }
    /// Whether the rule for `host` matches an address.
    static bool matches(std::string_view host, const std::string& address) {
        return Regex{TrackerBlocker::urlFilter(host), Regex::LetterCase::significant}.isFoundIn(
                   address) == true;
    }

    FakeRuleListStore lists;
    TrackerBlocker blocker{lists};
};

TEST_F(TrackerBlockerTest, TheFilterEscapesBothDotsOfAHost) {
    EXPECT_EQ(TrackerBlocker::urlFilter("bat.bing.com"),
              R"(^https?://([^/]+\.)?bat\.bing\.com[/:])");
}

TEST_F(TrackerBlockerTest, TheFilterTakesTheHostItsSubdomainsEitherSchemeAndAnyPort) {
    EXPECT_TRUE(matches("ads.example", "https://ads.example/"));
    EXPECT_TRUE(matches("ads.example", "http://ads.example/pixel.gif?a=b"));
    EXPECT_TRUE(matches("ads.example", "https://a.b.ads.example/"));
    EXPECT_TRUE(matches("ads.example", "https://ads.example:8443/"));
    EXPECT_TRUE(matches("ads.example", "http://cdn.ads.example:80/"));
}

TEST_F(TrackerBlockerTest, TheFilterLeavesOtherHostsAlone) {
    EXPECT_FALSE(matches("ads.example", "https://ads.example.org/"));
    EXPECT_FALSE(matches("ads.example", "https://bads.example/"));
    EXPECT_FALSE(matches("ads.example", "https://adsxexample/"));
    EXPECT_FALSE(matches("ads.example", "https://other.example/ads.example/"));
    EXPECT_FALSE(matches("ads.example", "ftp://ads.example/"));
    EXPECT_FALSE(matches("bat.bing.com", "https://www.bing.com/search"));
    EXPECT_FALSE(matches("bat.bing.com", "https://bing.com/"));
}

TEST_F(TrackerBlockerTest, TwentyDifferentHostsWithoutSchemeOrCapitals) {
    const std::set<std::string_view> different{TrackerBlocker::domains.begin(),
                                               TrackerBlocker::domains.end()};

    EXPECT_EQ(different.size(), 20U);
    for (const std::string_view host : TrackerBlocker::domains) {
        EXPECT_TRUE(host.contains('.')) << host;
        EXPECT_TRUE(std::ranges::all_of(host, [](char c) {
            return (c >= 'a' && c <= 'z') || c == '.' || c == '-';
        })) << host;
    }
}

TEST_F(TrackerBlockerTest, OneRuleForEachHostInTheirOrder) {
    const auto text = TrackerBlocker::encodedRules(TrackerBlocker::domains);

    const auto document = JsonDocument::parse(text.value());
    const auto rules = document.value().root().array().value();
    ASSERT_EQ(rules.size(), 20U);
    for (std::size_t i = 0; i < rules.size(); ++i) {
        const auto trigger = rules[i].field("trigger").value();
        EXPECT_EQ(trigger.field("url-filter")->text(),
                  TrackerBlocker::urlFilter(TrackerBlocker::domains.at(i)));
        const auto loads = trigger.field("load-type")->array().value();
        ASSERT_EQ(loads.size(), 1U);
        EXPECT_EQ(loads[0].text(), "third-party");
        EXPECT_EQ(rules[i].field("action")->field("type")->text(), "block");
    }
}

TEST_F(TrackerBlockerTest, CompilesUnderItsIdentifier) {
    blocker.install(controller());

    ASSERT_EQ(lists.sources.size(), 1U);
    EXPECT_EQ(lists.sources[0].identifier, "zarvo-trackers");
    EXPECT_EQ(lists.sources[0].rules, TrackerBlocker::encodedRules(TrackerBlocker::domains));
}

TEST_F(TrackerBlockerTest, SeveralWindowsDuringTheCompileAllGetTheListEachOnce) {
    const Controller first = controller();
    const Controller second = controller();
    const Controller third = controller();
    blocker.install(first);
    blocker.install(second);
    blocker.install(first);
    blocker.install(third);

    const auto list = lists.succeed();

    EXPECT_EQ(lists.sources.size(), 1U);
    for (const auto& each : {first, second, third}) {
        EXPECT_EQ(each->added, std::vector{list.get()});
    }
}

TEST_F(TrackerBlockerTest, AWindowAfterTheCompileGetsTheListAtOnce) {
    blocker.install(controller());
    const auto list = lists.succeed();
    const Controller later = controller();

    blocker.install(later);

    EXPECT_EQ(later->added, std::vector{list.get()});
    EXPECT_EQ(lists.sources.size(), 1U);
}

TEST_F(TrackerBlockerTest, AfterAFailedCompileTheNextWindowTriesAnewForItselfAlone) {
    const Controller unlucky = controller();
    blocker.install(unlucky);
    lists.fail();
    const Controller next = controller();

    blocker.install(next);
    const auto list = lists.succeed();

    EXPECT_EQ(lists.sources.size(), 2U);
    EXPECT_EQ(next->added, std::vector{list.get()});
    EXPECT_TRUE(unlucky->added.empty());
}

TEST_F(TrackerBlockerTest, WhatWasPreparedServesTheFirstWindowWithoutASecondCompile) {
    blocker.prepare();
    blocker.prepare();
    const Controller during = controller();
    blocker.install(during);
    const auto list = lists.succeed();
    const Controller after = controller();
    blocker.install(after);
    blocker.prepare();

    EXPECT_EQ(lists.sources.size(), 1U);
    EXPECT_EQ(during->added, std::vector{list.get()});
    EXPECT_EQ(after->added, std::vector{list.get()});
}

TEST_F(TrackerBlockerTest, AFailedPreparationIsTriedAgainByTheFirstWindow) {
    blocker.prepare();
    lists.fail();
    const Controller first = controller();

    blocker.install(first);
    const auto list = lists.succeed();

    EXPECT_EQ(first->added, std::vector{list.get()});
}

TEST_F(TrackerBlockerTest, ACompileThatEndsAfterTheBlockerHasNobodyToTell) {
    const Controller waiting = controller();
    {
        TrackerBlocker brief{lists};
        brief.install(waiting);
    }

    lists.succeed();

    EXPECT_TRUE(waiting->added.empty());
}

class TrackerSettingTest : public StoreTest {};

TEST_F(TrackerSettingTest, EveryWindowGetsTheRulesPrivateOnesToo) {
    const auto ordinary = openStore();
    const auto hidden = openPrivateStore();

    const auto list = world.ruleLists.succeed();

    ASSERT_EQ(world.engine.contents.size(), 2U);
    for (const auto& content : world.engine.contents) {
        EXPECT_EQ(content->added, std::vector{list.get()});
    }
}

TEST_F(TrackerSettingTest, SwitchedOffANewWindowHasNoRulesAndAnOpenOneKeepsIts) {
    const auto before = openStore();
    world.ruleLists.succeed();
    world.defaults.setBoolean("blockTrackers", false);

    const auto after = openStore();

    ASSERT_EQ(world.engine.contents.size(), 2U);
    EXPECT_EQ(world.engine.contents[0]->added.size(), 1U);
    EXPECT_TRUE(world.engine.contents[1]->added.empty());
}

TEST_F(TrackerSettingTest, SwitchedOnAWindowThatIsOpenStaysWithoutRules) {
    world.defaults.setBoolean("blockTrackers", false);
    const auto before = openStore();
    world.defaults.setBoolean("blockTrackers", true);
    const auto after = openStore();

    world.ruleLists.succeed();

    EXPECT_TRUE(world.engine.contents[0]->added.empty());
    EXPECT_EQ(world.engine.contents[1]->added.size(), 1U);
}

}  // namespace
}  // namespace orvu

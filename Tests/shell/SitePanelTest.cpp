#include "shell/siteinfo/SitePanel.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

using Choice = SitePermissions::Choice;
using Names = std::vector<std::string>;

class SitePanelTest : public StoreTest {
protected:
    static constexpr auto www = "https://www.a.example/x";

    /// Shows a store's tab in front in the panel.
    void follow(const BrowserStore& store) { panel.setTab(store.active()); }
    /// Lets the engine read and remove the records of the window made last.
    void answerRecords(const Names& names) {
        data().readings.back().resolve(names);
        if (!data().removals.empty()) data().removals.back().resolve(true);
        while (world.loop.runIdle()) {
        }
    }
    [[nodiscard]] FakeWebsiteData& data() { return *world.engine.data.back(); }
    [[nodiscard]] static Strings calls(BrowserTab& tab) { return page(tab).calls; }

    SitePanel panel{world.permissions, Persistence::persistent};
};

TEST_F(SitePanelTest, WithoutATabOrAPageThereIsNoSite) {
    EXPECT_EQ(panel.security(), SiteSecurity::none);
    const auto store = openStore();

    follow(*store);

    EXPECT_EQ(panel.security(), SiteSecurity::none);
    EXPECT_EQ(panel.site(), "");
    EXPECT_FALSE(panel.canClear());
}

TEST_F(SitePanelTest, ASiteIsCalledByItsHostWithoutWww) {
    const auto store = openStoreWith({www});

    follow(*store);

    EXPECT_EQ(panel.site(), "a.example");
    EXPECT_EQ(panel.security(), SiteSecurity::insecure);
    page(*store->active()).setSecure(true);
    EXPECT_EQ(panel.security(), SiteSecurity::secure);
}

TEST_F(SitePanelTest, AChoiceIsKeptUnderTheHostWithoutWww) {
    const auto store = openStoreWith({www});
    follow(*store);
    const ChangeCounter changes{panel};

    panel.choose(Choice::allow, CaptureKind::camera);

    EXPECT_EQ(world.stored("orvuSitePermissions"), R"({"a.example|camera":"allow"})");
    EXPECT_EQ(panel.choice(CaptureKind::camera), Choice::allow);
    EXPECT_EQ(panel.choice(CaptureKind::microphone), Choice::ask);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(SitePanelTest, AChoiceOnAPageWithWwwDoesNotApplyToItsOwnRequests) {
    const auto store = openStoreWith({www});
    follow(*store);
    panel.choose(Choice::allow, CaptureKind::camera);

    store->active()->requestMediaCapture({MediaCaptureType::camera, "www.a.example", [](auto) {}});

    EXPECT_TRUE(store->active()->captureQuestion());
}

TEST_F(SitePanelTest, WithoutAHostTheEmptyTextIsTheHost) {
    const auto store = openStoreWith({"about:blank"});
    follow(*store);

    panel.choose(Choice::block, CaptureKind::microphone);

    EXPECT_EQ(world.stored("orvuSitePermissions"), R"({"|microphone":"block"})");
}

TEST_F(SitePanelTest, ABlockEndsWhatThePageCapturesEvenBelowWww) {
    const auto store = openStoreWith({www});
    follow(*store);

    panel.choose(Choice::block, CaptureKind::microphone);

    EXPECT_EQ(calls(*store->active()).back(), "stop microphone");
}

TEST_F(SitePanelTest, WhatIsChosenInAPrivateWindowIsNotWritten) {
    const auto store = openPrivateStore();
    store->open(a, NewTab::no);
    SitePanel privately{store->permissions(), store->persistence()};
    privately.setTab(store->active());
    world.defaults.written.clear();

    privately.choose(Choice::allow, CaptureKind::camera);

    EXPECT_EQ(privately.choice(CaptureKind::camera), Choice::allow);
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(SitePanelTest, ClearingDataRemovesTheRecordsOfTheSiteAndThenReloadsThePage) {
    const auto store = openStoreWith({www});
    follow(*store);
    const ChangeCounter changes{panel};

    panel.clearSiteData();
    EXPECT_FALSE(panel.isCleared());
    answerRecords({"a.example", "b.example", "x.a.example", "example"});

    EXPECT_EQ(data().removed, (std::vector<Names>{{"a.example", "x.a.example", "example"}}));
    EXPECT_EQ(calls(*store->active()).back(), "reload");
    EXPECT_TRUE(panel.isCleared());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(SitePanelTest, OnlyTheDataOfTheTabsOwnStoreAreTouched) {
    const auto home = openStoreWith({a});
    const auto office = std::make_unique<BrowserStore>(world.services, false, world.work);
    follow(*home);

    panel.clearSiteData();

    EXPECT_EQ(world.engine.data.front()->readings.size(), 1u);
    EXPECT_TRUE(world.engine.data.back()->readings.empty());
}

TEST_F(SitePanelTest, WithoutRecordsThePageIsReloadedAndTheDataCountAsCleared) {
    const auto store = openStoreWith({a});
    follow(*store);

    panel.clearSiteData();
    answerRecords({});

    EXPECT_TRUE(data().removed.empty());
    EXPECT_EQ(calls(*store->active()).back(), "reload");
    EXPECT_TRUE(panel.isCleared());
}

TEST_F(SitePanelTest, APageWithoutAHostClearsNothing) {
    const auto store = openStoreWith({"file:///tmp/page.html"});
    follow(*store);

    panel.clearSiteData();

    EXPECT_TRUE(data().readings.empty());
    EXPECT_FALSE(panel.isCleared());
}

TEST_F(SitePanelTest, ClearedIsSaidOfThatSiteInThatTabAlone) {
    const auto store = openStoreWith({b, a});
    follow(*store);
    panel.clearSiteData();
    answerRecords({"a.example"});

    page(*store->active()).setUrl(url(c));
    EXPECT_FALSE(panel.isCleared());
    page(*store->active()).setUrl(url(a));
    EXPECT_TRUE(panel.isCleared());
    EXPECT_TRUE(panel.setTab(tabAt(*store, b)));
    EXPECT_TRUE(panel.setTab(tabAt(*store, a)));

    EXPECT_FALSE(panel.isCleared());
}

TEST_F(SitePanelTest, TheDataGoEvenIfTheTabIsClosedMeanwhile) {
    const auto store = openStoreWith({b, a});
    follow(*store);
    panel.clearSiteData();
    store->close(*store->active());

    answerRecords({"a.example"});

    EXPECT_EQ(data().removed, (std::vector<Names>{{"a.example"}}));
}

TEST_F(SitePanelTest, APageOfAnotherSiteIsNotReloaded) {
    const auto store = openStoreWith({a});
    follow(*store);
    panel.clearSiteData();
    page(*store->active()).setUrl(url(b));

    answerRecords({"a.example"});

    EXPECT_EQ(calls(*store->active()), Strings{"load https://a.example/"});
}

TEST_F(SitePanelTest, ThePanelMayGoWhileDataAreRead) {
    const auto store = openStoreWith({a});
    {
        SitePanel brief{world.permissions, Persistence::persistent};
        brief.setTab(store->active());
        brief.clearSiteData();
    }

    answerRecords({"a.example"});

    EXPECT_TRUE(data().removed.empty());
}

/// A tab whose page asks for the camera.
class TabCaptureTest : public StoreTest {
protected:
    using Answer = MediaCaptureRequest::Answer;

    void ask(BrowserTab& tab, const std::string& host,
             MediaCaptureType type = MediaCaptureType::camera) {
        page(tab).delegate()->requestMediaCapture(
            {type, host, [this](Answer answer) { answers.push_back(answer); }});
    }
    void choose(Choice choice, CaptureKind kind, const std::string& host) {
        world.permissions.set(choice, kind, host, Persistence::persistent);
    }
    [[nodiscard]] static long stops(BrowserTab& tab, const std::string& kind) {
        return std::ranges::count(page(tab).calls, "stop " + kind);
    }

    std::vector<Answer> answers;
};

TEST_F(TabCaptureTest, TheTabHoldsTheQuestionUntilItIsAnswered) {
    const auto store = openStoreWith({a});
    const ChangeCounter changes{*store->active()};

    ask(*store->active(), "a.example");
    ASSERT_EQ(store->active()->captureQuestion(),
              (CaptureQuestion{MediaCaptureType::camera, "a.example"}));
    store->active()->answer(*store->active()->question(), PageAnswer::allow);

    EXPECT_EQ(answers, std::vector{Answer::grant});
    EXPECT_EQ(store->active()->captureQuestion(), std::nullopt);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(TabCaptureTest, ANewDocumentDropsTheQuestion) {
    const auto store = openStoreWith({a});
    ask(*store->active(), "a.example");

    page(*store->active()).delegate()->documentUnloaded();

    EXPECT_EQ(answers, std::vector{Answer::deny});
    EXPECT_EQ(store->active()->captureQuestion(), std::nullopt);
}

TEST_F(TabCaptureTest, AClosedTabDeniesWhatItAsked) {
    const auto store = openStoreWith({b, a});
    ask(*store->active(), "a.example");

    store->close(*store->active());

    EXPECT_EQ(answers, std::vector{Answer::deny});
}

TEST_F(TabCaptureTest, ABlockStopsEveryOpenTabOfTheHostAtOnceInAnyWindow) {
    const auto first = openStoreWith({a, b});
    const auto second = openStore();
    second->newTab(url(a), Select::yes);
    choose(Choice::allow, CaptureKind::camera, "a.example");
    choose(Choice::allow, CaptureKind::camera, "b.example");
    ask(*tabAt(*first, a), "a.example");
    ask(*tabAt(*first, b), "b.example");
    ask(*tabAt(*second, a), "a.example");
    ASSERT_EQ(answers, std::vector(3, Answer::grant));

    choose(Choice::block, CaptureKind::camera, "a.example");

    EXPECT_EQ(stops(*tabAt(*first, a), "camera"), 1);
    EXPECT_EQ(stops(*tabAt(*second, a), "camera"), 1);
    EXPECT_EQ(stops(*tabAt(*first, b), "camera"), 0);
    EXPECT_EQ(stops(*tabAt(*first, a), "microphone"), 0);
}

TEST_F(TabCaptureTest, AChoiceAnswersTheQuestionOfEveryTabOfTheHost) {
    const auto store = openStoreWith({a, b});
    ask(*tabAt(*store, a), "a.example");
    ask(*tabAt(*store, b), "b.example");

    choose(Choice::allow, CaptureKind::camera, "a.example");

    EXPECT_EQ(answers, std::vector{Answer::grant});
    EXPECT_TRUE(tabAt(*store, b)->captureQuestion());
}

TEST_F(TabCaptureTest, ABlockInAPrivateWindowLeavesOthersAlone) {
    const auto ordinary = openStoreWith({a});
    const auto privately = openPrivateStore();
    privately->open(a, NewTab::no);
    choose(Choice::allow, CaptureKind::camera, "a.example");
    ask(*ordinary->active(), "a.example");
    ask(*privately->active(), "a.example");

    world.permissions.set(Choice::block, CaptureKind::camera, "a.example", Persistence::ephemeral);

    EXPECT_EQ(stops(*privately->active(), "camera"), 1);
    EXPECT_EQ(stops(*ordinary->active(), "camera"), 0);
}

TEST_F(TabCaptureTest, ChoicesAreSharedByAllProfiles) {
    const auto office = std::make_unique<BrowserStore>(world.services, false, world.work);
    office->open(a, NewTab::no);
    choose(Choice::allow, CaptureKind::camera, "a.example");

    ask(*office->active(), "a.example");

    EXPECT_EQ(answers, std::vector{Answer::grant});
    EXPECT_TRUE(world.defaults.hasObject("orvuSitePermissions"));
}

TEST_F(SitePanelTest, WhatThePageWasRefusedIsSaidUntilItsDocumentGoes) {
    const auto store = openStoreWith({b, a});
    EXPECT_FALSE(panel.isRefused(RefusedPermission::location));
    follow(*store);
    store->active()->permissionRefused(RefusedPermission::location);

    EXPECT_TRUE(panel.isRefused(RefusedPermission::location));
    EXPECT_FALSE(panel.isRefused(RefusedPermission::clipboard));
    store->select(*tabAt(*store, b));
    follow(*store);
    EXPECT_FALSE(panel.isRefused(RefusedPermission::location));
    store->select(*tabAt(*store, a));
    follow(*store);
    store->active()->documentUnloaded();

    EXPECT_FALSE(panel.isRefused(RefusedPermission::location));
}

}  // namespace
}  // namespace orvu

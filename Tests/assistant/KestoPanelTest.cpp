#include "assistant/KestoPanel.h"

#include "assistant/PageReading.h"
#include "support/StoreWorld.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvu {
namespace {

using testing::HasSubstr;
using testing::Not;
using Kind = Kesto::Phase::Kind;

class KestoPanelTest : public StoreTest {
protected:
    void openIn(std::unique_ptr<BrowserStore> opened) {
        panel.reset();
        store = std::move(opened);
        openPanel();
    }
    void openPanel() {
        panel.emplace(store, kesto, skills, world.services.settings(), pending,
                      [this] { panel.reset(); });
    }
    /// Pages with these titles, the last one in front.
    void openTitled(const Strings& titles) {
        auto opened = openStoreWith(addressesOf(titles));
        for (std::size_t each = 0; each < titles.size(); ++each) {
            page(*opened->tabs()[each]).setTitle(titles[each]);
        }
        openIn(std::move(opened));
    }
    [[nodiscard]] static Strings addressesOf(const Strings& titles) {
        Strings result;
        for (std::size_t each = 0; each < titles.size(); ++each) {
            result.push_back(numbered(static_cast<int>(each)));
        }
        return result;
    }
    [[nodiscard]] static Strings titles(const BrowserStore::TabList& tabs) {
        Strings result;
        for (const auto& tab : tabs) result.push_back(tab->title());
        return result;
    }
    [[nodiscard]] BrowserTab& tab(std::size_t number) const { return *store->tabs()[number]; }
    /// The page tells its text, as it was asked to.
    static void tell(BrowserTab& tab, const std::string& text) {
        ASSERT_FALSE(page(tab).answers.empty());
        page(tab).answers.back().resolve({ScriptResult::Kind::text, text});
    }
    void type(const std::string& text) { panel->text.set(text); }
    void submit(const std::string& text) {
        type(text);
        panel->submit();
    }
    [[nodiscard]] std::string asked() const {
        return world.model.requests.empty() ? "" : world.model.requests.back().prompt;
    }

    Kesto kesto{world.model};
    SkillStore skills{world.defaults};
    Observable<std::optional<std::string>> pending;
    std::shared_ptr<BrowserStore> store;
    std::optional<KestoPanel> panel;
};

// --- The greeting ------------------------------------------------------------------------------

TEST_F(KestoPanelTest, TheGreetingNamesThePageInFront) {
    openTitled({"One", "Two"});

    EXPECT_EQ(panel->intro(),
              "I can read “Two” when you ask. Type @ to add other tabs. Everything stays on this "
              "Mac.");
    EXPECT_EQ(panel->lastQuestion(), "");
    EXPECT_EQ(panel->prompt(), "Ask, @ a tab, or / for skills");
    EXPECT_EQ(panel->mood(), Mood::happy);
}

TEST_F(KestoPanelTest, OnAnEmptyTabTheGreetingNamesNoPage) {
    openIn(openStore());

    EXPECT_EQ(panel->intro(), "Ask me anything, or type @ to bring in a tab.");
}

TEST_F(KestoPanelTest, APrivateWindowSaysThatItReadsNoPages) {
    openIn(openPrivateStore());
    store->newTab(url(a), Select::yes);

    EXPECT_EQ(panel->intro(),
              "This is a private window, so I don't read pages. Ask me anything else.");
    EXPECT_EQ(panel->prompt(), "Ask anything");
}

TEST_F(KestoPanelTest, TheGreetingDoesNotLookAtTheSettingForPages) {
    world.services.settings().kestoReadsPages.set(false);
    openTitled({"One"});

    EXPECT_THAT(panel->intro(), HasSubstr("I can read “One”"));
}

// --- What is typed -----------------------------------------------------------------------------

TEST_F(KestoPanelTest, ASlashAtTheFrontOpensTheSkillsAsLongAsItIsOneWord) {
    openTitled({"One"});
    const std::vector<std::pair<std::string, std::optional<std::string>>> queries{
        {"", std::nullopt},      {"/", ""},
        {"/su", "su"},           {"/sum now", std::nullopt},
        {" /sum", std::nullopt}, {"a/b", std::nullopt},
        {"/a/b", "a/b"},         {"/\u0338x", std::nullopt}};
    for (const auto& [text, query] : queries) {
        type(text);
        EXPECT_EQ(panel->skillQuery(), query) << text;
        EXPECT_EQ(panel->menu() == KestoPanel::Menu::skills, query.has_value()) << text;
    }
}

TEST_F(KestoPanelTest, AnAtSignThatBeginsAWordOpensTheTabs) {
    openTitled({"One"});
    const std::vector<std::pair<std::string, std::optional<std::string>>> queries{
        {"mail me@site", std::nullopt},
        {"mail @site", "site"},
        {"@", ""},
        {"@new york", "new york"},
        {"@a @b", "b"},
        {"@a x@b", std::nullopt},
        {"a\t@b", std::nullopt},
        {"@\u0338b", std::nullopt}};
    for (const auto& [text, query] : queries) {
        type(text);
        EXPECT_EQ(panel->mentionQuery(), query) << text;
        EXPECT_EQ(panel->menu() == KestoPanel::Menu::mentions, query.has_value()) << text;
    }
}

TEST_F(KestoPanelTest, TheSkillsComeBeforeTheTabsAndTheFormBeforeBoth) {
    openTitled({"One"});
    type("/@x");
    EXPECT_EQ(panel->menu(), KestoPanel::Menu::skills);

    panel->makingSkill.set(true);
    EXPECT_EQ(panel->menu(), KestoPanel::Menu::newSkill);
}

TEST_F(KestoPanelTest, APrivateWindowNeverShowsTheTabs) {
    openIn(openPrivateStore());
    type("@");

    EXPECT_EQ(panel->menu(), KestoPanel::Menu::none);
}

TEST_F(KestoPanelTest, ABlankTextCantBeSent) {
    openTitled({"One"});
    for (const std::string text : {"", " ", "\t\u00a0"}) {
        type(text);
        EXPECT_FALSE(panel->canSend());
        panel->submit();
        EXPECT_EQ(panel->lastQuestion(), "");
        EXPECT_EQ(panel->text.get(), text);
    }
    type(" x ");
    EXPECT_TRUE(panel->canSend());
}

// --- Mentions ----------------------------------------------------------------------------------

TEST_F(KestoPanelTest, OtherTabsWithAPageCanBeMentioned) {
    openTitled({"Alpha", "Beta", "Gamma"});
    store->newTab(std::nullopt, Select::no);

    EXPECT_EQ(titles(panel->mentionable("")), (Strings{"Alpha", "Beta"}));
    panel->mention(tab(0));
    EXPECT_EQ(titles(panel->mentionable("")), Strings{"Beta"});
    EXPECT_EQ(titles(panel->mentionedTabs()), Strings{"Alpha"});
}

TEST_F(KestoPanelTest, AQueryMatchesTitlesInAnyCaseAndHostsWithoutWww) {
    auto opened = openStoreWith({"https://www.new.example/", "https://b.example/", a});
    page(*opened->tabs()[1]).setTitle("New York");
    openIn(std::move(opened));

    EXPECT_EQ(panel->mentionable("NEW").size(), 2U);
    EXPECT_EQ(panel->mentionable("new y").size(), 1U);
    EXPECT_EQ(panel->mentionable("www").size(), 0U);
    EXPECT_EQ(panel->mentionable("nothing").size(), 0U);
}

TEST_F(KestoPanelTest, SevenMatchingTabsOfferSix) {
    openTitled({"x1", "x2", "x3", "x4", "x5", "x6", "x7", "front"});

    EXPECT_EQ(titles(panel->mentionable("x")), (Strings{"x1", "x2", "x3", "x4", "x5", "x6"}));
}

TEST_F(KestoPanelTest, AMentionTakesTheQueryOutOfTheTextAndAsksForTheKeyboard) {
    openTitled({"Alpha", "Beta"});
    EXPECT_FALSE(panel->inputFocused.get());

    submit("compare with @alp");

    EXPECT_EQ(panel->text.get(), "compare with ");
    EXPECT_EQ(titles(panel->mentionedTabs()), Strings{"Alpha"});
    EXPECT_TRUE(panel->inputFocused.get());
    EXPECT_TRUE(world.model.requests.empty());
}

TEST_F(KestoPanelTest, AMentionWithoutAnAtSignLeavesTheText) {
    openTitled({"Alpha", "Beta"});
    type("text");

    panel->mention(tab(0));

    EXPECT_EQ(panel->text.get(), "text");
}

TEST_F(KestoPanelTest, AMentionedTabThatWasClosedDropsOut) {
    openTitled({"Alpha", "Beta"});
    panel->mention(tab(0));

    store->close(tab(0));

    EXPECT_TRUE(panel->mentionedTabs().empty());
}

TEST_F(KestoPanelTest, AMentionCanBeTakenBack) {
    openTitled({"Alpha", "Beta", "Gamma"});
    panel->mention(tab(0));
    panel->mention(tab(1));
    panel->mention(tab(0));

    panel->removeMention(tab(0));

    EXPECT_EQ(titles(panel->mentionedTabs()), Strings{"Beta"});
}

// --- Asking ------------------------------------------------------------------------------------

TEST_F(KestoPanelTest, AQuestionGoesWithThePageInFront) {
    openTitled({"One", "Two"});

    submit("  Why?\n");

    EXPECT_EQ(panel->lastQuestion(), "Why?");
    EXPECT_EQ(panel->text.get(), "");
    EXPECT_TRUE(world.model.requests.empty());
    EXPECT_EQ(kesto.phase().kind, Kind::idle);
    EXPECT_EQ(panel->reply(), KestoPanel::Reply::dots);
    tell(tab(1), "text of two");

    EXPECT_EQ(asked(), Kesto::prompt("Why?", {{"Two", numbered(1), "text of two"}}));
    EXPECT_EQ(kesto.phase().kind, Kind::thinking);
    EXPECT_EQ(panel->mood(), Mood::thinking);
}

TEST_F(KestoPanelTest, OnAnEmptyTabAQuestionGoesAlone) {
    openIn(openStore());

    submit("Why?");

    EXPECT_EQ(asked(), "Why?");
}

TEST_F(KestoPanelTest, InAPairBothPagesGoInTheOneInFrontFirstAndThenTheMentioned) {
    openTitled({"One", "Two", "Three"});
    store->openSideBySide(tab(0));
    ASSERT_EQ(front(*store), numbered(0));
    panel->mention(tab(1));
    panel->mention(tab(0));

    submit("Why?");
    tell(tab(0), "1");
    tell(tab(2), "3");
    EXPECT_TRUE(world.model.requests.empty());
    tell(tab(1), "2");

    EXPECT_EQ(asked(), Kesto::prompt("Why?", {{"One", numbered(0), "1"},
                                              {"Three", numbered(2), "3"},
                                              {"Two", numbered(1), "2"}}));
    EXPECT_EQ(kesto.sources(), (Strings{"One", "Three", "Two"}));
    EXPECT_TRUE(panel->mentions().empty());
}

TEST_F(KestoPanelTest, WithTheSettingOffNoPageIsReadAndTheMentionsGo) {
    openTitled({"One", "Two"});
    world.services.settings().kestoReadsPages.set(false);
    panel->mention(tab(0));

    submit("Why?");

    EXPECT_EQ(asked(), "Why?");
    EXPECT_TRUE(page(tab(0)).scripts.empty());
    EXPECT_TRUE(page(tab(1)).scripts.empty());
    EXPECT_TRUE(panel->mentions().empty());
    EXPECT_TRUE(kesto.sources().empty());
}

TEST_F(KestoPanelTest, APrivateWindowSendsNoPageByAnyRoad) {
    openIn(openPrivateStore());
    store->newTab(url(a), Select::yes);
    store->newTab(url(b), Select::yes);
    for (const auto& tab : store->tabs()) page(*tab).setTitle("CANARY");
    store->openSideBySide(tab(1));
    panel->mention(tab(1));

    submit("@CANARY");
    submit("Why?");
    panel->run(SkillStore::builtIn().front());
    pending.set("Handed in?");

    ASSERT_EQ(world.model.requests.size(), 4U);
    for (const auto& request : world.model.requests) {
        EXPECT_THAT(request.prompt, Not(HasSubstr("<pages>")));
        EXPECT_THAT(request.prompt, Not(HasSubstr(".example")));
    }
    for (const auto& tab : store->tabs()) EXPECT_TRUE(page(*tab).scripts.empty());
}

TEST_F(KestoPanelTest, ReturnRunsTheFirstSkillThatMatches) {
    openIn(openStore());

    submit("/su");

    EXPECT_EQ(asked(), "Sum up the page in three short lines.");
    EXPECT_EQ(panel->lastQuestion(), "/sum · Sum up the page in three short lines.");
}

TEST_F(KestoPanelTest, ASlashWithoutAMatchIsAQuestion) {
    openIn(openStore());
    submit("/xy");
    EXPECT_EQ(asked(), "/xy");

    submit("/sum now");
    EXPECT_EQ(asked(), "/sum now");
    EXPECT_EQ(panel->lastQuestion(), "/sum now");
}

TEST_F(KestoPanelTest, AnAtSignWithoutAMatchIsAQuestion) {
    openIn(openStore());

    submit("@nobody");

    EXPECT_EQ(asked(), "@nobody");
}

TEST_F(KestoPanelTest, TheFormerAnswerIsNotShownWhileThePagesAreRead) {
    openTitled({"One"});
    submit("First?");
    tell(tab(0), "1");
    world.model.requests[0].succeed("first");
    EXPECT_EQ(panel->reply(), KestoPanel::Reply::answer);

    submit("Second?");

    EXPECT_EQ(panel->reply(), KestoPanel::Reply::dots);
    tell(tab(0), "1");
    EXPECT_EQ(panel->reply(), KestoPanel::Reply::dots);
    world.model.requests[1].fail("It stopped.");
    EXPECT_EQ(panel->reply(), KestoPanel::Reply::error);
    EXPECT_EQ(panel->mood(), Mood::surprised);
}

TEST_F(KestoPanelTest, APageThatCantBeReadGoesWithTitleAndAddress) {
    openTitled({"One"});
    submit("Why?");

    page(tab(0)).answers.back().resolve({ScriptResult::Kind::failed, ""});

    EXPECT_EQ(asked(), Kesto::prompt("Why?", {{"One", numbered(0), ""}}));
}

TEST_F(KestoPanelTest, APageThatIsBusyForLongGoesWithoutItsText) {
    openTitled({"One", "Two"});
    panel->mention(tab(0));
    submit("Why?");

    world.loop.advance(pageTextPatience);
    tell(tab(0), "1");

    EXPECT_EQ(asked(),
              Kesto::prompt("Why?", {{"Two", numbered(1), ""}, {"One", numbered(0), "1"}}));
    tell(tab(1), "late");
    EXPECT_EQ(world.model.requests.size(), 1U);
}

TEST_F(KestoPanelTest, ATabThatIsClosedWhileItIsReadHoldsNothingUp) {
    openTitled({"One", "Two"});
    panel->mention(tab(0));
    submit("Why?");
    store->close(tab(0));
    store->close(tab(0));

    world.loop.advance(pageTextPatience);

    EXPECT_EQ(asked(), Kesto::prompt("Why?", {{"Two", numbered(1), ""}}));
}

TEST_F(KestoPanelTest, OfTwoQuestionsTheOneWhosePagesComeLastIsAnswered) {
    openTitled({"One"});
    submit("First?");
    auto first = page(tab(0)).answers.back();
    submit("Second?");
    tell(tab(0), "1");
    EXPECT_THAT(asked(), HasSubstr("Second?"));

    first.resolve({ScriptResult::Kind::text, "1"});

    EXPECT_THAT(asked(), HasSubstr("First?"));
    EXPECT_EQ(panel->lastQuestion(), "Second?");
}

TEST_F(KestoPanelTest, AQuestionGoesOnWhenThePanelCloses) {
    openTitled({"One"});
    submit("Why?");
    panel->close();
    EXPECT_FALSE(panel);

    tell(tab(0), "1");

    EXPECT_THAT(asked(), HasSubstr("Why?"));
}

TEST_F(KestoPanelTest, AQuestionEndsWithItsWindow) {
    openTitled({"One"});
    submit("Why?");
    panel.reset();
    store.reset();

    world.loop.advance(pageTextPatience);

    EXPECT_TRUE(world.model.requests.empty());
    EXPECT_EQ(kesto.phase().kind, Kind::idle);
}

TEST_F(KestoPanelTest, AfterReopeningItGreetsThoughTheAnswerIsKept) {
    openIn(openStore());
    submit("Why?");
    world.model.requests[0].succeed("Because.");
    panel->close();

    openPanel();

    EXPECT_EQ(panel->lastQuestion(), "");
    EXPECT_EQ(kesto.answer(), "Because.");
    submit("Again?");
    EXPECT_EQ(kesto.answer(), "");
}

// --- Questions from elsewhere ------------------------------------------------------------------

TEST_F(KestoPanelTest, AQuestionHandedInWhileClosedIsAskedWhenItOpens) {
    store = openStore();
    pending.set("Why?");
    EXPECT_TRUE(world.model.requests.empty());

    openPanel();

    EXPECT_EQ(asked(), "Why?");
    EXPECT_EQ(panel->lastQuestion(), "Why?");
    EXPECT_EQ(pending.get(), std::nullopt);
}

TEST_F(KestoPanelTest, AQuestionHandedInWhileOpenIsAskedAtOnce) {
    openIn(openStore());
    pending.set("");
    EXPECT_EQ(panel->lastQuestion(), "");

    pending.set("/sum");

    EXPECT_EQ(asked(), "/sum");
}

// --- New skills --------------------------------------------------------------------------------

TEST_F(KestoPanelTest, ASavedSkillEndsTheFormAndEmptiesItsFields) {
    openTitled({"One"});
    type("/new");
    panel->makingSkill.set(true);
    panel->skillName.set("mine");
    EXPECT_FALSE(panel->canSaveSkill());
    panel->skillInstruction.set("Do it.");
    EXPECT_TRUE(panel->canSaveSkill());

    panel->saveSkill();

    EXPECT_EQ(skills.custom().size(), 1U);
    EXPECT_FALSE(panel->makingSkill.get());
    EXPECT_EQ(panel->skillName.get() + panel->skillInstruction.get() + panel->text.get(), "");
}

TEST_F(KestoPanelTest, ARefusedSkillLeavesTheFormOpen) {
    openTitled({"One"});
    panel->makingSkill.set(true);
    panel->skillName.set("sum");
    panel->skillInstruction.set("Do it.");

    panel->saveSkill();

    EXPECT_TRUE(panel->makingSkill.get());
    EXPECT_EQ(panel->skillName.get(), "sum");
}

TEST_F(KestoPanelTest, EscapeEndsTheFormAndOtherwisePassesOn) {
    openTitled({"One"});
    EXPECT_FALSE(panel->cancelSkill());
    panel->makingSkill.set(true);
    panel->skillName.set("mine");

    EXPECT_TRUE(panel->cancelSkill());

    EXPECT_FALSE(panel->makingSkill.get());
    EXPECT_EQ(panel->skillName.get(), "mine");
}

TEST_F(KestoPanelTest, ASkillOfOneProfilesWindowIsOfferedInEveryOther) {
    openIn(openStore());
    auto other = std::make_shared<BrowserStore>(world.services, false, world.work);
    KestoPanel second{other, kesto, skills, world.services.settings(), pending, [] {}};
    int heard = 0;
    second.connectChanged([&] { ++heard; });

    skills.add("mine", "Do it.");

    EXPECT_GT(heard, 0);
    EXPECT_EQ(second.skills().matching("mi").size(), 1U);
}

TEST_F(KestoPanelTest, AQuestionInOneWindowReplacesTheAnswerInEveryOther) {
    openIn(openStore());
    const std::shared_ptr<BrowserStore> other = openStore();
    Observable<std::optional<std::string>> otherPending;
    KestoPanel second{other, kesto, skills, world.services.settings(), otherPending, [] {}};
    submit("First?");
    world.model.requests[0].succeed("first");

    second.send("Second?", std::nullopt);

    EXPECT_EQ(panel->reply(), KestoPanel::Reply::dots);
    EXPECT_EQ(panel->lastQuestion(), "First?");
    world.model.requests[1].succeed("second");
    EXPECT_EQ(panel->reply(), KestoPanel::Reply::answer);
}

TEST_F(KestoPanelTest, AnObserverMayCloseThePanelAtTheQuestion) {
    openIn(openStore());
    panel->connectChanged([this] {
        if (panel && !panel->lastQuestion().empty()) panel.reset();
    });

    submit("Why?");

    EXPECT_FALSE(panel);
    EXPECT_EQ(asked(), "Why?");
}

}  // namespace
}  // namespace orvu

#include "notch/AddressNotchBody.h"

#include "support/NotchBodyWorld.h"

namespace orvu {
namespace {

class AddressNotchBodyTest : public NotchBodyTest {
protected:
    /// A window with two pages in its history and three tabs; the last of them is in front.
    void SetUp() override {
        visit(*store->active(), "https://bees.example/", "On bees");
        store->newTab(url("https://maps.example/"), Select::yes);
        visit(*store->active(), "https://maps.example/", "On maps");
        store->newTab(std::nullopt, Select::yes);
        makeBody();
    }
    /// Closes and opens the notch with `text`, and types it.
    void openAndType(const std::string& text) {
        notch.open("");
        type(text);
    }
};

TEST_F(AddressNotchBodyTest, BodyOfTheNextTabBeginsWithoutTheRowsOfThePrevious) {
    notch.open("");
    ASSERT_FALSE(body->entries().empty());
    notch.close();

    makeBody();

    EXPECT_TRUE(body->entries().empty());
}

TEST_F(AddressNotchBodyTest, ReturnWithoutAChosenRowRunsThePrimaryRow) {
    openAndType("be");
    ASSERT_EQ(body->candidates().primaryTitle(), "Go to bees.example");

    EXPECT_TRUE(body->press(NotchKey::enter));

    EXPECT_EQ(front(*store), "https://bees.example");
    EXPECT_FALSE(notch.isOpen());
}

TEST_F(AddressNotchBodyTest, ARowThatIsGoneToClosesTheLibrary) {
    store->setLibrarySection(LibrarySection::history);
    openAndType("be");

    EXPECT_TRUE(body->press(NotchKey::enter));

    EXPECT_EQ(front(*store), "https://bees.example");
    EXPECT_FALSE(store->librarySection());
}

TEST_F(AddressNotchBodyTest, ReturnAfterDownArrowRunsTheFirstEntry) {
    openAndType("maps");
    const auto tab = tabAt(*store, "https://maps.example/");
    ASSERT_EQ(body->entries().front().action, NotchAction{SwitchToTab{tab->id()}});

    body->press(NotchKey::downArrow);
    body->press(NotchKey::enter);

    EXPECT_EQ(store->active(), tab);
    EXPECT_FALSE(notch.isOpen());
}

TEST_F(AddressNotchBodyTest, UpArrowWithoutAChosenRowStays) {
    openAndType("maps");

    EXPECT_TRUE(body->press(NotchKey::upArrow));

    EXPECT_EQ(body->selection(), AddressNotchBody::noSelection);
}

TEST_F(AddressNotchBodyTest, DownArrowAtTheLastRowStays) {
    openAndType("maps");
    const int last = static_cast<int>(body->entries().size()) - 1;
    ASSERT_GE(last, 0);

    for (int press = 0; press < 20; ++press) body->press(NotchKey::downArrow);

    EXPECT_EQ(body->selection(), last);
}

TEST_F(AddressNotchBodyTest, DownArrowInAnEmptyListChoosesNothing) {
    openAndType("nothing has this");
    ASSERT_TRUE(body->entries().empty());

    EXPECT_TRUE(body->press(NotchKey::downArrow));

    EXPECT_EQ(body->selection(), AddressNotchBody::noSelection);
}

TEST_F(AddressNotchBodyTest, TypingDropsTheChoice) {
    openAndType("map");
    body->press(NotchKey::downArrow);
    ASSERT_EQ(body->selection(), 0);

    type("maps");

    EXPECT_EQ(body->selection(), AddressNotchBody::noSelection);
}

TEST_F(AddressNotchBodyTest, TabCompletesAndDoesNotSubmit) {
    openAndType("ma");
    ASSERT_EQ(body->ghost(), "ps.example");

    EXPECT_TRUE(body->press(NotchKey::tab));

    EXPECT_EQ(notch.query(), "maps.example");
    EXPECT_TRUE(notch.isOpen());
    EXPECT_EQ(front(*store), "");
}

TEST_F(AddressNotchBodyTest, SecondTabCompletesFurther) {
    openAndType("bee");
    ASSERT_TRUE(suggestions->answer("bee", {"bee dance", "bee dance of the honeybee"}));
    body->refresh();
    type("bee ");
    type("bee d");
    ASSERT_EQ(body->ghost(), "ance");

    body->press(NotchKey::tab);
    body->setCaretAtEnd(true);
    ASSERT_EQ(notch.query(), "bee dance");
    ASSERT_EQ(body->ghost(), " of the honeybee");
    body->press(NotchKey::rightArrow);

    EXPECT_EQ(notch.query(), "bee dance of the honeybee");
}

TEST_F(AddressNotchBodyTest, TabAndRightArrowWithoutACompletionAreTheTexts) {
    openAndType("nothing has this");

    EXPECT_FALSE(body->press(NotchKey::tab));
    EXPECT_FALSE(body->press(NotchKey::rightArrow));
    EXPECT_EQ(body->keyHint(), "esc");
}

TEST_F(AddressNotchBodyTest, CompletionNeedsTheCaretAtTheEnd) {
    openAndType("ma");
    EXPECT_EQ(body->keyHint(), "tab ⇥");

    body->setCaretAtEnd(false);

    EXPECT_EQ(body->ghost(), "");
    EXPECT_EQ(body->keyHint(), "esc");
    EXPECT_FALSE(body->press(NotchKey::rightArrow));
}

TEST_F(AddressNotchBodyTest, EscapeClosesAndKeepsTheText) {
    openAndType("half a thou");

    EXPECT_TRUE(body->press(NotchKey::escape));
    EXPECT_FALSE(notch.isOpen());
    notch.open();

    EXPECT_EQ(notch.query(), "half a thou");
}

TEST_F(AddressNotchBodyTest, ReturnInAnEmptyFieldDoesNothing) {
    visit(*tabAt(*store, "https://maps.example/"), "https://maps.example/", "On maps");
    openAndType("  ");

    body->press(NotchKey::enter);

    EXPECT_TRUE(notch.isOpen());
    EXPECT_EQ(front(*store), "");
}

TEST_F(AddressNotchBodyTest, CommandReturnAsksWithTheTextAsItStands) {
    Strings asked;
    notch.connectAsked([&](const std::string& text) { asked.push_back(text); });
    openAndType(" why is the sky blue ");

    EXPECT_TRUE(body->press(NotchKey::commandEnter));

    EXPECT_EQ(asked, Strings{" why is the sky blue "});
    EXPECT_EQ(front(*store), "");
}

TEST_F(AddressNotchBodyTest, CommandReturnWithNobodyToAskDoesNothing) {
    openAndType("why");

    EXPECT_TRUE(body->press(NotchKey::commandEnter));

    EXPECT_TRUE(notch.isOpen());
}

TEST_F(AddressNotchBodyTest, OpeningAsksForNoSuggestions) {
    notch.open("why is the sky");
    world.loop.advance(std::chrono::seconds{1});
    EXPECT_EQ(suggestions->asked, Strings{});

    type("why is the sky b");
    world.loop.advance(std::chrono::seconds{1});
    EXPECT_EQ(suggestions->asked, Strings{"why is the sky b"});
}

TEST_F(AddressNotchBodyTest, AnswersToAFormerTextDoNotShowWhenItOpensAnew) {
    openAndType("sky");
    ASSERT_TRUE(suggestions->answer("sky", {"sky blue"}));
    body->refresh();
    ASSERT_EQ(titles(), Strings{"sky blue"});
    notch.close();

    notch.open("https://maps.example/other");

    EXPECT_EQ(titles(), Strings{});
}

TEST_F(AddressNotchBodyTest, AnswersShowAtTheNextRefreshAndNotBefore) {
    openAndType("sky");

    ASSERT_TRUE(suggestions->answer("sky", {"sky blue"}));
    EXPECT_EQ(titles(), Strings{});
    body->refresh();

    EXPECT_EQ(titles(), Strings{"sky blue"});
}

TEST_F(AddressNotchBodyTest, ChosenRowStaysChosenWhenAnswersComeInAboveIt) {
    openAndType("maps");
    body->press(NotchKey::downArrow);
    const Entry chosen = body->entries().front();

    ASSERT_TRUE(suggestions->answer("maps", {"maps of bees", "maps of meadows"}));
    body->refresh();

    ASSERT_EQ(titles().front(), "maps of bees");
    EXPECT_EQ(body->selection(), 2);
    EXPECT_EQ(body->entries()[2], chosen);
}

TEST_F(AddressNotchBodyTest, ChoiceEndsWithItsRow) {
    openAndType("maps");
    body->press(NotchKey::downArrow);

    store->close(*tabAt(*store, "https://maps.example/"));
    body->refresh();

    EXPECT_EQ(body->selection(), AddressNotchBody::noSelection);
}

TEST_F(AddressNotchBodyTest, RowOfATabThatIsGoneOnlyClosesTheNotch) {
    openAndType("maps");
    body->press(NotchKey::downArrow);
    const auto before = store->active();
    store->close(*tabAt(*store, "https://maps.example/"));

    body->press(NotchKey::enter);

    EXPECT_EQ(store->active(), before);
    EXPECT_FALSE(notch.isOpen());
}

TEST_F(AddressNotchBodyTest, DidYouMeanPutsTheTextInAndStaysOpen) {
    openAndType("orgqnisation");
    ASSERT_TRUE(suggestions->answer("orgqnisation", {"organisation of bees"}, "organisation"));
    body->refresh();
    ASSERT_EQ(body->correction(), "organisation");

    body->useCorrection();

    EXPECT_EQ(notch.query(), "organisation");
    EXPECT_TRUE(notch.isOpen());
    EXPECT_EQ(body->correction(), std::nullopt);
}

TEST_F(AddressNotchBodyTest, DidYouMeanKeepsTheBang) {
    openAndType("!w orgqnisation");
    ASSERT_TRUE(suggestions->answer("orgqnisation", {"organisation"}, "organisation"));
    body->refresh();
    ASSERT_EQ(body->correction(), "organisation");

    body->useCorrection();

    EXPECT_EQ(notch.query(), "!w organisation");
}

TEST_F(AddressNotchBodyTest, DidYouMeanIsNotOfferedForATextTypedSince) {
    openAndType("orgqnisation");
    ASSERT_TRUE(suggestions->answer("orgqnisation", {"organisation"}, "organisation"));
    body->refresh();

    type("orgqnisationx");

    EXPECT_EQ(body->correction(), std::nullopt);
}

TEST_F(AddressNotchBodyTest, PrivateWindowAsksNobodyButShowsTheAskRow) {
    store = openPrivateStore();
    body.reset();
    makeBody();
    openAndType("why is the sky");

    world.loop.advance(std::chrono::seconds{1});

    EXPECT_EQ(suggestions->asked, Strings{});
    EXPECT_EQ(body->candidates().footer(), std::nullopt);
    EXPECT_EQ(body->candidates().askTitle(), "Ask Kesto “why is the sky”");
}

TEST_F(AddressNotchBodyTest, EmptyFieldStillHasBothFixedRows) {
    notch.open("");

    EXPECT_EQ(body->candidates().primaryTitle(), "Search “”");
    EXPECT_EQ(body->candidates().askTitle(), "Ask Kesto “”");
}

TEST_F(AddressNotchBodyTest, ClosingTheTabInFrontWhileTheNotchIsOpenDoesNoHarm) {
    openAndType("maps");

    store->close(*store->active());
    body->refresh();
    body->press(NotchKey::enter);

    EXPECT_FALSE(notch.isOpen());
}

}  // namespace
}  // namespace orvu

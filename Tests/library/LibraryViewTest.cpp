#include "library/LibraryView.h"

#include "library/LibraryWorld.h"
#include "look/Symbols.h"
#include "look/text/PlatformText.h"

namespace orvu {
namespace {

using LibraryViewTest = LibraryTest;

// --- What shows --------------------------------------------------------------------------------

TEST_F(LibraryViewTest, TheSectionsStandInTheirOrderAndEachHasASymbol) {
    Strings said;
    for (const auto& facts : LibraryView::sections) {
        said.push_back(joined({facts.rawValue, "/", facts.title}));
        EXPECT_FALSE(symbolIcon(facts.symbol).empty()) << facts.symbol;
    }

    EXPECT_EQ(said, (Strings{"history/History", "bookmarks/Bookmarks", "closed/Recently closed"}));
    EXPECT_FALSE(symbolIcon(LibraryView::backSymbol).empty());
    EXPECT_FALSE(symbolIcon(LibraryView::searchSymbol).empty());
}

TEST_F(LibraryViewTest, TheSectionIsThatOfTheWindow) {
    const auto store = openLibrary({});
    LibraryView view{*store, world.services};

    EXPECT_EQ(view.facts().title, "History");
    EXPECT_EQ(view.prompt(), "Search history");
    view.show(Section::bookmarks);
    EXPECT_EQ(view.prompt(), "Search bookmarks");
    store->setLibrarySection(Section::closed);
    EXPECT_EQ(view.prompt(), "Search recently closed");
    view.backToPage();
    EXPECT_FALSE(store->librarySection());
}

TEST_F(LibraryViewTest, AnotherSectionKeepsTheSearch) {
    const auto store = openLibrary({titled("Tulips", noon()), titled("Roses", noon(), b)});
    LibraryView view{*store, world.services};
    view.query.set("rose");

    view.show(Section::bookmarks);
    view.show(Section::history);

    EXPECT_EQ(view.query.get(), "rose");
    EXPECT_EQ(lines(view), (Strings{"[Today]", "Roses"}));
}

TEST_F(LibraryViewTest, AnEmptyListAndAVainSearchSayTheSame) {
    const auto store = openLibrary({titled("Tulips", noon())});
    LibraryView view{*store, world.services};
    view.query.set("no such page");

    EXPECT_TRUE(view.entries().empty());
    EXPECT_EQ(view.facts().emptyText, "No pages yet. Pages you visit show up here for 30 days.");
    view.show(Section::bookmarks);
    EXPECT_TRUE(view.entries().empty());
    EXPECT_EQ(platformText(view.facts().emptyText),
              "No bookmarks yet. Press Ctrl+D, or click the star in the notch, to keep a page.");
    view.show(Section::closed);
    EXPECT_TRUE(view.entries().empty());
    EXPECT_EQ(view.facts().emptyText, "Tabs you close in this window show up here.");
}

TEST_F(LibraryViewTest, AVisitSaysTitleHostAndTime) {
    const auto store = openLibrary({titled("Tulips", noon(), "https://www.a.example/path")});
    LibraryView view{*store, world.services};

    const auto row = view.row(entryOf(view, "Tulips"));

    ASSERT_TRUE(row);
    EXPECT_EQ(row->host, "www.a.example");
    EXPECT_EQ(row->time, "12:00");
    EXPECT_EQ(row->url, url("https://www.a.example/path"));
    EXPECT_EQ(row->accessibleName(), "Tulips, www.a.example, 12:00");
}

TEST_F(LibraryViewTest, BookmarksStandInTheirOrderWithoutATime) {
    marks().toggle(url(a), "Tulips");
    marks().toggle(url(b), "Roses");
    const auto store = openLibrary({}, Section::bookmarks);
    LibraryView view{*store, world.services};

    EXPECT_EQ(lines(view), (Strings{"Roses", "Tulips"}));
    EXPECT_EQ(view.row(view.entries()[0])->time, "");
    EXPECT_EQ(view.row(view.entries()[0])->accessibleName(), "Roses, b.example");
    view.query.set("A.EXAMPLE");
    EXPECT_EQ(lines(view), Strings{"Tulips"});
}

TEST_F(LibraryViewTest, ClosedTabsStandTheLastOneFirst) {
    const auto store = openStoreWith({a, b, c});
    page(*tabAt(*store, a)).finish("Tulips");
    page(*tabAt(*store, b)).finish("Roses");
    store->close(*tabAt(*store, a));
    world.loop.setNow(fromNoon(hour));
    store->close(*tabAt(*store, b));
    store->setLibrarySection(Section::closed);
    LibraryView view{*store, world.services};

    EXPECT_EQ(lines(view), (Strings{"Roses", "Tulips"}));
    EXPECT_EQ(view.row(view.entries()[0])->time, "13:00");
    EXPECT_EQ(view.row(view.entries()[1])->time, "12:00");
}

TEST_F(LibraryViewTest, ASiteWithLettersOfItsOwnIsShownInThemAndHasTheIconOfItsRealHost) {
    const auto store = openLibrary({titled("Books", noon(), "https://xn--bcher-kva.example/a")});
    LibraryView view{*store, world.services};

    const auto row = view.row(entryOf(view, "Books"));

    ASSERT_TRUE(row);
    EXPECT_EQ(row->host, "bücher.example");
    EXPECT_EQ(row->iconHost(), "xn--bcher-kva.example");
}

TEST_F(LibraryViewTest, AHeaderIsNoRow) {
    const auto store = openLibrary({titled("Tulips", noon())});
    LibraryView view{*store, world.services};
    const LibraryEntry header = view.entries()[0];

    EXPECT_TRUE(header.isHeader());
    EXPECT_FALSE(view.row(header));
    view.open(header);
    view.remove(header);
    EXPECT_EQ(store->librarySection(), Section::history);
    EXPECT_EQ(store->visits().size(), 1U);
}

TEST_F(LibraryViewTest, APrivateWindowShowsNoHistoryButItsOwnClosedTabsAndTheProfilesBookmarks) {
    marks().toggle(url(a), "Tulips");
    const auto ordinary = openLibrary({titled("Seen", noon())});
    const auto store = openPrivateStore();
    visit(*store->active(), b, "Hidden");
    store->close(*store->active());
    LibraryView view{*store, world.services};

    store->setLibrarySection(Section::history);
    EXPECT_EQ(lines(view), Strings{});
    EXPECT_FALSE(view.canClear());
    view.show(Section::bookmarks);
    EXPECT_EQ(lines(view), Strings{"Tulips"});
    view.show(Section::closed);
    EXPECT_EQ(lines(view), Strings{"Hidden"});

    ordinary->setLibrarySection(Section::closed);
    LibraryView other{*ordinary, world.services};
    EXPECT_EQ(lines(other), Strings{});
    EXPECT_EQ(storedTitles(), Strings{"Seen"});
}

// --- The search --------------------------------------------------------------------------------

TEST_F(LibraryViewTest, ASearchInCapitalsFindsATitleInSmallLetters) {
    const auto store =
        openLibrary({titled("tulips of spring", noon()), titled("roses", noon(), b)});
    LibraryView view{*store, world.services};

    view.query.set("TULIPS");

    EXPECT_EQ(lines(view), (Strings{"[Today]", "tulips of spring"}));
}

TEST_F(LibraryViewTest, ASearchThatFitsTheAddressAloneFindsAVisitAndNoClosedTab) {
    const auto store = openStoreWith({c});
    visit(*store->active(), "https://a.example/GARDEN", "Tulips");
    store->newTab(std::nullopt, Select::yes);
    store->close(*tabAt(*store, "https://a.example/GARDEN"));
    LibraryView view{*store, world.services};
    view.query.set("garden");

    EXPECT_EQ(lines(view), (Strings{"[Today]", "Tulips"}));
    view.show(Section::closed);
    EXPECT_EQ(lines(view), Strings{});
    view.query.set("TULIP");
    EXPECT_EQ(lines(view), Strings{"Tulips"});
}

TEST_F(LibraryViewTest, ASearchIsForWholeCharacters) {
    const auto store = openLibrary({titled("Cafe\u0301", noon()), titled("Cafe", noon(), b)});
    LibraryView view{*store, world.services};

    view.query.set("cafe");
    EXPECT_EQ(lines(view), (Strings{"[Today]", "Cafe"}));
    view.query.set("CAFÉ");
    EXPECT_EQ(lines(view), (Strings{"[Today]", "Cafe\u0301"}));
}

TEST_F(LibraryViewTest, AVisitThatComesDuringASearchShowsIfItMatches) {
    const auto store = openLibrary({titled("Tulips", fromNoon(-hour))});
    LibraryView view{*store, world.services};
    view.query.set("tulip");
    EXPECT_EQ(lines(view), (Strings{"[Today]", "Tulips"}));

    visit(*store->active(), b, "More tulips");
    visit(*store->active(), c, "Roses");

    EXPECT_EQ(lines(view), (Strings{"[Today]", "Tulips", "More tulips"}));
}

TEST_F(LibraryViewTest, AVisitThatIsForgottenDuringASearchGoes) {
    const auto store = openLibrary({titled("Red tulips", noon()), titled("Roses", noon(), b),
                                    titled("Blue tulips", noon(), c)});
    LibraryView view{*store, world.services};
    view.query.set("tulip");

    view.remove(entryOf(view, "Red tulips"));

    EXPECT_EQ(lines(view), (Strings{"[Today]", "Blue tulips"}));
}

// --- What is done ------------------------------------------------------------------------------

TEST_F(LibraryViewTest, AClickOnARowGoesThereInTheSameTabAndClosesTheLibraryOfThatWindowOnly) {
    const auto store = openLibrary({titled("Tulips", noon(), b)});
    const auto other = openStore();
    other->setLibrarySection(Section::history);
    LibraryView view{*store, world.services};

    view.open(entryOf(view, "Tulips"));

    EXPECT_EQ(addresses(store->tabs()), Strings{b});
    EXPECT_FALSE(store->librarySection());
    EXPECT_EQ(other->librarySection(), Section::history);
}

TEST_F(LibraryViewTest, ANewTabComesToTheFrontAndTheLibraryCloses) {
    const auto store = openLibrary({titled("Tulips", noon(), b)});
    LibraryView view{*store, world.services};

    view.perform(LibraryView::Action::openInNewTab, entryOf(view, "Tulips"));

    EXPECT_EQ(addresses(store->tabs()), (Strings{"", b}));
    EXPECT_EQ(front(*store), b);
    EXPECT_FALSE(store->librarySection());
}

TEST_F(LibraryViewTest, ALinkIsCopiedWholeAndTheLibraryStays) {
    const auto store = openLibrary({titled("Tulips", noon(), "https://b.example/x?y=1#z")});
    LibraryView view{*store, world.services};

    view.perform(LibraryView::Action::copyLink, entryOf(view, "Tulips"));

    EXPECT_EQ(world.pasteboard.text, "https://b.example/x?y=1#z");
    EXPECT_EQ(store->librarySection(), Section::history);
}

TEST_F(LibraryViewTest, TheMenuDeletesVisitsAndBookmarksAndNoClosedTab) {
    const auto store = openLibrary({});
    LibraryView view{*store, world.services};
    const auto titles = [&](Section section) {
        view.show(section);
        Strings result;
        for (const auto& line : view.menu()) result.emplace_back(line.title);
        return result;
    };

    EXPECT_EQ(titles(Section::history),
              (Strings{"Open in New Tab", "Copy Link", "Delete from History"}));
    EXPECT_EQ(titles(Section::bookmarks),
              (Strings{"Open in New Tab", "Copy Link", "Delete Bookmark"}));
    EXPECT_EQ(titles(Section::closed), (Strings{"Open in New Tab", "Copy Link"}));
}

TEST_F(LibraryViewTest, ADeletedVisitIsGoneFromWhatIsStoredAndOthersOfItsAddressStay) {
    const auto store = openLibrary({titled("First", fromNoon(-hour)), titled("Second", noon())});
    LibraryView view{*store, world.services};

    view.perform(LibraryView::Action::remove, entryOf(view, "First"));

    EXPECT_EQ(lines(view), (Strings{"[Today]", "Second"}));
    EXPECT_EQ(storedTitles(), Strings{"Second"});
}

TEST_F(LibraryViewTest, ADeletedBookmarkIsGoneFromTheProfile) {
    marks().toggle(url(a), "Tulips");
    marks().toggle(url(b), "Roses");
    const auto store = openLibrary({}, Section::bookmarks);
    LibraryView view{*store, world.services};

    view.remove(entryOf(view, "Tulips"));

    EXPECT_EQ(lines(view), Strings{"Roses"});
    EXPECT_EQ(world.stored("orvuBookmarks").find("Tulips"), std::string::npos);
}

TEST_F(LibraryViewTest, AClosedTabIsNotDeleted) {
    const auto store = openStoreWith({a, b});
    store->close(*tabAt(*store, a));
    store->setLibrarySection(Section::closed);
    LibraryView view{*store, world.services};

    view.remove(view.entries()[0]);

    EXPECT_EQ(store->closedTabs().size(), 1U);
}

TEST_F(LibraryViewTest, WithAnEntryThatHasLeftItsListNothingHappens) {
    const auto store = openLibrary({titled("Tulips", noon(), b), titled("Roses", noon(), c)});
    LibraryView view{*store, world.services};
    const LibraryEntry gone = entryOf(view, "Tulips");
    store->removeVisit(store->visits()[0]);

    view.open(gone);
    view.openInNewTab(gone);
    view.copyLink(gone);
    view.remove(gone);

    EXPECT_FALSE(view.row(gone));
    EXPECT_EQ(addresses(store->tabs()), Strings{""});
    EXPECT_EQ(world.pasteboard.text, "");
    EXPECT_EQ(store->visits().size(), 1U);
    EXPECT_EQ(store->librarySection(), Section::history);
}

TEST_F(LibraryViewTest, AnEntryFromBeforeAChangeStillMeansItsOwnPage) {
    const auto store = openLibrary({titled("Tulips", noon()), titled("Roses", noon(), b)});
    LibraryView view{*store, world.services};
    const LibraryEntry roses = entryOf(view, "Roses");
    store->removeVisit(store->visits()[0]);

    EXPECT_EQ(view.row(roses)->title, "Roses");
    view.open(roses);
    EXPECT_EQ(front(*store), b);
}

// --- Clearing ----------------------------------------------------------------------------------

TEST_F(LibraryViewTest, TheHistoryCanBeClearedWheneverThereIsAVisit) {
    const auto store = openLibrary({titled("Tulips", noon())});
    LibraryView view{*store, world.services};
    EXPECT_TRUE(view.canClear());

    view.query.set("no such page");
    EXPECT_TRUE(view.canClear());
    view.show(Section::bookmarks);
    EXPECT_FALSE(view.canClear());
    view.askToClear();
    EXPECT_FALSE(view.confirmClear.get());
    view.show(Section::history);
    store->removeVisit(store->visits()[0]);
    EXPECT_FALSE(view.canClear());
}

TEST_F(LibraryViewTest, TheQuestionHasThreeAnswers) {
    Strings titles;
    for (const auto& answer : LibraryView::clearAnswers) titles.emplace_back(answer.title);

    EXPECT_EQ(titles, (Strings{"Today", "All time", "Cancel"}));
    EXPECT_EQ(LibraryView::clearHeading, "Clear history from");
}

TEST_F(LibraryViewTest, CancellingClosesTheQuestionAndClearsNothing) {
    const auto store = openLibrary({titled("Tulips", noon())});
    LibraryView view{*store, world.services};
    view.askToClear();
    EXPECT_TRUE(view.confirmClear.get());

    view.clear(LibraryView::Clearing::cancel);

    EXPECT_FALSE(view.confirmClear.get());
    EXPECT_EQ(store->visits().size(), 1U);
    EXPECT_EQ(world.defaults.written, Strings{});
}

TEST_F(LibraryViewTest, AtAQuarterPastMidnightTodayIsOnlyWhatWasVisitedAfterMidnight) {
    const auto store = openLibrary({titled("Late", fromNoon(12 * hour - 60)),
                                    titled("At midnight", fromNoon(12 * hour), b),
                                    titled("Early", fromNoon(12 * hour + 300), c)});
    world.loop.setNow(fromNoon(12 * hour + 900));
    LibraryView view{*store, world.services};
    view.askToClear();

    view.clear(LibraryView::Clearing::today);

    EXPECT_EQ(lines(view), (Strings{"[Tuesday, 7 October 2025]", "Late"}));
    EXPECT_EQ(storedTitles(), Strings{"Late"});
}

TEST_F(LibraryViewTest, AllTimeLeavesNoVisitAndNoClosedTab) {
    const auto store = openLibrary({titled("Tulips", fromNoon(-3 * day)), titled("Roses", noon())});
    visit(*store->active(), b, "Daisies");
    store->newTab(std::nullopt, Select::yes);
    store->close(*tabAt(*store, b));
    LibraryView view{*store, world.services};

    view.clear(LibraryView::Clearing::allTime);

    EXPECT_EQ(lines(view), Strings{});
    EXPECT_EQ(store->closedTabs().size(), 0U);
    EXPECT_EQ(world.stored("browserVisits"), "[]");
}

// --- Signals -----------------------------------------------------------------------------------

TEST_F(LibraryViewTest, WhatComesWhileItIsOpenIsToldAndShows) {
    const auto store = openLibrary({});
    LibraryView view{*store, world.services};
    const ChangeCounter changes{view};

    visit(*store->active(), a, "Tulips");
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(lines(view), (Strings{"[Today]", "Tulips"}));

    view.show(Section::bookmarks);
    marks().toggle(url(b), "Roses");
    EXPECT_EQ(changes.count(), 3);
    EXPECT_EQ(lines(view), Strings{"Roses"});
}

TEST_F(LibraryViewTest, TellsOnceOfEachKeyInTheSearchAndOfTheQuestion) {
    const auto store = openLibrary({titled("Tulips", noon())});
    LibraryView view{*store, world.services};
    const ChangeCounter changes{view};

    view.query.set("t");
    view.query.set("t");
    view.askToClear();

    EXPECT_EQ(changes.count(), 2);
}

TEST_F(LibraryViewTest, AnObserverMayAskForTheLinesRightAway) {
    const auto store = openLibrary({titled("Tulips", noon()), titled("Roses", noon(), b)});
    LibraryView view{*store, world.services};
    std::vector<Strings> seen;
    view.connectChanged([&] { seen.push_back(lines(view)); });

    view.remove(view.entries()[1]);
    view.query.set("no such page");

    EXPECT_EQ(seen, (std::vector<Strings>{{"[Today]", "Roses"}, {}}));
}

TEST_F(LibraryViewTest, AViewThatIsGoneHearsNothing) {
    const auto store = openLibrary({titled("Tulips", noon())});
    std::make_unique<LibraryView>(*store, world.services).reset();

    store->clearHistory({});
    marks().toggle(url(a), "Tulips");

    EXPECT_TRUE(store->visits().empty());
}

}  // namespace
}  // namespace orvu

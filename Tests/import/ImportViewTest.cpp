#include "import/ImportView.h"

#include "fakes/FakeOpenPanel.h"
#include "import/BrowserDatabase.h"
#include "import/ImportWorld.h"
#include "look/text/PlatformText.h"
#include "support/StoreWorld.h"

namespace orvu {
namespace {

class ImportViewTest : public ImportWorld {
protected:
    ImportViewTest() { world.storeRecords<Profile>("orvuProfiles", {Profile::personal()}); }

    /// A browser with so many bookmarks and visits.
    void addChrome(int bookmarkCount, int visitCount) {
        const Path folder = folders.configuration / "google-chrome/Default";
        std::string rows;
        for (int i = 0; i < bookmarkCount; ++i) {
            rows += (i == 0 ? "" : ",") + std::string{R"({"type":"url","name":"B","url":")"} +
                    "https://bookmark.example/" + std::to_string(i) + "\"}";
        }
        write(folder / "Bookmarks", R"({"roots":{"other":{"children":[)" + rows + "]}}}");
        ChromiumHistory database{folder / "History"};
        for (int i = 0; i < visitCount; ++i) {
            database.add("https://visit.example/" + std::to_string(i), "V",
                         Date{world.loop.now().secondsSinceReference() - 3600});
        }
    }
    void addFirefox() {
        FirefoxPlaces places{folders.configuration / "mozilla/firefox/x.default/places.sqlite"};
        places.addPlace(1, "https://fox.example/", "Fox", nullptr);
        places.addBookmark(1, "Fox");
    }
    void installSafari() {
        std::filesystem::create_directories(folders.applications / "Safari.app");
    }

    [[nodiscard]] AppServices& services() {
        if (!services_) services_ = std::make_unique<AppServices>(world.platform());
        return *services_;
    }
    void haveProfiles(const std::vector<Profile>& profiles) {
        world.storeRecords<Profile>("orvuProfiles", profiles);
    }
    [[nodiscard]] std::shared_ptr<ImportView> show(const Profile& profile = Profile::personal()) {
        return ImportView::make({services(), importer, panel, reads}, profile);
    }
    /// Runs an import to its end.
    std::string imported(ImportView& view) {
        view.run();
        EXPECT_TRUE(world.background.doNext());
        return view.message().value_or("");
    }
    [[nodiscard]] std::vector<Visit> storedVisits(const char* key = "browserVisits") const {
        return world.storedRecords<Visit>(key).value_or(std::vector<Visit>{});
    }
    [[nodiscard]] Strings idsOf(const ImportView& view) const {
        Strings ids;
        for (const auto& source : view.sources()) ids.push_back(source.id);
        return ids;
    }

    StoreWorld world;
    FakeOpenPanel panel;

private:
    std::unique_ptr<AppServices> services_;

protected:
    TaskScope reads;
};

// --- What it begins with ----------------------------------------------------------------------

TEST_F(ImportViewTest, TheFirstBrowserIsPickedAndBothAreWanted) {
    addFirefox();
    addChrome(1, 1);
    const auto view = show();

    EXPECT_EQ(idsOf(*view), (Strings{"chrome", "firefox"}));
    EXPECT_EQ(view->picked()->id, "chrome");
    EXPECT_EQ(view->runTitle(), "Import from Chrome");
    EXPECT_TRUE(view->bookmarks.get());
    EXPECT_TRUE(view->history.get());
    EXPECT_TRUE(view->canRun());
    EXPECT_EQ(view->intro(),
              "Orvu found these browsers on this Mac. Pick one, choose what to bring, and it lands "
              "in Bookmarks and History.");
    EXPECT_EQ(ImportView::state(view->sources()[0]), "Found");
    EXPECT_EQ(view->message(), std::nullopt);
    EXPECT_EQ(view->help(), "");
}

TEST_F(ImportViewTest, WithoutAnyBrowserOnlyAFileCanBeBrought) {
    const auto view = show();

    EXPECT_EQ(view->intro(),
              "Orvu didn't find another browser on this Mac. You can still bring an exported "
              "bookmarks file.");
    EXPECT_EQ(view->runTitle(), "Import");
    EXPECT_FALSE(view->canRun());
    view->run();
    EXPECT_EQ(world.background.waiting(), 0U);
}

TEST_F(ImportViewTest, ThePersonalProfileBesideAnotherIsNamed) {
    addChrome(1, 1);
    haveProfiles({Profile::personal(), world.work});
    const auto view = show();

    EXPECT_TRUE(view->intro().ends_with("it lands in your Personal profile.")) << view->intro();
}

TEST_F(ImportViewTest, AnotherProfileIsNamedAsItIsCalledNow) {
    addChrome(1, 1);
    haveProfiles({Profile::personal(), world.work});
    const auto view = show(world.work);
    const ChangeCounter changes{*view};
    Profile renamed = world.work;
    renamed.name = "Office";

    services().profiles().update(renamed);

    EXPECT_TRUE(view->intro().ends_with("it lands in your Office profile.")) << view->intro();
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(ImportViewTest, WithBothChoicesOffNothingCanBeImported) {
    addChrome(1, 1);
    const auto view = show();
    const auto choices = view->choices();
    ASSERT_EQ(choices.size(), 2U);
    EXPECT_EQ(choices[0].title, "Bookmarks");
    EXPECT_EQ(choices[1].title, "History");

    choices[0].isOn->set(false);
    EXPECT_TRUE(view->canRun());
    choices[1].isOn->set(false);

    EXPECT_FALSE(view->canRun());
    view->run();
    EXPECT_EQ(world.background.waiting(), 0U);
}

// --- Importing --------------------------------------------------------------------------------

TEST_F(ImportViewTest, OneBookmarkAndTwoVisitsAreCounted) {
    addChrome(1, 2);
    const auto view = show();

    EXPECT_EQ(imported(*view), "Brought over 1 new bookmark and 2 visits from Chrome.");

    EXPECT_EQ(services().bookmarks().store(Profile::personal()).items().size(), 1U);
    EXPECT_EQ(storedVisits().size(), 2U);
    EXPECT_FALSE(view->blocked());
}

TEST_F(ImportViewTest, TheSameImportTwiceBringsNothingTheSecondTime) {
    addChrome(3, 3);
    imported(*show());

    EXPECT_EQ(imported(*show()), "Everything from Chrome is already in Orvu.");
    EXPECT_EQ(storedVisits().size(), 3U);
}

TEST_F(ImportViewTest, WithoutTheHistoryTheSentenceNamesOnlyBookmarks) {
    addChrome(3, 2);
    const auto view = show();
    view->history.set(false);

    EXPECT_EQ(imported(*view), "Brought over 3 new bookmarks from Chrome.");
    EXPECT_TRUE(storedVisits().empty());
}

TEST_F(ImportViewTest, WithoutBookmarksTheSentenceNamesOnlyVisits) {
    addChrome(3, 1);
    const auto view = show();
    view->bookmarks.set(false);

    EXPECT_EQ(imported(*view), "Brought over 1 visit from Chrome.");
}

TEST_F(ImportViewTest, OneKindThatIsKnownIsNamedWithNone) {
    addChrome(2, 0);
    EXPECT_EQ(imported(*show()), "Brought over 2 new bookmarks and 0 visits from Chrome.");
}

TEST_F(ImportViewTest, AnotherBrowserIsPickedByItsRow) {
    addChrome(1, 1);
    addFirefox();
    const auto view = show();
    view->pick("firefox");
    view->pick("unknown");

    EXPECT_EQ(view->runTitle(), "Import from Firefox");
    EXPECT_EQ(imported(*view), "Brought over 1 new bookmark and 0 visits from Firefox.");
}

TEST_F(ImportViewTest, WhileItReadsNothingElseBegins) {
    addChrome(1, 1);
    const auto view = show();
    view->run();

    EXPECT_TRUE(view->working());
    EXPECT_EQ(view->runTitle(), "Importing…");
    EXPECT_FALSE(view->canRun());
    view->run();
    view->chooseFile();
    EXPECT_EQ(world.background.waiting(), 1U);
    EXPECT_TRUE(panel.messages.empty());

    world.background.doNext();
    EXPECT_FALSE(view->working());
    EXPECT_TRUE(view->canRun());
}

TEST_F(ImportViewTest, WhatWasWantedWhenItBeganIsWhatCounts) {
    addChrome(1, 1);
    const auto view = show();
    view->history.set(false);
    view->run();
    view->history.set(true);
    view->bookmarks.set(false);
    world.background.doNext();

    EXPECT_EQ(view->message(), "Brought over 1 new bookmark from Chrome.");
}

TEST_F(ImportViewTest, ANewReadForgetsTheLastOutcome) {
    addChrome(1, 1);
    const auto view = show();
    imported(*view);
    view->run();

    EXPECT_EQ(view->message(), std::nullopt);
}

TEST_F(ImportViewTest, AReadEndsAndMergesAlsoWithoutItsView) {
    addChrome(2, 2);
    auto view = show();
    view->run();
    view.reset();
    world.background.doNext();

    EXPECT_EQ(services().bookmarks().store(Profile::personal()).items().size(), 2U);
    EXPECT_EQ(storedVisits().size(), 2U);
    EXPECT_EQ(reads.size(), 0U);
}

TEST_F(ImportViewTest, BothWindowsOfTheProfileShowWhatCame) {
    addChrome(1, 2);
    const BrowserStore one{services(), false, Profile::personal()};
    const BrowserStore other{services(), false, Profile::personal()};
    imported(*show());

    EXPECT_EQ(one.visits().size(), 2U);
    EXPECT_EQ(other.visits().size(), 2U);
}

TEST_F(ImportViewTest, ItLandsInItsOwnProfileAlone) {
    addChrome(1, 1);
    haveProfiles({Profile::personal(), world.work});
    imported(*show(world.work));

    EXPECT_TRUE(storedVisits().empty());
    EXPECT_EQ(storedVisits(scopedKey("browserVisits", world.work).c_str()).size(), 1U);
    EXPECT_TRUE(services().bookmarks().store(Profile::personal()).items().empty());
}

TEST_F(ImportViewTest, IntoADeletedProfileNothingIsWritten) {
    addChrome(2, 2);
    haveProfiles({Profile::personal(), world.work});
    const auto view = show(world.work);
    view->run();
    services().profiles().remove(world.work);
    world.defaults.written.clear();
    world.background.doNext();

    EXPECT_TRUE(view->isProfileGone());
    EXPECT_TRUE(world.defaults.written.empty());
}

// --- What the system denies -------------------------------------------------------------------

TEST_F(ImportViewTest, WithOnlyALockedBrowserNothingIsPickedUntilARowIsTapped) {
    installSafari();
    const auto view = show();

    EXPECT_EQ(view->picked(), std::nullopt);
    EXPECT_FALSE(view->canRun());
    EXPECT_FALSE(view->needsAccess());
    EXPECT_EQ(ImportView::state(view->sources()[0]), "Needs access");
    view->pick("safari");

    EXPECT_TRUE(view->needsAccess());
    EXPECT_EQ(view->runTitle(), "Import from Safari");
    EXPECT_FALSE(view->canRun());
    EXPECT_NE(view->help().find((home / "Library/Safari").string()), std::string::npos);
}

TEST_F(ImportViewTest, CheckingAgainAfterAccessKeepsTheBrowserPickedAndShowsTheChoices) {
    installSafari();
    const auto view = show();
    view->pick("safari");
    view->checkAgain();
    EXPECT_TRUE(view->needsAccess());

    write(home / "Library/Safari/History.db", "x");
    view->checkAgain();

    EXPECT_EQ(view->picked()->id, "safari");
    EXPECT_FALSE(view->needsAccess());
    EXPECT_TRUE(view->canRun());
}

TEST_F(ImportViewTest, CheckingAgainForgetsABrowserThatWent) {
    addChrome(1, 1);
    const auto view = show();
    std::filesystem::remove_all(folders.configuration);
    view->checkAgain();

    EXPECT_EQ(view->picked(), std::nullopt);
    EXPECT_TRUE(view->sources().empty());
}

TEST_F(ImportViewTest, ARefusedReadSaysSoAndWhichFolderItWas) {
    addChrome(1, 1);
    addFirefox();
    const auto view = show();
    // A history without a single byte is what a system that hides files shows.
    write(folders.configuration / "google-chrome/Default/History", "");
    std::filesystem::resize_file(folders.configuration / "google-chrome/Default/History", 0);

    EXPECT_EQ(imported(*view),
              "macOS didn't let Orvu read Chrome's data. Allow it when macOS asks, or turn on Orvu "
              "under Full Disk Access, then import again.");
    EXPECT_TRUE(view->blocked());
    EXPECT_FALSE(view->working());
    EXPECT_TRUE(services().bookmarks().store(Profile::personal()).items().empty());
    view->pick("firefox");
    EXPECT_TRUE(view->help().starts_with("Chrome keeps its data in ")) << view->help();
    EXPECT_NE(view->help().find("google-chrome/Default"), std::string::npos);

    imported(*view);
    EXPECT_FALSE(view->blocked());
    EXPECT_EQ(view->help(), "");
}

// --- From a file ------------------------------------------------------------------------------

class ImportViewFile : public ImportViewTest {
protected:
    void choose(ImportView& view, const FakeOpenPanel::Choice& choice) {
        view.chooseFile();
        panel.answer(choice);
        world.background.doNext();
    }
    const Path file = home / "bookmarks.html";
};

TEST_F(ImportViewFile, ItsBookmarksAreAddedAndTheWordStaysPlural) {
    write(file, "<DT><A HREF=\"https://a.example/\">A</A>");
    const auto view = show();
    choose(*view, file);

    EXPECT_EQ(panel.messages, Strings{std::string{ImportView::fileMessage}});
    EXPECT_EQ(view->message(), "Added 1 bookmarks.");
    EXPECT_EQ(services().bookmarks().store(Profile::personal()).items().size(), 1U);
}

TEST_F(ImportViewFile, WithoutNewOnesItSaysSo) {
    write(file, "<DT><A HREF=\"https://a.example/\">A</A>");
    const auto view = show();
    choose(*view, file);
    choose(*view, file);

    EXPECT_EQ(view->message(), "No new bookmarks in that file.");
}

TEST_F(ImportViewFile, AFileThatIsNoneBringsNothing) {
    const auto view = show();
    choose(*view, home / "nothing.html");

    EXPECT_EQ(view->message(), "No new bookmarks in that file.");
    EXPECT_FALSE(view->working());
}

TEST_F(ImportViewFile, WithoutAChoiceNothingHappens) {
    const auto view = show();
    choose(*view, std::nullopt);

    EXPECT_EQ(view->message(), std::nullopt);
    EXPECT_FALSE(view->working());
}

TEST_F(ImportViewFile, ThePanelGoesWithTheView) {
    auto view = show();
    view->chooseFile();
    EXPECT_TRUE(panel.isOpen());
    view.reset();

    EXPECT_FALSE(panel.isOpen());
}

TEST_F(ImportViewFile, IntoADeletedProfileNothingIsWritten) {
    write(file, "<DT><A HREF=\"https://a.example/\">A</A>");
    haveProfiles({Profile::personal(), world.work});
    const auto view = show(world.work);
    view->chooseFile();
    services().profiles().remove(world.work);
    world.defaults.written.clear();
    panel.answer(file);
    world.background.doNext();

    EXPECT_TRUE(world.defaults.written.empty());
}

}  // namespace
}  // namespace orvu

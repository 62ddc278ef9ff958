#include "profiles/ProfileSwitcher.h"

#include "fakes/FakeUserDefaults.h"
#include "foundation/RandomText.h"
#include "profiles/ProfileLook.h"

#include <gtest/gtest.h>

#include <memory>

namespace orvu {
namespace {

using Answer = ProfileSwitcher::Question::Answer;

class ProfileSwitcherTest : public testing::Test {
protected:
    ProfileSwitcherTest() {
        store.add(work);
        store.add(home);
    }

    /// The switcher of a window that shows `shown`. What it does is noted in `steps`.
    std::unique_ptr<ProfileSwitcher> windowOf(const Profile& shown) {
        return std::make_unique<ProfileSwitcher>(store, shown.id, [this](const Profile& profile) {
            steps.push_back("switch to " + profile.name);
        });
    }
    std::vector<std::string> helps() const {
        std::vector<std::string> texts;
        for (const auto& tile : switcher->tiles()) texts.push_back(tile.help);
        return texts;
    }
    std::vector<std::string> titles(const Profile& profile) const {
        std::vector<std::string> texts;
        for (const auto& line : switcher->menu(profile.id)) texts.push_back(line.title);
        return texts;
    }
    void rename(const Profile& profile, const std::string& name) {
        store.update({profile.id, name, profile.icon, profile.color});
    }

    FakeUserDefaults defaults;
    std::vector<std::string> steps;
    ProfileStore store{defaults,
                       [this](const Uuid& id) { steps.push_back("remove " + id.string()); }};
    const Profile personal = Profile::personal();
    const Profile work{Uuid::random(), "Work", "briefcase.fill", 5};
    const Profile home{Uuid::random(), "Home", "house.fill", 0};
    std::unique_ptr<ProfileSwitcher> switcher = windowOf(work);
};

TEST_F(ProfileSwitcherTest, EachProfileHasItsTileInTheOrderOfTheProfiles) {
    EXPECT_EQ(
        switcher->tiles(),
        (std::vector<ProfileSwitcher::Tile>{
            {personal.id, "person.fill", {138, 142, 150}, false, "Switch to Personal (Alt+1)"},
            {work.id, "briefcase.fill", {255, 94, 91}, true, "Switch to Work (Alt+2)"},
            {home.id, "house.fill", {92, 178, 255}, false, "Switch to Home (Alt+3)"}}));
}

TEST_F(ProfileSwitcherTest, AColourOutsideTheTableHasTheNearestRow) {
    store.update({work.id, "Work", "x", -1});
    store.update({home.id, "Home", "x", 99});

    EXPECT_EQ(switcher->tiles()[1].color, ProfileLook::all.front().color);
    EXPECT_EQ(switcher->tiles()[2].color, ProfileLook::all.back().color);
}

TEST_F(ProfileSwitcherTest, TheTenthProfileHasNoShortcutInItsHelp) {
    while (store.profiles().size() < 11) store.add({Uuid::random(), "More", "x", 0});

    const auto texts = helps();

    EXPECT_EQ(texts[8], "Switch to More (Alt+9)");
    EXPECT_EQ(texts[9], "Switch to More");
    EXPECT_EQ(texts[10], "Switch to More");
}

TEST_F(ProfileSwitcherTest, AnEditedProfileShowsAtOnceAndTheWindowsOwnStaysItsOwn) {
    store.update({work.id, "Office", "anchor", 7});

    EXPECT_EQ(switcher->tiles()[1],
              (ProfileSwitcher::Tile{
                  work.id, "anchor", {155, 107, 255}, true, "Switch to Office (Alt+2)"}));
}

TEST_F(ProfileSwitcherTest, ANameStaysAsItIsWhateverItSaysOfKeysAndMachines) {
    rename(work, "⌘ this Mac in Finder");
    switcher->deleting.set(store.profile(work.id));

    EXPECT_EQ(helps()[1], "Switch to ⌘ this Mac in Finder (Alt+2)");
    EXPECT_EQ(switcher->question()->message, "Delete “⌘ this Mac in Finder”?");
}

TEST_F(ProfileSwitcherTest, LongOddAndForeignNamesStandInOneLine) {
    rename(home, "עבודה");
    EXPECT_EQ(helps()[2], "Switch to עבודה (Alt+3)");
    EXPECT_EQ(titles(home), (std::vector<std::string>{"Edit עבודה…", "Delete עבודה…"}));

    rename(home, "At\nhome\x1B!");
    EXPECT_EQ(helps()[2], "Switch to At home ! (Alt+3)");

    rename(home, repeated("a", 1000));
    EXPECT_EQ(helps()[2], "Switch to " + repeated("a", 60) + "… (Alt+3)");

    rename(home, "");
    EXPECT_EQ(helps()[2], "Switch to New profile (Alt+3)");
}

TEST_F(ProfileSwitcherTest, AClickSwitchesToTheProfile) {
    switcher->switchTo(home.id);

    EXPECT_EQ(steps, std::vector<std::string>{"switch to Home"});
}

TEST_F(ProfileSwitcherTest, AClickOnTheWindowsOwnOrADeletedProfileDoesNothing) {
    store.remove(home);
    steps.clear();

    switcher->switchTo(work.id);
    switcher->switchTo(home.id);

    EXPECT_EQ(steps, std::vector<std::string>{});
}

TEST_F(ProfileSwitcherTest, TheMenuEditsAndDeletes) {
    EXPECT_EQ(titles(work), (std::vector<std::string>{"Edit Work…", "Delete Work…"}));

    switcher->menu(work.id)[0].run();
    EXPECT_EQ(switcher->editing.get(), work);
    EXPECT_EQ(switcher->deleting.get(), std::nullopt);

    switcher->menu(home.id)[1].run();
    EXPECT_EQ(switcher->deleting.get(), home);
}

TEST_F(ProfileSwitcherTest, ThePersonalProfilesMenuHasNoDeleteItem) {
    rename(personal, "Me");

    EXPECT_EQ(titles(personal), std::vector<std::string>{"Edit Me…"});
    switcher->confirmDelete(personal.id);
    EXPECT_EQ(switcher->deleting.get(), std::nullopt);
}

TEST_F(ProfileSwitcherTest, ADeletedProfileHasNoMenuAndAStandingOneDoesNothing) {
    const auto menu = switcher->menu(home.id);
    store.remove(home);

    for (const auto& line : menu) line.run();

    EXPECT_EQ(titles(home), std::vector<std::string>{});
    EXPECT_EQ(switcher->editing.get(), std::nullopt);
    EXPECT_EQ(switcher->deleting.get(), std::nullopt);
}

TEST_F(ProfileSwitcherTest, AMenuThatOutlivesItsSwitcherDoesNothing) {
    const auto menu = switcher->menu(home.id);
    ASSERT_EQ(menu.size(), 2U);
    switcher.reset();

    for (const auto& line : menu) {
        EXPECT_TRUE(line.run.empty());
        line.run();
    }
}

TEST_F(ProfileSwitcherTest, TheQuestionSaysWhatIsDeleted) {
    EXPECT_EQ(switcher->question(), std::nullopt);

    switcher->confirmDelete(home.id);

    EXPECT_EQ(switcher->question(),
              (ProfileSwitcher::Question{.message = "Delete “Home”?",
                                         .text = "Its tabs, history, bookmarks, sign-ins and "
                                                 "website data are removed from this Mac.",
                                         .buttons = {"Delete", "Cancel"}}));
    EXPECT_EQ(ProfileSwitcher::Question::informativeText,
              "Its tabs, history, bookmarks, sign-ins and website data are removed from this Mac.");
}

TEST_F(ProfileSwitcherTest, ACancelledQuestionDeletesNothing) {
    switcher->confirmDelete(home.id);

    switcher->answer(Answer::cancel);

    EXPECT_EQ(switcher->question(), std::nullopt);
    EXPECT_EQ(store.profiles(), (std::vector{personal, work, home}));
    EXPECT_EQ(steps, std::vector<std::string>{});
}

TEST_F(ProfileSwitcherTest, AnotherWindowsProfileIsDeletedWithoutASwitch) {
    switcher->confirmDelete(home.id);

    switcher->answer(Answer::remove);

    EXPECT_EQ(switcher->question(), std::nullopt);
    EXPECT_EQ(store.profiles(), (std::vector{personal, work}));
    EXPECT_EQ(steps, std::vector<std::string>{"remove " + home.id.string()});
}

TEST_F(ProfileSwitcherTest, DeletingTheShownProfileSwitchesToThePersonalOneFirst) {
    switcher->confirmDelete(work.id);

    switcher->answer(Answer::remove);

    EXPECT_EQ(steps,
              (std::vector<std::string>{"switch to Personal", "remove " + work.id.string()}));
    EXPECT_EQ(store.profiles(), (std::vector{personal, home}));
}

TEST_F(ProfileSwitcherTest, TheSwitchMayEndTheSwitcherBeforeTheProfileIsRemoved) {
    switcher = std::make_unique<ProfileSwitcher>(store, work.id,
                                                 [this](const Profile&) { switcher.reset(); });
    switcher->confirmDelete(work.id);

    switcher->answer(Answer::remove);

    EXPECT_EQ(switcher, nullptr);
    EXPECT_EQ(store.profiles(), (std::vector{personal, home}));
}

TEST_F(ProfileSwitcherTest, AnAnswerCountsOnce) {
    switcher->confirmDelete(home.id);
    switcher->answer(Answer::remove);
    steps.clear();

    switcher->answer(Answer::remove);

    EXPECT_EQ(steps, std::vector<std::string>{});
}

TEST_F(ProfileSwitcherTest, AProfileThatAnotherWindowDeletedMeanwhileIsNotDeletedAgain) {
    switcher->confirmDelete(work.id);
    store.remove(work);
    steps.clear();

    switcher->answer(Answer::remove);

    EXPECT_EQ(steps, std::vector<std::string>{});
}

TEST_F(ProfileSwitcherTest, TheEditingSheetSavesAndDoesNotSwitch) {
    switcher->edit(home.id);
    const auto editor = switcher->editor();
    EXPECT_EQ(editor->heading(), "Edit profile");
    editor->name.set("Garden");

    editor->save();

    EXPECT_EQ(switcher->editing.get(), std::nullopt);
    EXPECT_EQ(store.profile(home.id).name, "Garden");
    EXPECT_EQ(steps, std::vector<std::string>{});
}

TEST_F(ProfileSwitcherTest, ANewProfileIsEnteredAtOnce) {
    switcher->create();
    EXPECT_TRUE(switcher->creating.get());
    const auto editor = switcher->editor();
    EXPECT_EQ(editor->heading(), "New profile");
    editor->name.set("Studio");

    editor->save();

    EXPECT_FALSE(switcher->creating.get());
    EXPECT_EQ(store.profiles().back().name, "Studio");
    EXPECT_EQ(steps, std::vector<std::string>{"switch to Studio"});
}

TEST_F(ProfileSwitcherTest, ACancelledSheetClosesAndLeavesEverything) {
    switcher->edit(home.id);
    switcher->editor()->cancel();
    switcher->create();
    switcher->editor()->cancel();

    EXPECT_EQ(switcher->editing.get(), std::nullopt);
    EXPECT_FALSE(switcher->creating.get());
    EXPECT_EQ(store.profiles(), (std::vector{personal, work, home}));
    EXPECT_EQ(steps, std::vector<std::string>{});
}

TEST_F(ProfileSwitcherTest, TheSheetMayEndAsSoonAsItIsDoneAndTheSwitcherWithTheSwitch) {
    std::unique_ptr<ProfileEditor> sheet;
    switcher = std::make_unique<ProfileSwitcher>(store, work.id, [this](const Profile& profile) {
        switcher.reset();
        steps.push_back("switch to " + profile.name);
    });
    switcher->creating.connectChanged([&] {
        if (!switcher->creating.get()) sheet.reset();
    });
    switcher->create();
    sheet = switcher->editor();
    sheet->name.set("Studio");

    sheet->save();

    EXPECT_EQ(sheet, nullptr);
    EXPECT_EQ(steps, std::vector<std::string>{"switch to Studio"});
}

TEST_F(ProfileSwitcherTest, ASheetThatOutlivesItsSwitcherStillSaves) {
    switcher->edit(home.id);
    const auto editor = switcher->editor();
    switcher.reset();
    editor->name.set("Garden");

    editor->save();

    EXPECT_EQ(store.profile(home.id).name, "Garden");
}

TEST_F(ProfileSwitcherTest, OnlyTheRightTileIsShownAsTheWindowsOwnForEachWindow) {
    for (const Profile& shown : store.profiles()) {
        const auto window = windowOf(shown);
        for (const auto& tile : window->tiles()) EXPECT_EQ(tile.isShown, tile.id == shown.id);
    }
}

}  // namespace
}  // namespace orvu

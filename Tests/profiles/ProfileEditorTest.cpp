#include "profiles/ProfileEditor.h"

#include "fakes/FakeUserDefaults.h"
#include "foundation/RandomText.h"
#include "foundation/text/Text.h"
#include "profiles/ProfileIcons.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace orvu {
namespace {

class TwoProfiles : public testing::Test {
protected:
    TwoProfiles() { store.add(work); }

    /// What the sheet was ended with, each time.
    using Ends = std::vector<std::optional<Profile>>;

    ProfileEditor::Done done() {
        return [this](const std::optional<Profile>& profile) { ends.push_back(profile); };
    }
    std::optional<std::vector<Profile>> stored() const {
        const auto text = defaults.data("orvuProfiles");
        return text ? decodeRecords<Profile>(*text) : std::nullopt;
    }

    FakeUserDefaults defaults;
    ProfileStore store{defaults, [](const Uuid&) {}};
    const Profile personal = Profile::personal();
    const Profile work{Uuid::random(), "Work", "hammer.fill", 5};
    Ends ends;
};

class ProfileEditorTest : public TwoProfiles {
protected:
    ProfileEditor creating{store, std::nullopt, done()};
    ProfileEditor editing{store, work, done()};
};

TEST_F(ProfileEditorTest, ANewProfileBeginsWithoutANameAndWithTheNextColour) {
    EXPECT_EQ(creating.name.get(), "");
    EXPECT_EQ(creating.icon.get(), "briefcase.fill");
    EXPECT_EQ(creating.color.get(), 2);  // of two profiles: 14 modulo 12
    EXPECT_EQ(creating.search.get(), "");
    EXPECT_EQ(creating.heading(), "New profile");
}

TEST_F(ProfileEditorTest, AnEditedProfileBeginsAsItIs) {
    EXPECT_EQ(editing.name.get(), "Work");
    EXPECT_EQ(editing.icon.get(), "hammer.fill");
    EXPECT_EQ(editing.color.get(), 5);
    EXPECT_EQ(editing.search.get(), "");
    EXPECT_EQ(editing.heading(), "Edit profile");
}

TEST_F(ProfileEditorTest, NothingChangesBeforeItIsSaved) {
    const auto written = defaults.written;

    creating.name.set("Studio");
    editing.name.set("Office");

    EXPECT_EQ(store.profiles(), (std::vector{personal, work}));
    EXPECT_EQ(defaults.written, written);
    EXPECT_EQ(ends, Ends{});
}

TEST_F(ProfileEditorTest, TheShownNameIsTrimmed) {
    creating.name.set(" \t My  studio\u00A0\n");
    EXPECT_EQ(creating.shownName(), "My  studio");

    creating.name.set(" \t\n");
    EXPECT_EQ(creating.shownName(), "New profile");

    creating.name.set("\x01");
    EXPECT_EQ(creating.shownName(), "New profile");
}

TEST_F(ProfileEditorTest, TheMainButtonOfANewProfileShowsTheNameAsItIsTyped) {
    EXPECT_EQ(creating.saveTitle(), "Create Profile");

    std::string typed;
    for (const char letter : std::string_view{"Studio"}) {
        typed.push_back(letter);
        creating.name.set(typed);
        EXPECT_EQ(creating.saveTitle(), "Create " + typed);
    }
    creating.name.set(" Studio ");
    EXPECT_EQ(creating.saveTitle(), "Create Studio");
    creating.name.set("  \u00A0 ");
    EXPECT_EQ(creating.saveTitle(), "Create Profile");
}

TEST_F(ProfileEditorTest, TheMainButtonOfAnEditedProfileSaysSave) {
    EXPECT_EQ(editing.saveTitle(), "Save");

    editing.name.set("");

    EXPECT_EQ(editing.saveTitle(), "Save");
}

TEST_F(ProfileEditorTest, ALongNameIsCutOnTheButtonAndInThePreviewAndSavedWhole) {
    const std::string longName = repeated("a", 500);
    creating.name.set("two\nlines");
    EXPECT_EQ(creating.saveTitle(), "Create two lines");

    creating.name.set(longName);

    EXPECT_EQ(creating.saveTitle(), "Create " + repeated("a", 60) + "…");
    EXPECT_EQ(creating.previewName(), repeated("a", 60) + "…");
    EXPECT_EQ(creating.shownName(), longName);
}

TEST_F(ProfileEditorTest, ANameFromRightToLeftIsShownAndSavedAsItIs) {
    creating.name.set("עבודה");

    EXPECT_EQ(creating.saveTitle(), "Create עבודה");
    creating.save();

    EXPECT_EQ(store.profiles().back().name, "עבודה");
}

TEST_F(ProfileEditorTest, ThePreviewShowsTheNameUnderWhichTheProfileWouldBeSaved) {
    EXPECT_EQ(creating.previewName(), "New profile");
    EXPECT_EQ(editing.previewName(), "Work");
}

TEST_F(ProfileEditorTest, TheLookIsThatOfTheChosenColour) {
    EXPECT_EQ(editing.look().name, "Coral");

    editing.color.set(0);
    EXPECT_EQ(editing.look().name, "Sky");
}

TEST_F(ProfileEditorTest, AStoredColourOutsideTheTableIsShownInItAndKept) {
    store.update({work.id, "Work", "hammer.fill", 99});
    ProfileEditor editor{store, store.profile(work.id), done()};

    EXPECT_EQ(editor.look().name, "Ink");
    editor.save();

    EXPECT_EQ(store.profile(work.id).color, 99);
}

TEST_F(ProfileEditorTest, AllIconsAreToChooseFromUntilSomethingIsSearchedFor) {
    EXPECT_EQ(creating.icons(), ProfileIcons::icons(""));
    EXPECT_EQ(creating.iconsLabel(), "102 TO CHOOSE FROM");

    creating.search.set("sea");
    EXPECT_EQ(creating.icons(),
              (std::vector<std::string_view>{"anchor", "sailboat.fill", "fish.fill"}));
    EXPECT_EQ(creating.iconsLabel(), "3 TO CHOOSE FROM");
}

TEST_F(ProfileEditorTest, WithNoMatchTheLabelSaysZeroAndThereIsNoIcon) {
    creating.search.set("private sea");

    EXPECT_EQ(creating.icons(), std::vector<std::string_view>{});
    EXPECT_EQ(creating.iconsLabel(), "0 TO CHOOSE FROM");
}

TEST_F(ProfileEditorTest, ASearchLeavesTheChosenIcon) {
    creating.icon.set("anchor");

    creating.search.set("lock");

    EXPECT_EQ(creating.icon.get(), "anchor");
}

TEST_F(ProfileEditorTest, EachFieldTellsOnceWhenItChanges) {
    int changes = 0;
    creating.connectChanged([&] { ++changes; });

    creating.name.set("x");
    creating.icon.set("anchor");
    creating.color.set(7);
    creating.search.set("lock");
    EXPECT_EQ(changes, 4);

    creating.name.set("x");
    EXPECT_EQ(changes, 4);
}

TEST_F(ProfileEditorTest, SavingAnEditedProfileKeepsItsIdentityAndPlace) {
    editing.name.set(" Office ");
    editing.icon.set("anchor");
    editing.color.set(7);
    const Profile office{work.id, "Office", "anchor", 7};

    editing.save();

    EXPECT_EQ(store.profiles(), (std::vector{personal, office}));
    EXPECT_EQ(stored(), store.profiles());
    EXPECT_EQ(ends, Ends{office});
}

TEST_F(ProfileEditorTest, ThePersonalProfilesNameAndLookCanBeEdited) {
    ProfileEditor editor{store, personal, done()};
    editor.name.set("Me");
    editor.icon.set("star.fill");
    editor.color.set(3);

    editor.save();

    EXPECT_EQ(store.personal(), (Profile{Profile::personalID, "Me", "star.fill", 3}));
}

TEST_F(ProfileEditorTest, SavingANewProfileAppendsItUnderAFreshIdentity) {
    creating.name.set("Studio");
    creating.icon.set("anchor");
    creating.color.set(7);

    creating.save();

    ASSERT_EQ(store.profiles().size(), 3U);
    const Profile added = store.profiles().back();
    EXPECT_EQ(added, (Profile{added.id, "Studio", "anchor", 7}));
    EXPECT_NE(added.id, work.id);
    EXPECT_NE(added.id, Profile::personalID);
    EXPECT_EQ(stored(), store.profiles());
    EXPECT_EQ(ends, Ends{added});
}

TEST_F(ProfileEditorTest, ABlankNameIsSavedAsNewProfile) {
    creating.name.set(" \t ");
    editing.name.set("");

    creating.save();
    editing.save();

    EXPECT_EQ(store.profiles().back().name, "New profile");
    EXPECT_EQ(store.profile(work.id).name, "New profile");
}

TEST_F(ProfileEditorTest, SavingChangesTheStoreOnceBeforeItIsDone) {
    std::vector<std::size_t> endsAtChange;
    store.connectChanged([&] { endsAtChange.push_back(ends.size()); });

    creating.save();
    editing.save();

    EXPECT_EQ(endsAtChange, (std::vector<std::size_t>{0, 1}));
    EXPECT_EQ(ends.size(), 2U);
}

TEST_F(ProfileEditorTest, CancelSavesNothing) {
    const auto written = defaults.written;
    editing.name.set("Office");

    editing.cancel();
    creating.cancel();

    EXPECT_EQ(store.profiles(), (std::vector{personal, work}));
    EXPECT_EQ(defaults.written, written);
    EXPECT_EQ(ends, (Ends{std::nullopt, std::nullopt}));
}

TEST_F(ProfileEditorTest, ASecondPressDoesNothing) {
    creating.save();
    creating.save();
    creating.cancel();

    EXPECT_EQ(store.profiles().size(), 3U);
    EXPECT_EQ(ends.size(), 1U);
}

TEST_F(ProfileEditorTest, AProfileThatWasDeletedMeanwhileDoesNotComeBack) {
    store.remove(work);

    editing.save();

    EXPECT_EQ(store.profiles(), std::vector{personal});
    EXPECT_EQ(ends, Ends{work});
}

TEST_F(ProfileEditorTest, WhoeverHearsOfIsDoneMayEndTheEditor) {
    std::unique_ptr<ProfileEditor> editor;
    const auto end = [&](const std::optional<Profile>& profile) {
        editor.reset();
        ends.push_back(profile);
    };
    editor = std::make_unique<ProfileEditor>(store, work, end);
    editor->save();
    EXPECT_EQ(ends, Ends{work});

    editor = std::make_unique<ProfileEditor>(store, work, end);
    editor->cancel();
    EXPECT_EQ(ends, (Ends{work, std::nullopt}));
}

TEST_F(ProfileEditorTest, WhoeverHearsOfTheStoreMayEndTheEditorToo) {
    auto editor = std::make_unique<ProfileEditor>(store, std::nullopt, done());
    const auto connection = store.connectChanged([&] { editor.reset(); });

    editor->save();

    EXPECT_EQ(ends, Ends{store.profiles().back()});
}

TEST_F(ProfileEditorTest, EveryNameIsStoredAndReadBackAsItWasShown) {
    RandomText random{8203};
    for (int time = 0; time < 300; ++time) {
        ProfileEditor editor{store, work, done()};
        editor.name.set(random.text(30));
        const std::string shown = editor.shownName();

        editor.save();

        ASSERT_FALSE(trimmed(shown, TrimSet::whitespacesAndNewlines).empty());
        ASSERT_EQ(ProfileStore(defaults, {}).profile(work.id).name, shown);
    }
}

}  // namespace
}  // namespace orvu

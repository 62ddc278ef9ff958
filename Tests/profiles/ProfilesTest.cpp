#include "profiles/Profiles.h"

#include "fakes/FakeUserDefaults.h"

#include <gtest/gtest.h>

#include <set>

namespace orvu {
namespace {

Profile named(std::string name, std::int64_t color = 0) {
    return {Uuid::random(), std::move(name), "briefcase.fill", color};
}

class ProfileStoreTest : public testing::Test {
protected:
    /// A store of what is stored.
    ProfileStore open() {
        return ProfileStore{defaults, [this](const Uuid& id) { removedData.push_back(id); }};
    }
    ProfileStore open(const std::vector<Profile>& profiles) {
        defaults.setData("orvuProfiles", encodeRecords(profiles).value());
        return open();
    }
    std::optional<std::vector<Profile>> stored() const {
        const auto text = defaults.data("orvuProfiles");
        return text ? decodeRecords<Profile>(*text) : std::nullopt;
    }

    FakeUserDefaults defaults;
    std::vector<Uuid> removedData;
    const Profile personal = Profile::personal();
    const Profile work = named("Work", 5);
    const Profile home = named("Home", 0);
};

TEST_F(ProfileStoreTest, TheDefaultProfileIsPersonalInStone) {
    EXPECT_EQ(personal.id.string(), "00000000-0000-0000-0000-00000000F00D");
    EXPECT_EQ(personal.name, "Personal");
    EXPECT_EQ(personal.icon, "person.fill");
    EXPECT_EQ(personal.color, 10);
}

TEST_F(ProfileStoreTest, AFirstLaunchHasThePersonalProfileAloneAndWritesNothing) {
    const auto store = open();

    EXPECT_EQ(store.profiles(), std::vector{personal});
    EXPECT_TRUE(defaults.values.empty());
}

TEST_F(ProfileStoreTest, AStoredEmptyArrayAndStoredGarbageBothGiveTheDefaultProfile) {
    for (const std::string_view bad :
         {"[]", "", "garbage", "{}", "null", "[{}]", "[null]", "[{\"id\":\"x\"}]"}) {
        defaults.setData("orvuProfiles", bad);

        const auto store = open();

        EXPECT_EQ(store.profiles(), std::vector{personal}) << bad;
        EXPECT_EQ(defaults.data("orvuProfiles"), bad);
    }
}

TEST_F(ProfileStoreTest, AListStoredInAnotherTypeGivesTheDefaultProfile) {
    defaults.setString("orvuProfiles", encodeRecords(std::vector{work}).value());

    EXPECT_EQ(open().profiles(), std::vector{personal});
}

TEST_F(ProfileStoreTest, AStoredListKeepsItsOrder) {
    const auto store = open({work, personal, home});

    EXPECT_EQ(store.profiles(), (std::vector{work, personal, home}));
}

TEST_F(ProfileStoreTest, OneBadProfileFailsTheWholeList) {
    auto text = encodeRecords(std::vector{work, home}).value();
    text.insert(text.size() - 1, R"(,{"id":"bad","name":"x","icon":"y","color":1})");
    defaults.setData("orvuProfiles", text);

    EXPECT_EQ(open().profiles(), std::vector{personal});
}

TEST_F(ProfileStoreTest, AProfileIsFoundByItsIdentity) {
    const auto store = open({personal, work, home});

    EXPECT_EQ(store.profile(home.id), home);
}

TEST_F(ProfileStoreTest, NoIdentityAndADeletedOneGiveThePersonalProfile) {
    auto store = open({work, personal});
    store.remove(work);

    EXPECT_EQ(store.profile(std::nullopt), personal);
    EXPECT_EQ(store.profile(work.id), personal);
}

TEST_F(ProfileStoreTest, WithoutAPersonalProfileTheFirstOneServes) {
    const auto store = open({work, home});

    EXPECT_EQ(store.personal(), work);
    EXPECT_EQ(store.profile(std::nullopt), work);
    EXPECT_EQ(store.profile(Profile::personalID), work);
}

TEST_F(ProfileStoreTest, APersonalProfileThatWasRenamedIsStillThePersonalOne) {
    const Profile renamed{Profile::personalID, "Me", "star", 3};
    const auto store = open({work, renamed});

    EXPECT_EQ(store.personal(), renamed);
}

TEST_F(ProfileStoreTest, UpdateReplacesTheFirstOfItsIdentityWholeAndSaves) {
    auto store = open({personal, work, home});
    int changes = 0;
    store.connectChanged([&] { ++changes; });
    const Profile changed{work.id, "Studio", "paintbrush", 7};

    store.update(changed);

    EXPECT_EQ(store.profiles(), (std::vector{personal, changed, home}));
    EXPECT_EQ(stored(), store.profiles());
    EXPECT_EQ(changes, 1);
}

TEST_F(ProfileStoreTest, UpdateOfAnUnknownProfileLeavesListAndStoredValueAsTheyWere) {
    auto store = open({personal, work});
    const auto values = defaults.values;
    const auto written = defaults.written;
    int changes = 0;
    store.connectChanged([&] { ++changes; });

    store.update(home);

    EXPECT_EQ(store.profiles(), (std::vector{personal, work}));
    EXPECT_EQ(defaults.values, values);
    EXPECT_EQ(defaults.written, written);
    EXPECT_EQ(changes, 0);
}

TEST_F(ProfileStoreTest, TheFirstChangeWritesTheDefaultProfile) {
    auto store = open();
    Profile renamed = personal;
    renamed.name = "Me";

    store.update(renamed);

    EXPECT_EQ(stored(), std::vector{renamed});
}

TEST_F(ProfileStoreTest, AChangeReplacesABadStoredValue) {
    defaults.setData("orvuProfiles", "garbage");
    auto store = open();

    store.update(personal);

    EXPECT_EQ(stored(), std::vector{personal});
}

TEST_F(ProfileStoreTest, AddAppendsAndSavesBeforeItsOneSignal) {
    auto store = open({home, personal});
    std::vector<std::optional<std::vector<Profile>>> seen;
    store.connectChanged([&] { seen.push_back(stored()); });

    store.add(work);

    EXPECT_EQ(store.profiles(), (std::vector{home, personal, work}));
    EXPECT_EQ(seen, (std::vector<std::optional<std::vector<Profile>>>{store.profiles()}));
}

TEST_F(ProfileStoreTest, TheFirstProfileAddedIsStoredBehindTheDefaultOne) {
    auto store = open();

    store.add(work);

    EXPECT_EQ(stored(), (std::vector{personal, work}));
}

TEST_F(ProfileStoreTest, AddOfAKnownIdentityChangesNothing) {
    auto store = open({personal, work});
    const auto written = defaults.written;
    int changes = 0;
    store.connectChanged([&] { ++changes; });

    store.add({work.id, "Twin", "x", 1});

    EXPECT_EQ(store.profiles(), (std::vector{personal, work}));
    EXPECT_EQ(defaults.written, written);
    EXPECT_EQ(changes, 0);
}

TEST_F(ProfileStoreTest, RemoveKeepsTheOrderOfTheOthersAndSavesBeforeTheSignal) {
    auto store = open({home, personal, work});
    std::optional<std::vector<Profile>> seen;
    store.connectChanged([&] { seen = stored(); });

    store.remove(home);

    EXPECT_EQ(store.profiles(), (std::vector{personal, work}));
    EXPECT_EQ(seen, (std::vector{personal, work}));
}

TEST_F(ProfileStoreTest, RemoveOfThePersonalProfileChangesNothingAndRemovesNoKey) {
    auto store = open({personal, work});
    const auto values = defaults.values;
    const auto written = defaults.written;
    int changes = 0;
    store.connectChanged([&] { ++changes; });

    store.remove({Profile::personalID, "Another name", "x", 1});

    EXPECT_EQ(store.profiles(), (std::vector{personal, work}));
    EXPECT_EQ(defaults.values, values);
    EXPECT_EQ(defaults.written, written);
    EXPECT_EQ(defaults.removed, std::vector<std::string>{});
    EXPECT_EQ(removedData, std::vector<Uuid>{});
    EXPECT_EQ(changes, 0);
}

TEST_F(ProfileStoreTest, RemoveClearsOnlyTheFiveKeysOfThatProfileAndItsWebsiteData) {
    auto store = open({personal, work, home});
    const std::vector<std::string> bases{"browserVisits", "browserShelf", "browserSession",
                                         "browserGroups", "orvuBookmarks"};
    std::vector<std::string> expected;
    for (const auto& base : bases) {
        for (const auto& profile : {personal, work, home}) {
            defaults.setData(scopedKey(base, profile), "[]");
        }
        expected.push_back(base + "." + work.id.string());
    }
    defaults.setString("searchEngine", "bing");
    defaults.setString("searchEngine." + work.id.string(), "not a key of ours");
    auto left = defaults.values;
    for (const auto& key : expected) left.erase(key);
    left.insert_or_assign(
        "orvuProfiles", FakeUserDefaults::Data{encodeRecords(std::vector{personal, home}).value()});

    store.remove(work);

    EXPECT_EQ(defaults.removed, expected);
    EXPECT_EQ(defaults.values, left);
    EXPECT_EQ(removedData, std::vector{work.id});
}

TEST_F(ProfileStoreTest, RemoveTakesEveryEntryOfThatIdentity) {
    const Profile twin{work.id, "Twin", "x", 1};
    auto store = open({work, personal, twin});

    store.remove(work);

    EXPECT_EQ(store.profiles(), std::vector{personal});
}

TEST_F(ProfileStoreTest, RemoveMayBeGivenAnEntryOfTheListItself) {
    auto store = open({personal, work, home});

    store.remove(store.profiles()[1]);

    EXPECT_EQ(store.profiles(), (std::vector{personal, home}));
    EXPECT_EQ(removedData, std::vector{work.id});
}

TEST_F(ProfileStoreTest, RemovingTheLastProfileFallsBackToTheDefaultPersonalOne) {
    auto store = open({work});

    store.remove(work);

    EXPECT_EQ(store.profiles(), std::vector{personal});
    EXPECT_EQ(stored(), std::vector{personal});
}

TEST_F(ProfileStoreTest, AFullDiskLeavesThePreviousValueAndTheChangeInMemory) {
    auto store = open({personal, work});
    defaults.diskFull = true;
    const Profile changed{work.id, "Studio", "x", 1};

    store.update(changed);

    EXPECT_EQ(store.profiles(), (std::vector{personal, changed}));
    EXPECT_EQ(stored(), (std::vector{personal, work}));
}

TEST_F(ProfileStoreTest, ANewProfileHasAFreshIdentityAndNoName) {
    const auto store = open({personal});

    const Profile first = store.newProfile();
    const Profile second = store.newProfile();

    EXPECT_EQ(first.name, "");
    EXPECT_EQ(first.icon, "briefcase.fill");
    EXPECT_NE(first.id, second.id);
    EXPECT_EQ(store.profiles(), std::vector{personal});
}

TEST_F(ProfileStoreTest, WithFiveProfilesTheNextOneHasColour11AndWithTwelveColour0) {
    std::vector<Profile> profiles;
    while (profiles.size() < 5) profiles.push_back(named("x"));
    EXPECT_EQ(open(profiles).newProfile().color, 11);

    while (profiles.size() < 12) profiles.push_back(named("x"));
    EXPECT_EQ(open(profiles).newProfile().color, 0);
}

TEST_F(ProfileStoreTest, TwelveNewProfilesInARowHaveTwelveColours) {
    std::vector<Profile> profiles{personal};
    std::set<std::int64_t> colours;
    for (int i = 0; i < 12; ++i) {
        profiles.push_back(open(profiles).newProfile());
        colours.insert(profiles.back().color);
    }

    EXPECT_EQ(colours.size(), 12U);
}

TEST_F(ProfileStoreTest, ThePersonalProfilesKeysAreBareAndTheOthersCarryTheirIdentity) {
    const Profile other{*Uuid::parse("0badcafe-0000-4000-8000-00000000f00d"), "x", "y", 0};

    EXPECT_EQ(scopedKey("browserVisits", personal), "browserVisits");
    EXPECT_EQ(scopedKey("browserVisits", {Profile::personalID, "renamed", "x", 3}),
              "browserVisits");
    EXPECT_EQ(scopedKey("browserVisits", other),
              "browserVisits.0BADCAFE-0000-4000-8000-00000000F00D");
}

TEST(ProfileTest, IsWrittenWithExactlyTheseFields) {
    const std::vector profiles{Profile::personal()};

    EXPECT_EQ(encodeRecords(profiles),
              R"([{"id":"00000000-0000-0000-0000-00000000F00D","name":"Personal",)"
              R"("icon":"person.fill","color":10}])");
}

TEST(ProfileTest, IsReadBackAsItWas) {
    const std::vector profiles{
        Profile{Uuid::random(), "", "", -1}, Profile{Uuid::random(), "Ünïcode \"x\" \n", "a.b", 99},
        Profile{Uuid::random(), "x", "y", std::numeric_limits<std::int64_t>::max()}};

    EXPECT_EQ(decodeRecords<Profile>(encodeRecords(profiles).value()), profiles);
}

TEST(ProfileTest, EveryFieldIsRequired) {
    const auto decode = [](std::string_view json) { return decodeRecords<Profile>(json); };
    constexpr std::string_view id = R"("id":"0badcafe-0000-4000-8000-00000000f00d")";
    const auto with = [&](std::string_view rest) {
        return "[{" + std::string{id} + std::string{rest} + "}]";
    };

    EXPECT_TRUE(decode(with(R"(,"name":"x","icon":"y","color":2.0,"more":{})")));
    EXPECT_FALSE(decode(with(R"(,"name":"x","icon":"y")")));
    EXPECT_FALSE(decode(with(R"(,"name":"x","icon":"y","color":null)")));
    EXPECT_FALSE(decode(with(R"(,"name":"x","icon":"y","color":2.5)")));
    EXPECT_FALSE(decode(with(R"(,"name":"x","icon":"y","color":"2")")));
    EXPECT_FALSE(decode(with(R"(,"name":"x","color":2)")));
    EXPECT_FALSE(decode(with(R"(,"icon":"y","color":2)")));
    EXPECT_FALSE(decode(R"([{"name":"x","icon":"y","color":2}])"));
}

}  // namespace
}  // namespace orvu

#include "site/permissions/SitePermissions.h"

#include "fakes/FakeUserDefaults.h"
#include "foundation/RandomText.h"
#include "support/StoreWorld.h"

namespace orvu {
namespace {

using Choice = SitePermissions::Choice;
using Kind = SitePermissions::Kind;
using Type = MediaCaptureType;
using enum PermissionDecision;

class SitePermissionsTest : public testing::Test {
protected:
    void choose(Choice choice, Kind kind, std::string_view host) {
        permissions.set(choice, kind, host, Persistence::persistent);
    }
    [[nodiscard]] PermissionDecision decision(Type type, std::string_view host) const {
        return permissions.decision(type, host, Persistence::persistent);
    }
    [[nodiscard]] std::string stored() const {
        return defaults.data("orvuSitePermissions").value_or("");
    }
    [[nodiscard]] static SitePermissions::Choices restart(UserDefaults& defaults) {
        return SitePermissions{defaults}.choices();
    }

    FakeUserDefaults defaults;
    SitePermissions permissions{defaults};
};

TEST_F(SitePermissionsTest, CameraAllowedAndMicrophoneAskedForPromptsForBoth) {
    choose(Choice::allow, Kind::camera, "a.example");
    choose(Choice::ask, Kind::microphone, "a.example");

    EXPECT_EQ(decision(Type::cameraAndMicrophone, "a.example"), prompt);
}

TEST_F(SitePermissionsTest, CameraBlockedAndMicrophoneAllowedDeniesBoth) {
    choose(Choice::block, Kind::camera, "a.example");
    choose(Choice::allow, Kind::microphone, "a.example");

    EXPECT_EQ(decision(Type::cameraAndMicrophone, "a.example"), deny);
    EXPECT_EQ(decision(Type::microphone, "a.example"), grant);
}

TEST_F(SitePermissionsTest, BothAllowedGrantsBoth) {
    choose(Choice::allow, Kind::camera, "a.example");
    choose(Choice::allow, Kind::microphone, "a.example");

    EXPECT_EQ(decision(Type::cameraAndMicrophone, "a.example"), grant);
}

TEST_F(SitePermissionsTest, NothingStoredPrompts) {
    for (const auto type : {Type::camera, Type::microphone, Type::cameraAndMicrophone}) {
        EXPECT_EQ(decision(type, "a.example"), prompt);
    }
    EXPECT_TRUE(defaults.written.empty());
}

TEST_F(SitePermissionsTest, AChoiceForTheBareHostDoesNotApplyToTheOneWithWww) {
    choose(Choice::allow, Kind::camera, "a.example");

    EXPECT_EQ(decision(Type::camera, "www.a.example"), prompt);
    EXPECT_EQ(decision(Type::camera, "A.example"), prompt);
}

TEST_F(SitePermissionsTest, AskAfterBlockStoresAskAndPromptsAgain) {
    choose(Choice::block, Kind::camera, "a.example");
    ASSERT_EQ(decision(Type::camera, "a.example"), deny);

    choose(Choice::ask, Kind::camera, "a.example");

    EXPECT_EQ(decision(Type::camera, "a.example"), prompt);
    EXPECT_EQ(stored(), R"({"a.example|camera":"ask"})");
}

TEST_F(SitePermissionsTest, TheStoredFormIsOneObjectOfHostsWithKinds) {
    choose(Choice::block, Kind::microphone, "b.example");
    choose(Choice::allow, Kind::camera, "a.example");
    choose(Choice::ask, Kind::camera, "");

    EXPECT_EQ(stored(),
              R"({"a.example|camera":"allow","b.example|microphone":"block","|camera":"ask"})");
}

TEST_F(SitePermissionsTest, ChoicesSurviveARestart) {
    choose(Choice::block, Kind::microphone, "b.example");
    choose(Choice::allow, Kind::camera, "a.example");

    EXPECT_EQ(restart(defaults), permissions.choices());
    EXPECT_EQ(restart(defaults).size(), 2u);
}

TEST_F(SitePermissionsTest, AnyChoiceForAnyHostSurvivesARestart) {
    RandomText random{7};
    for (int round = 0; round < 300; ++round) {
        FakeUserDefaults fresh;
        SitePermissions before{fresh};
        for (int i = 0; i < 8; ++i) {
            const std::string host = random.text(12) + (i % 3 == 0 ? "|" : "");
            before.set(SitePermissions::allChoices[random.below(3)],
                       SitePermissions::allKinds[random.below(2)], host, Persistence::persistent);
        }

        EXPECT_EQ(restart(fresh), before.choices());
    }
}

TEST_F(SitePermissionsTest, AHostThatIsNoTextLosesNothingOfTheOthers) {
    choose(Choice::allow, Kind::camera, "a.example");

    choose(Choice::block, Kind::camera, "\xff\xfe");

    EXPECT_EQ(decision(Type::camera, "\xff\xfe"), deny);
    EXPECT_EQ(restart(defaults).at("a.example|camera"), Choice::allow);
}

TEST_F(SitePermissionsTest, MissingOrMalformedDataLeaveTheMapEmpty) {
    const std::vector<std::string> malformed{
        "",
        "null",
        "[]",
        "{",
        R"("a|camera")",
        R"({"a|camera":"allow"} )" + std::string(1, '\0'),
        R"({"a|camera":"maybe"})",
        R"({"a|camera":"Allow"})",
        R"({"a|camera":null})",
        R"({"a|camera":1})",
        R"({"a|camera":{"b":"allow"}})",
        R"({"a|camera":"allow","b|camera":["allow"]})",
        "{\"a|camera\xff\":\"allow\"}",
    };
    for (const auto& text : malformed) {
        FakeUserDefaults damaged;
        damaged.setData("orvuSitePermissions", text);

        EXPECT_TRUE(restart(damaged).empty()) << text;
    }
    defaults.setString("orvuSitePermissions", R"({"a|camera":"allow"})");
    EXPECT_TRUE(restart(defaults).empty()) << "a value of another type";
}

TEST_F(SitePermissionsTest, KeysOfOtherFormsAreKept) {
    defaults.setData("orvuSitePermissions", R"({"x":"allow","a|b|camera":"block"})");
    SitePermissions again{defaults};

    again.set(Choice::allow, Kind::camera, "a", Persistence::persistent);

    EXPECT_EQ(stored(), R"({"a|b|camera":"block","a|camera":"allow","x":"allow"})");
}

TEST_F(SitePermissionsTest, WhatCanNotBeStoredStillCounts) {
    defaults.diskFull = true;

    choose(Choice::allow, Kind::camera, "a.example");

    EXPECT_EQ(decision(Type::camera, "a.example"), grant);
    EXPECT_EQ(stored(), "");
}

TEST_F(SitePermissionsTest, EachOtherChoiceIsToldOnceAfterItWasSaved) {
    std::vector<std::string> seen;
    permissions.connectChanged([&] { seen.push_back(stored()); });

    choose(Choice::allow, Kind::camera, "a");
    choose(Choice::allow, Kind::camera, "a");

    EXPECT_EQ(seen, std::vector<std::string>{R"({"a|camera":"allow"})"});
}

TEST_F(SitePermissionsTest, AChoiceMadeInAPrivateWindowIsNeverWrittenAndCountsThereAlone) {
    permissions.set(Choice::allow, Kind::camera, "a.example", Persistence::ephemeral);
    choose(Choice::block, Kind::microphone, "b.example");

    EXPECT_EQ(permissions.decision(Type::camera, "a.example", Persistence::ephemeral), grant);
    EXPECT_EQ(permissions.decision(Type::camera, "a.example", Persistence::persistent), prompt);
    EXPECT_EQ(stored(), R"({"b.example|microphone":"block"})");
}

TEST_F(SitePermissionsTest, PrivateWindowsFollowTheChoicesOfOthers) {
    choose(Choice::block, Kind::camera, "a.example");

    EXPECT_EQ(permissions.decision(Type::camera, "a.example", Persistence::ephemeral), deny);
}

TEST_F(SitePermissionsTest, TheLastChoiceCountsInPrivateWindowsWhereverItWasMade) {
    permissions.set(Choice::allow, Kind::camera, "a.example", Persistence::ephemeral);
    const ChangeCounter changes{permissions};

    choose(Choice::block, Kind::camera, "a.example");

    EXPECT_EQ(permissions.decision(Type::camera, "a.example", Persistence::ephemeral), deny);
    EXPECT_EQ(changes.count(), 1);
}

}  // namespace
}  // namespace orvu

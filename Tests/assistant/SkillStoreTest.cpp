#include "assistant/SkillStore.h"

#include "fakes/FakeUserDefaults.h"
#include "foundation/text/Text.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace orvu {
namespace {

using Strings = std::vector<std::string>;

Strings names(const std::vector<KestoSkill>& skills) {
    Strings result;
    for (const auto& skill : skills) result.push_back(skill.name);
    return result;
}

class SkillStoreTest : public testing::Test {
protected:
    /// As after another start of the program.
    void startAgain() { store = std::make_unique<SkillStore>(defaults); }
    void leave(std::string bytes) {
        defaults.values.insert_or_assign("kestoSkills", FakeUserDefaults::Data{std::move(bytes)});
        startAgain();
    }
    [[nodiscard]] std::string stored() const { return defaults.data("kestoSkills").value_or(""); }

    FakeUserDefaults defaults;
    std::unique_ptr<SkillStore> store = std::make_unique<SkillStore>(defaults);
};

TEST_F(SkillStoreTest, FiveSkillsAreBuiltIn) {
    const auto& skills = SkillStore::builtIn();

    EXPECT_EQ(names(skills), (Strings{"sum", "compare", "todo", "explain", "translate"}));
    EXPECT_EQ(skills[0].instruction, "Sum up the page in three short lines.");
    EXPECT_EQ(skills[1].instruction,
              "Compare these pages: what they share, how they differ, and which fits best.");
    EXPECT_EQ(skills[2].instruction, "Turn the page into a short to-do list.");
    EXPECT_EQ(skills[3].instruction, "Explain the page simply, as if to a friend.");
    EXPECT_EQ(skills[4].instruction, "Translate the main points of the page into English.");
    for (const auto& skill : skills) EXPECT_TRUE(skill.builtIn);
    EXPECT_TRUE(store->custom().empty());
}

TEST_F(SkillStoreTest, TheEmptyQueryMatchesAllWithTheProgramsOwnFirst) {
    store->add("b", "Do b.");
    store->add("a", "Do a.");

    EXPECT_EQ(names(store->matching("")),
              (Strings{"sum", "compare", "todo", "explain", "translate", "b", "a"}));
}

TEST_F(SkillStoreTest, AQueryMatchesTheBeginningsOfNamesInAnyCase) {
    store->add("table", "Make a table.");

    EXPECT_EQ(names(store->matching("T")), (Strings{"todo", "translate", "table"}));
    EXPECT_EQ(names(store->matching("ta")), Strings{"table"});
    EXPECT_EQ(names(store->matching("able")), Strings{});
}

TEST_F(SkillStoreTest, ANameBecomesOneWordInLowerCase) {
    const auto added = store->add("Draft Reply", "  Be kind. \n");

    ASSERT_TRUE(added);
    EXPECT_EQ(added->name, "draft-reply");
    EXPECT_EQ(added->instruction, "Be kind.");
    EXPECT_FALSE(added->builtIn);
    EXPECT_EQ(store->custom(), std::vector{*added});
}

TEST_F(SkillStoreTest, EachBlankOfANameBecomesAHyphen) {
    EXPECT_EQ(store->add(" my  skill ", "x")->name, "-my--skill-");
    EXPECT_EQ(store->add("  ", "x")->name, "--");
    EXPECT_EQ(store->add("a\tb\nc\u00a0d", "x")->name, "a-b-c-d");
    EXPECT_EQ(store->add("/x/y/", "x")->name, "xy");
}

TEST_F(SkillStoreTest, ANameThatIsTakenIsRefused) {
    EXPECT_FALSE(store->add("/Sum", "Do it."));
    ASSERT_TRUE(store->add("mine", "Do it."));
    EXPECT_FALSE(store->add("MINE", "Do it again."));

    EXPECT_EQ(names(store->custom()), Strings{"mine"});
}

TEST_F(SkillStoreTest, AnEmptyNameOrInstructionIsRefused) {
    EXPECT_FALSE(store->add("", "Do it."));
    EXPECT_FALSE(store->add("//", "Do it."));
    EXPECT_FALSE(store->add("mine", ""));
    EXPECT_FALSE(store->add("mine", " \n\t"));
    EXPECT_EQ(stored(), "");
}

TEST_F(SkillStoreTest, AnInstructionIsCutTo600Characters) {
    std::string text;
    for (int each = 0; each < 700; ++each) text += "e\u0301";

    EXPECT_EQ(characterCount(store->add("long", text)->instruction), 600U);
}

TEST_F(SkillStoreTest, SkillsAreStoredUnderTheirFourKeysAndComeBack) {
    const auto added = store->add("mine", "Do \"it\".");

    EXPECT_EQ(stored(), R"([{"id":")" + added->id.string() +
                            R"(","name":"mine","instruction":"Do \"it\".","builtIn":false}])");
    startAgain();
    EXPECT_EQ(store->custom(), std::vector{*added});
}

TEST_F(SkillStoreTest, ARemovedSkillStaysAway) {
    store->add("a", "x");
    const auto b = store->add("b", "x");
    store->remove(store->custom().front());

    EXPECT_EQ(store->custom(), std::vector{*b});
    startAgain();
    EXPECT_EQ(store->custom(), std::vector{*b});
}

TEST_F(SkillStoreTest, RemovingABuiltInSkillWritesTheListAgainAndChangesNothing) {
    store->add("a", "x");
    defaults.written.clear();

    store->remove(SkillStore::builtIn().front());

    EXPECT_EQ(names(store->custom()), Strings{"a"});
    EXPECT_EQ(SkillStore::builtIn().size(), 5U);
    EXPECT_EQ(defaults.written, Strings{"kestoSkills"});
}

TEST_F(SkillStoreTest, WhatCantBeReadIsKeptUntilTheNextChange) {
    for (const std::string bytes :
         {"", "{", "[{}]", "7", "\xff",
          R"([{"id":"x","name":"a","instruction":"b","builtIn":false}])",
          R"([{"id":"11111111-2222-3333-4444-555555555555","name":"a","instruction":"b"}])"}) {
        leave(bytes);
        EXPECT_TRUE(store->custom().empty()) << bytes;
        EXPECT_EQ(names(store->matching("su")), Strings{"sum"});
        EXPECT_EQ(stored(), bytes);
    }
    store->add("mine", "x");
    startAgain();
    EXPECT_EQ(names(store->custom()), Strings{"mine"});
}

TEST_F(SkillStoreTest, ObserversHearOfEachChange) {
    int heard = 0;
    store->connectChanged([&] { ++heard; });

    store->add("a", "x");
    store->add("sum", "x");
    EXPECT_EQ(heard, 1);
    store->remove(store->custom().front());
    EXPECT_EQ(heard, 2);
}

TEST_F(SkillStoreTest, WhateverIsAddedComesBackAsItWas) {
    std::mt19937 random{11};
    const Strings parts{"a",  " ",  "/",    "\n",   "e\u0301", "\U0001F600",
                        "\"", "\\", "\x01", "\xff", "A"};
    const auto text = [&] {
        std::string result;
        for (auto left = random() % 8; left > 0; --left) result += parts[random() % parts.size()];
        return result;
    };
    for (int round = 0; round < 300; ++round) store->add(text(), text());
    const auto before = names(store->custom());
    startAgain();
    EXPECT_EQ(store->custom().size(), before.size());
    for (const auto& skill : store->custom()) {
        EXPECT_FALSE(skill.name.empty() || skill.instruction.empty());
        EXPECT_EQ(skill.name.find_first_of("/ \n"), std::string::npos);
    }
}

}  // namespace
}  // namespace orvu

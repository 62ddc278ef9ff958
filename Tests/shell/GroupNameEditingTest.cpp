#include "shell/column/GroupNameEditing.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

class GroupNameEditingTest : public StoreTest {
protected:
    GroupNameEditingTest() {
        group = store->newGroup(*store->active())->id;
        store->rename(store->groups()[0], "Old");
    }
    [[nodiscard]] const std::string& name() const { return store->groups()[0].name; }

    std::unique_ptr<BrowserStore> store = openStoreWith({a});
    Uuid group;
};

TEST_F(GroupNameEditingTest, EditingStartsFromTheGroupsName) {
    GroupNameEditing editing{*store, group};

    EXPECT_FALSE(editing.isEditing());
    EXPECT_EQ(editing.begin(), "Old");
    EXPECT_TRUE(editing.isEditing());
}

TEST_F(GroupNameEditingTest, ReturnRenamesAndEndsTheEditing) {
    GroupNameEditing editing{*store, group};
    editing.begin();

    editing.confirm("New");

    EXPECT_FALSE(editing.isEditing());
    EXPECT_EQ(name(), "New");
}

TEST_F(GroupNameEditingTest, EscapeLeavesTheNameAsItWas) {
    GroupNameEditing editing{*store, group};
    editing.begin();

    editing.cancel();
    editing.leave("New");

    EXPECT_FALSE(editing.isEditing());
    EXPECT_EQ(name(), "Old");
}

TEST_F(GroupNameEditingTest, BlankNameKeepsTheOldOne) {
    GroupNameEditing editing{*store, group};
    editing.begin();

    editing.confirm("  \t ");

    EXPECT_FALSE(editing.isEditing());
    EXPECT_EQ(name(), "Old");
}

TEST_F(GroupNameEditingTest, LeavingTheFieldKeepsWhatWasTyped) {
    GroupNameEditing editing{*store, group};
    editing.begin();

    editing.leave("New");

    EXPECT_FALSE(editing.isEditing());
    EXPECT_EQ(name(), "New");
}

TEST_F(GroupNameEditingTest, LeavingTheFieldUntouchedSavesNothing) {
    GroupNameEditing editing{*store, group};
    editing.begin();
    const ChangeCounter changes{*store};

    editing.leave("Old");

    EXPECT_FALSE(editing.isEditing());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(GroupNameEditingTest, OneEditingAnswersOnce) {
    GroupNameEditing editing{*store, group};
    editing.begin();

    editing.confirm("First");
    editing.leave("Second");
    editing.confirm("Third");

    EXPECT_EQ(name(), "First");
}

TEST_F(GroupNameEditingTest, GroupThatEndedMeanwhileIsNotRenamed) {
    GroupNameEditing editing{*store, group};
    editing.begin();
    store->ungroup(store->groups()[0]);
    const ChangeCounter changes{*store};

    editing.confirm("New");

    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(editing.begin(), std::nullopt);
    EXPECT_FALSE(editing.isEditing());
}

}  // namespace
}  // namespace orvu

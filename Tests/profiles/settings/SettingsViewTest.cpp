#include "profiles/settings/SettingsView.h"

#include "fakes/FakeImportWindow.h"
#include "look/text/PlatformText.h"
#include "support/StoreWorld.h"
#include "support/UpdateWorld.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace orvu {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class SettingsViewTest : public StoreTest {
protected:
    [[nodiscard]] SettingsView::Section section(std::string_view title) {
        for (auto& each : view.sections()) {
            if (each.title == title) return each;
        }
        ADD_FAILURE() << "no section " << title;
        return {};
    }
    /// What stands in a section, from top to bottom.
    [[nodiscard]] Strings texts(std::string_view title) {
        struct Teller {
            std::string operator()(const SettingsView::Switch& row) {
                return std::string{row.label};
            }
            std::string operator()(const SettingsView::EnginePicker& row) {
                return std::string{row.label};
            }
            std::string operator()(const SettingsView::Button& row) {
                return std::string{row.label} + "|" + std::string{row.title};
            }
            std::string operator()(const SettingsView::Status& row) {
                return row.status->title() + ": " + row.status->line() + "|" +
                       std::string{row.status->buttonTitle()};
            }
            std::string operator()(const SettingsView::Caption& row) { return row.text; }
            std::string operator()(const SettingsView::Skill& row) {
                return row.name + ": " + row.instruction;
            }
        };
        Strings result;
        for (const auto& row : section(title).rows) result.push_back(std::visit(Teller{}, row));
        return result;
    }
    template <class Row>
    [[nodiscard]] std::vector<Row> rows(std::string_view title) {
        std::vector<Row> result;
        for (const auto& row : section(title).rows) {
            if (const auto* const found = std::get_if<Row>(&row)) result.push_back(*found);
        }
        return result;
    }
    void press(std::string_view title) {
        for (const auto& each : view.sections()) {
            for (const auto& row : each.rows) {
                const auto* const button = std::get_if<SettingsView::Button>(&row);
                if (button && button->title == title) return button->press();
            }
        }
        FAIL() << "no button " << title;
    }
    [[nodiscard]] Setting<bool>& setting(std::string_view label) {
        for (const auto& each : view.sections()) {
            for (const auto& row : each.rows) {
                const auto* const found = std::get_if<SettingsView::Switch>(&row);
                if (found && found->label == label) return *found->setting;
            }
        }
        ADD_FAILURE() << "no switch " << label;
        return world.services.settings().restoreTabs;
    }

    SkillStore skills{world.defaults};
    int madeDefault = 0;
    FakeImportWindow import;
    UpdateWorld updates;
    int restarts = 0;
    SettingsView view{{world.services, skills, updates.updater, import},
                      {[this] { ++madeDefault; }, [this] { ++restarts; }}};
};

TEST_F(SettingsViewTest, SectionsStandInTheirOrder) {
    Strings titles;
    for (const auto& each : view.sections()) titles.emplace_back(each.title);

    EXPECT_EQ(titles, (Strings{"General", "Updates", "Search", "Privacy", "Kesto", "Tabs"}));
}

TEST_F(SettingsViewTest, UpdatesHaveTheirSwitchTheirStateAndTheirNotes) {
    EXPECT_EQ(texts("Updates"),
              (Strings{"Update Orvu automatically",
                       "Orvu 1.0: Orvu checks for updates on its own.|Check Now", "|What's New"}));
    EXPECT_TRUE(rows<SettingsView::Switch>("Updates").front().isEnabled);

    press("What's New");

    EXPECT_EQ(world.workspace.opened, Strings{"https://updates.example/orvu/whats-new/"});
}

TEST_F(SettingsViewTest, ACopyThatTheSystemKeepsCurrentHasNothingToSwitch) {
    updates.installer.supported = UpdateSupport::system;

    EXPECT_FALSE(rows<SettingsView::Switch>("Updates").front().isEnabled);
    EXPECT_EQ(texts("Updates").at(1),
              "Orvu 1.0: Updates of Orvu come with the system's; ask the administrator of this "
              "computer.|Check Now");
}

TEST_F(SettingsViewTest, AnUpdateThatIsReadyIsFinishedByAsking) {
    updates.makeReady();

    rows<SettingsView::Status>("Updates").front().status->press();

    EXPECT_EQ(restarts, 1);
    EXPECT_EQ(updates.kind(), Updater::State::Kind::ready);
}

TEST_F(SettingsViewTest, ImportingFromThereIsIntoThePersonalProfile) {
    press("Import from Another Browser…");

    EXPECT_THAT(import.shown, ElementsAre(std::nullopt));
}

TEST_F(SettingsViewTest, EachSectionHasItsRows) {
    EXPECT_EQ(texts("General"), (Strings{"Default browser|Make Orvu Your Default Browser",
                                         "Reopen your tabs when Orvu starts",
                                         "Bookmarks and history|Import from Another Browser…"}));
    EXPECT_EQ(texts("Search"),
              (Strings{"Search engine", "Show search suggestions as you type",
                       "What you type goes to your search engine to suggest searches. Never from "
                       "private windows.",
                       "Kesto answers beside search results",
                       "Type !w, !yt, !m, !d, !gh or !i before a search to send it somewhere "
                       "else."}));
    EXPECT_EQ(texts("Privacy"), (Strings{"Block well-known trackers",
                                         "Applies to windows you open after changing it.",
                                         "|Clear History…", "|Clear All Website Data…"}));
    EXPECT_EQ(
        texts("Kesto"),
        (Strings{"Let Kesto read pages when you ask",
                 "Answers are worked out on this Mac with Apple’s on-device model. Private "
                 "windows never share pages.",
                 "Your skills appear here. Type / in the Kesto panel and choose New skill."}));
    EXPECT_EQ(texts("Tabs"), Strings{"Narrow tab column in new windows"});
}

TEST_F(SettingsViewTest, NothingNamesAnotherPlatformOnThisDesktop) {
    for (const auto& each : view.sections()) {
        for (const auto& text : texts(each.title)) {
            const std::string shown = platformText(text);
            EXPECT_FALSE(shown.contains("Mac")) << shown;
            EXPECT_FALSE(shown.contains("Apple")) << shown;
        }
    }
    EXPECT_THAT(platformText(texts("Kesto")[1]),
                "Answers are worked out on this computer with a model that runs here. Private "
                "windows never share pages.");
}

TEST_F(SettingsViewTest, ASwitchIsItsSettingInAllWindows) {
    Settings& settings = world.services.settings();
    const std::vector<std::pair<std::string_view, Setting<bool>*>> expected{
        {"Reopen your tabs when Orvu starts", &settings.restoreTabs},
        {"Show search suggestions as you type", &settings.searchSuggestions},
        {"Kesto answers beside search results", &settings.searchAnswers},
        {"Block well-known trackers", &settings.blockTrackers},
        {"Let Kesto read pages when you ask", &settings.kestoReadsPages},
        {"Narrow tab column in new windows", &settings.narrowTabs}};
    for (const auto& [label, wanted] : expected) EXPECT_EQ(&setting(label), wanted) << label;
    EXPECT_EQ(rows<SettingsView::EnginePicker>("Search").at(0).setting, &settings.searchEngine);
}

TEST_F(SettingsViewTest, TheDefaultBrowserIsForOthersToMake) {
    press("Make Orvu Your Default Browser");
    EXPECT_EQ(madeDefault, 1);
}

// --- Clearing ----------------------------------------------------------------------------------

TEST_F(SettingsViewTest, ClearingHistoryClearsThatOfEveryOpenWindow) {
    auto personal = openStore();
    auto other = std::make_unique<BrowserStore>(world.services, false, world.work);
    visit(*personal->active(), a);
    visit(*other->active(), b);
    press("Clear History…");

    EXPECT_TRUE(personal->visits().empty());
    EXPECT_TRUE(other->visits().empty());
    EXPECT_FALSE(world.defaults.hasObject("browserVisits"));
    EXPECT_EQ(view.cleared(), "History cleared");
    EXPECT_THAT(texts("Privacy"), Contains("History cleared"));
}

TEST_F(SettingsViewTest, WithoutAWindowThePersonalHistoryAloneGoes) {
    visit(*openStore()->active(), a);
    visit(*std::make_unique<BrowserStore>(world.services, false, world.work)->active(), b);
    const auto works = scopedKey("browserVisits", world.work);
    ASSERT_TRUE(world.defaults.hasObject("browserVisits"));
    ASSERT_TRUE(world.defaults.hasObject(works));
    press("Clear History…");

    EXPECT_FALSE(world.defaults.hasObject("browserVisits"));
    EXPECT_TRUE(world.defaults.hasObject(works));
}

TEST_F(SettingsViewTest, ClearedDataOfWebsitesIsToldAtItsEnd) {
    press("Clear All Website Data…");
    ASSERT_EQ(world.engine.clearings.size(), 1U);
    EXPECT_EQ(view.cleared(), "");
    world.engine.clearings[0].resolve(true);

    EXPECT_EQ(view.cleared(), "Cookies and website data cleared");
    EXPECT_EQ(texts("Privacy").back(), "Cookies and website data cleared");
}

TEST_F(SettingsViewTest, AFailureToClearIsNotTold) {
    press("Clear All Website Data…");
    world.engine.clearings[0].resolve(false);
    EXPECT_EQ(view.cleared(), "Cookies and website data cleared");
}

TEST_F(SettingsViewTest, TheLatestClearingIsTheOneThatIsTold) {
    press("Clear All Website Data…");
    press("Clear History…");
    EXPECT_EQ(view.cleared(), "History cleared");
    world.engine.clearings[0].resolve(true);
    EXPECT_EQ(view.cleared(), "Cookies and website data cleared");
}

// --- Skills ------------------------------------------------------------------------------------

TEST_F(SettingsViewTest, SkillsOfOnesOwnStandInTheirOrderAndGoAtOnce) {
    skills.add("short", "Answer in five words.");
    skills.add("loud", "Answer in capitals.");
    EXPECT_EQ(texts("Kesto").size(), 4U);
    EXPECT_EQ(texts("Kesto")[2], "/short: Answer in five words.");
    EXPECT_EQ(texts("Kesto")[3], "/loud: Answer in capitals.");

    rows<SettingsView::Skill>("Kesto")[0].remove();
    ASSERT_EQ(skills.custom().size(), 1U);
    EXPECT_EQ(skills.custom()[0].name, "loud");
    EXPECT_THAT(texts("Kesto"), Not(Contains("/short: Answer in five words.")));
}

TEST_F(SettingsViewTest, WhatChangesIsSignalled) {
    const ChangeCounter counter{view};
    skills.add("short", "Answer in five words.");
    EXPECT_EQ(counter.count(), 1);
    press("Clear History…");
    EXPECT_EQ(counter.count(), 2);
    world.services.settings().narrowTabs.set(true);
    EXPECT_EQ(counter.count(), 2);
}

TEST_F(SettingsViewTest, ItsEndDropsAClearing) {
    std::optional<SettingsView> other;
    other.emplace(SettingsView::Subjects{world.services, skills, updates.updater, import},
                  SettingsWindow::Actions{});
    for (const auto& each : other->sections()) {
        for (const auto& row : each.rows) {
            const auto* const button = std::get_if<SettingsView::Button>(&row);
            if (button && button->title == "Clear All Website Data…") button->press();
        }
    }
    ASSERT_EQ(world.engine.clearings.size(), 1U);
    other.reset();
    EXPECT_FALSE(world.engine.clearings[0].isWanted());
}

}  // namespace
}  // namespace orvu

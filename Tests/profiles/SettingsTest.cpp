#include "profiles/Settings.h"

#include "fakes/FakeUserDefaults.h"
#include "support/StoreWorld.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

class SettingsTest : public testing::Test {
protected:
    FakeUserDefaults defaults;
    Settings settings{defaults};
};

TEST_F(SettingsTest, WithoutStoredValuesTheDefaultsCount) {
    EXPECT_EQ(settings.searchEngine.get(), Prefs::Engine::google);
    EXPECT_TRUE(settings.searchSuggestions.get());
    EXPECT_TRUE(settings.searchAnswers.get());
    EXPECT_TRUE(settings.searchAnswerOpen.get());
    EXPECT_TRUE(settings.restoreTabs.get());
    EXPECT_TRUE(settings.blockTrackers.get());
    EXPECT_TRUE(settings.kestoReadsPages.get());
    EXPECT_FALSE(settings.narrowTabs.get());
    EXPECT_EQ(settings.readerSize.get(), 18);
    EXPECT_EQ(settings.readerTheme.get(), ReaderTheme::paper);
    EXPECT_FALSE(settings.onboarded.get());
    EXPECT_EQ(settings.launchCount.get(), 0);
    EXPECT_EQ(settings.lastProfile.get(), "");
    EXPECT_EQ(settings.showWhatsNewFor.get(), "");
    EXPECT_EQ(settings.orvuWindow.get(), "");
}

TEST_F(SettingsTest, WhetherToUpdateIsUndecidedUntilSomebodySays) {
    EXPECT_FALSE(settings.autoUpdate.isSet());

    settings.autoUpdate.set(false);

    EXPECT_TRUE(settings.autoUpdate.isSet());
    EXPECT_FALSE(settings.autoUpdate.get());
}

TEST_F(SettingsTest, EachSettingWritesItsOwnKeyOfTheTable) {
    settings.searchEngine.set(Prefs::Engine::bing);
    settings.searchSuggestions.set(false);
    settings.searchAnswers.set(false);
    settings.searchAnswerOpen.set(false);
    settings.restoreTabs.set(false);
    settings.blockTrackers.set(false);
    settings.kestoReadsPages.set(false);
    settings.narrowTabs.set(true);
    settings.autoUpdate.set(true);
    settings.readerSize.set(20);
    settings.readerTheme.set(ReaderTheme::night);
    settings.onboarded.set(true);
    settings.launchCount.set(5);
    settings.lastProfile.set("id");
    settings.showWhatsNewFor.set("1.0");
    settings.orvuWindow.set("900 600");

    std::vector<std::string> global;
    for (const auto& key : settingKeys) {
        const bool isSetting = key.scope == SettingScope::global && key.type != SettingType::json;
        if (isSetting) global.emplace_back(key.name);
    }
    EXPECT_EQ(defaults.written, global);
    EXPECT_EQ(defaults.string("searchEngine"), "bing");
    EXPECT_EQ(defaults.string("readerTheme"), "night");
}

/// Two windows of one program.
class SharedSettingsTest : public StoreTest {
protected:
    Settings& settings = world.services.settings();
};

TEST_F(SharedSettingsTest, WhatOneWindowChangesTheOtherHearsOfAndReads) {
    const auto one = openStore();
    const auto other = openStore();
    std::vector<double> seen;
    const ScopedConnection watching =
        other->readerLook().connectChanged([&] { seen.push_back(other->readerLook().size()); });

    one->readerLook().larger();

    EXPECT_EQ(seen, std::vector<double>{19});
}

TEST_F(SharedSettingsTest, AnEngineThatIsChosenWhileAWindowIsOpenCountsThereForTheNextSearch) {
    const auto store = openStore();
    store->open("otters", NewTab::no);

    settings.searchEngine.set(Prefs::Engine::ecosia);
    store->open("otters", NewTab::yes);

    EXPECT_EQ(addresses(store->tabs()), (Strings{"https://www.google.com/search?q=otters",
                                                 "https://www.ecosia.org/search?q=otters"}));
}

TEST_F(SharedSettingsTest, ASettingMayChangeFromWithinTheChangeOfAStore) {
    const auto store = openStore();
    int changes = 0;
    settings.narrowTabs.connectChanged([&] { ++changes; });
    const ScopedConnection watching =
        store->connectChanged([this] { settings.narrowTabs.set(true); });

    store->newTab(url(a), Select::yes);
    store->newTab(url(b), Select::yes);

    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(settings.narrowTabs.get());
}

}  // namespace
}  // namespace orvu

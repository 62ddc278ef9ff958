#include "look/text/PlatformText.h"

#include "foundation/RandomText.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(PlatformTextTest, KeySignsBecomeTheNamesOnThisKeyboard) {
    EXPECT_EQ(platformText("New tab (⌘T)"), "New tab (Ctrl+T)");
    EXPECT_EQ(platformText("⌘↵"), "Ctrl+↵");
    EXPECT_EQ(platformText("Back (⌘[) — hover to rewind"), "Back (Ctrl+[) — hover to rewind");
    EXPECT_EQ(platformText("⎋"), "Esc");
}

TEST(PlatformTextTest, SeveralModifiersStandInTheOrderOfThisDesktop) {
    EXPECT_EQ(platformText("Reader (⇧⌘R)"), "Reader (Ctrl+Shift+R)");
    EXPECT_EQ(platformText("Back to one page (⌥⌘S)"), "Back to one page (Ctrl+Alt+S)");
    EXPECT_EQ(platformText("⇧⌥⌘X"), "Ctrl+Alt+Shift+X");
    EXPECT_EQ(platformText("⌘⇧R"), platformText("⇧⌘R"));
}

TEST(PlatformTextTest, TheControlSignOfAProfilesKeyIsAlt) {
    EXPECT_EQ(platformText("Work (⌃2)"), "Work (Alt+2)");
}

TEST(PlatformTextTest, AModifierAtTheEndIsNotLost) {
    EXPECT_EQ(platformText("Work (⌃") + "2)", "Work (Alt+2)");
}

TEST(PlatformTextTest, EachKeyOfATextIsNamed) {
    EXPECT_EQ(platformText("⌘D and ⇧⌘R"), "Ctrl+D and Ctrl+Shift+R");
}

TEST(PlatformTextTest, TheMachineIsCalledAComputer) {
    EXPECT_EQ(platformText("Everything stays on this Mac."), "Everything stays on this computer.");
    EXPECT_EQ(platformText("Apple's on-device model isn't available right now."),
              "The on-device model isn't available right now.");
    EXPECT_EQ(platformText("the page on your Mac."), "the page on your computer.");
    EXPECT_EQ(platformText("This Mac can't run it."), "This computer can't run it.");
    EXPECT_EQ(platformText("A Mac browser where"), "A desktop browser where");
}

TEST(PlatformTextTest, TheFileManagerIsCalledFiles) {
    EXPECT_EQ(platformText("Show in Finder"), "Show in Files");
}

TEST(PlatformTextTest, TheFirstRunNamesTheProgramsOfThisDesktop) {
    EXPECT_EQ(platformText("bring bookmarks and recent history from Chrome, Arc, Dia, Brave, Edge, "
                           "Firefox or Safari."),
              "bring bookmarks and recent history from Chrome, Chromium, Brave, Edge, Firefox, "
              "GNOME Web and others.");
    EXPECT_EQ(platformText("You can do this later from File › Import from Another Browser…"),
              "You can do this later from the menu, under File › Import from Another Browser…");
    EXPECT_EQ(platformText("Links from Mail, Messages and other apps will open in Orvu. macOS will "
                           "ask you to confirm."),
              "Links from mail, chat and other apps will open in Orvu. You can change that in the "
              "settings of your desktop.");
}

TEST(PlatformTextTest, EveryOtherTextStaysAsItIs) {
    for (const std::string_view text : {"", "Open", "Macaroni", "tab ⇥", "Ctrl",
                                        "é 👩‍👩‍👧", "a\xFF\xE2\x8C", "%s"}) {
        EXPECT_EQ(platformText(text), text);
    }
}

TEST(PlatformTextTest, WhatWasTurnedIsNotTurnedAgain) {
    RandomText random{22};
    constexpr std::array<std::string_view, 7> pieces{"⌘", "⇧", "⌥", "⌃", "A", " ", "this Mac"};
    for (int i = 0; i < 1000; ++i) {
        std::string text;
        for (auto left = random.below(8); left > 0; --left) text += pieces[random.below(7)];

        const auto once = platformText(text);

        EXPECT_EQ(platformText(once), once) << text;
        EXPECT_EQ(once.find("⌘"), std::string::npos) << text;
    }
}

TEST(PlatformTextTest, LongTextsAreTurnedToTheEnd) {
    EXPECT_EQ(platformText(repeated("⌘", 100000) + "A"), "Ctrl+A");
    EXPECT_EQ(platformText(repeated("⌘A", 100000)), repeated("Ctrl+A", 100000));
}

}  // namespace
}  // namespace orvu

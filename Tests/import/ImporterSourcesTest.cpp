#include "import/PersonFolders.h"
#include "import/ImportWorld.h"
#include "import/KnownBrowsers.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <ranges>

namespace orvu {
namespace {

class ImporterSources : public ImportWorld {
protected:
    const Path chrome = folders.configuration / "google-chrome";
    const Path firefox = home / ".mozilla/firefox";
};

TEST_F(ImporterSources, NoBrowserIsFoundInAnEmptyHome) { EXPECT_EQ(found(), Strings{}); }

TEST_F(ImporterSources, KnownBrowsersStandInTheirOrder) {
    Strings names;
    for (const auto& browser : KnownBrowser::all()) names.emplace_back(browser.name);

    const Strings told{"Chrome", "Arc", "Dia", "Brave", "Edge", "Firefox", "Safari"};
    ASSERT_GT(names.size(), told.size());
    EXPECT_TRUE(std::ranges::equal(told, names | std::views::take(told.size())));
}

TEST_F(ImporterSources, KnownBrowsersHaveNamesOfTheirOwnAndASite) {
    Strings ids;
    for (const auto& browser : KnownBrowser::all()) {
        ids.emplace_back(browser.id);
        EXPECT_TRUE(Url::parse("https://" + std::string{browser.host})) << browser.id;
        EXPECT_TRUE(std::ranges::all_of(browser.id, [](char c) { return c >= 'a' && c <= 'z'; }));
        EXPECT_FALSE(browser.bases(folders).empty()) << browser.id;
    }
    std::ranges::sort(ids);
    EXPECT_EQ(std::ranges::adjacent_find(ids), ids.end());
}

TEST_F(ImporterSources, NoTwoBrowsersShareAFolder) {
    std::vector<Path> all;
    for (const auto& browser : KnownBrowser::all()) {
        std::ranges::copy(browser.bases(folders), std::back_inserter(all));
    }
    std::ranges::sort(all);

    EXPECT_EQ(std::ranges::adjacent_find(all), all.end());
}

TEST_F(ImporterSources, KindsHaveTheirRawValues) {
    EXPECT_EQ(rawValue(BrowserKind::chromium), "chromium");
    EXPECT_EQ(rawValue(BrowserKind::firefox), "firefox");
    EXPECT_EQ(rawValue(BrowserKind::safari), "safari");
    EXPECT_EQ(rawValue(BrowserKind::gnomeWeb), "gnomeweb");
}

TEST_F(ImporterSources, EachBrowserIsFoundWhereItsPackageKeepsItsData) {
    for (const char* const place :
         {"google-chrome/Default/History", "BraveSoftware/Brave-Browser/Default/History",
          "microsoft-edge/Default/Bookmarks", "chromium/Default/History", "vivaldi/Default/History",
          "opera/History"}) {
        write(folders.configuration / place, "x");
    }
    for (const char* const place :
         {".mozilla/firefox", ".librewolf", ".zen", ".waterfox", ".floorp"}) {
        write(home / place / "abc.default/places.sqlite", "x");
    }
    write(folders.data / "epiphany/ephy-history.db", "x");

    EXPECT_EQ(found(), (Strings{"chrome", "brave", "edge", "firefox", "chromium", "vivaldi",
                                "opera", "gnomeweb", "librewolf", "zen", "waterfox", "floorp"}));
}

TEST_F(ImporterSources, EachBrowserIsFoundWhereSnapsKeepTheirData) {
    for (const char* const place :
         {"chromium/common/chromium/Default/History",
          "brave/current/.config/BraveSoftware/Brave-Browser/Default/History",
          "firefox/common/.mozilla/firefox/a.default/places.sqlite",
          "opera/current/.config/opera/Default/History",
          "vivaldi/current/.config/vivaldi/Default/History"}) {
        write(home / "snap" / place, "x");
    }

    EXPECT_EQ(found(), (Strings{"brave", "firefox", "chromium", "vivaldi", "opera"}));
}

TEST_F(ImporterSources, EachBrowserIsFoundWhereFlatpaksKeepTheirData) {
    for (const char* const place : {"com.google.Chrome/config/google-chrome/Default/History",
                                    "com.microsoft.Edge/config/microsoft-edge/Default/History",
                                    "org.mozilla.firefox/.mozilla/firefox/a.default/places.sqlite",
                                    "org.chromium.Chromium/config/chromium/Default/History",
                                    "org.gnome.Epiphany/data/epiphany/bookmarks.gvdb",
                                    "app.zen_browser.zen/.zen/a.default/places.sqlite"}) {
        write(home / ".var/app" / place, "x");
    }

    EXPECT_EQ(found(), (Strings{"chrome", "edge", "firefox", "chromium", "gnomeweb", "zen"}));
}

TEST_F(ImporterSources, OneBrowserInSeveralPackagesIsOneRowWithTheNewestData) {
    const Path flatpak = home / ".var/app/org.mozilla.firefox/.mozilla/firefox/b.default";
    writeAt(firefox / "a.default/places.sqlite", 1);
    writeAt(flatpak / "places.sqlite", 3);
    writeAt(home / "snap/firefox/common/.mozilla/firefox/c.default/places.sqlite", 2);

    EXPECT_EQ(found(), Strings{"firefox"});
    EXPECT_EQ(folderOf("firefox"), flatpak);
}

TEST_F(ImporterSources, TheProfileThatWasUsedLastIsTaken) {
    writeAt(chrome / "Default/History", 1);
    writeAt(chrome / "Profile 1/History", 2);
    writeAt(chrome / "Profile 3/History", 3);

    EXPECT_EQ(folderOf("chrome"), chrome / "Profile 3");
}

TEST_F(ImporterSources, TheNewestOfAProfilesFilesCounts) {
    writeAt(chrome / "Default/History", 1);
    writeAt(chrome / "Default/Bookmarks", 9);
    writeAt(chrome / "Profile 1/History", 5);
    writeAt(chrome / "Profile 1/Cookies", 20);

    EXPECT_EQ(folderOf("chrome"), chrome / "Default");
}

TEST_F(ImporterSources, OfEqualDatesTheFirstInTheListingOfTheFileSystemIsTaken) {
    for (const char* const name : {"Zebra", "Default", "Profile 2", "Mouse"}) {
        writeAt(chrome / name / "History", 5);
    }

    EXPECT_EQ(folderOf("chrome"), std::filesystem::directory_iterator { chrome } -> path());
}

TEST_F(ImporterSources, AProfileWithARandomNameIsFoundThroughTheListing) {
    write(firefox / "x7k2p9qa.default-release/places.sqlite", "x");

    EXPECT_EQ(folderOf("firefox"), firefox / "x7k2p9qa.default-release");
}

TEST_F(ImporterSources, TheFolderItselfMayBeTheProfile) {
    write(folders.configuration / "opera/Bookmarks", "x");

    EXPECT_EQ(folderOf("opera"), folders.configuration / "opera");
}

TEST_F(ImporterSources, ProfilesOutsideTheUsualFolderAreFoundWhereTheirListNamesThem) {
    const Path elsewhere = temporary.path() / "disk/my profile";
    writeAt(firefox / "old.default/places.sqlite", 1);
    writeAt(elsewhere / "places.sqlite", 2);
    write(firefox / "profiles.ini",
          "[Install4F96D1932A9F858E]\nDefault=old.default\n\n[Profile1]\r\nName=away\r\n"
          "IsRelative=0\r\nPath=" +
              elsewhere.string() + "\r\n");

    EXPECT_EQ(folderOf("firefox"), elsewhere);
}

TEST_F(ImporterSources, ANewerHomeKeepsItsProfilesBelowConfigurations) {
    write(folders.configuration / "mozilla/firefox/q.default-release/places.sqlite", "x");

    EXPECT_EQ(folderOf("firefox"), folders.configuration / "mozilla/firefox/q.default-release");
}

TEST_F(ImporterSources, FoldersWithoutSuchFilesAreNoBrowser) {
    write(chrome / "Default/Preferences", "x");
    std::filesystem::create_directories(chrome / "Profile 1/History");
    ASSERT_EQ(mkfifo((chrome / "Default/Bookmarks").c_str(), 0600), 0);

    EXPECT_EQ(found(), Strings{});
}

TEST_F(ImporterSources, LinksAreFollowed) {
    write(temporary.path() / "disk/profile/History", "x");
    std::filesystem::create_directories(chrome);
    std::filesystem::create_symlink(temporary.path() / "disk/profile", chrome / "Default");
    std::filesystem::create_symlink("nowhere", chrome / "Profile 1");
    std::filesystem::create_symlink("Profile 2", chrome / "Profile 2");

    EXPECT_EQ(folderOf("chrome"), chrome / "Default");
}

TEST_F(ImporterSources, SourcesAreLookedForAnew) {
    write(chrome / "Default/History", "x");
    const auto before = found();
    std::filesystem::remove_all(chrome);

    EXPECT_EQ(before, Strings{"chrome"});
    EXPECT_EQ(found(), Strings{});
}

TEST_F(ImporterSources, ASourceTellsWhatItIs) {
    write(chrome / "Default/History", "x");

    const auto sources = importer.sources();

    ASSERT_EQ(sources.size(), 1U);
    EXPECT_EQ(sources[0], (ImportSource{.id = "chrome",
                                        .name = "Chrome",
                                        .host = "www.google.com/chrome",
                                        .kind = BrowserKind::chromium,
                                        .folder = chrome / "Default"}));
}

TEST_F(ImporterSources, SafariIsListedOnlyWhereItIsInstalled) {
    write(home / "Library/Safari/History.db", "x");

    EXPECT_EQ(found(), Strings{});
}

TEST_F(ImporterSources, SafariNeedsAccessUntilItsHistoryCanBeRead) {
    std::filesystem::create_directories(folders.applications / "Safari.app");
    const auto before = importer.sources();
    write(home / "Library/Safari/History.db", "x");
    const auto after = importer.sources();

    ASSERT_EQ(before.size(), 1U);
    EXPECT_TRUE(before[0].needsAccess);
    ASSERT_EQ(after.size(), 1U);
    EXPECT_FALSE(after[0].needsAccess);
    EXPECT_EQ(after[0].folder, home / "Library/Safari");
}

TEST_F(ImporterSources, FiveThousandProfilesAreLookedThrough) {
    const Path profile = temporary.path() / "profile";
    writeAt(profile / "History", 1);
    writeAt(chrome / "Work/History", 9);
    for (int number = 0; number < 5000; ++number) {
        std::filesystem::create_symlink(profile, chrome / ("Profile " + std::to_string(number)));
    }

    EXPECT_EQ(folderOf("chrome"), chrome / "Work");
}

/// A variable of the environment that has another value until the end.
class Variable {
public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* const before = std::getenv(name)) before_ = before;
        set(value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { set(before_ ? before_->c_str() : nullptr); }

private:
    void set(const char* value) const {
        if (value) {
            setenv(name_, value, 1);
        } else {
            unsetenv(name_);
        }
    }

    const char* const name_;
    std::optional<std::string> before_;
};

TEST(PersonFolders, LieInTheHomeIfTheEnvironmentTellsNoOthers) {
    const Variable home{"HOME", "/home/p"};
    const Variable configuration{"XDG_CONFIG_HOME", nullptr};
    const Variable data{"XDG_DATA_HOME", "relative"};

    const auto folders = personFolders();

    EXPECT_EQ(folders.home, "/home/p");
    EXPECT_EQ(folders.configuration, "/home/p/.config");
    EXPECT_EQ(folders.data, "/home/p/.local/share");
}

TEST(PersonFolders, LieWhereTheEnvironmentTells) {
    const Variable configuration{"XDG_CONFIG_HOME", "/c"};
    const Variable data{"XDG_DATA_HOME", "/d"};

    const auto folders = personFolders();

    EXPECT_EQ(folders.configuration, "/c");
    EXPECT_EQ(folders.data, "/d");
}

}  // namespace
}  // namespace orvu

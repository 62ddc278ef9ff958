#include "import/KnownBrowsers.h"

#include <algorithm>
#include <array>

namespace orvu {
namespace {

using Path = std::filesystem::path;
using Kind = BrowserKind;

constexpr std::array browsers{
    KnownBrowser{"chrome", "Chrome", "www.google.com/chrome", Kind::chromium,
                 "google-chrome:google-chrome-beta:google-chrome-unstable", "", "",
                 "com.google.Chrome:com.google.ChromeDev",
                 "google-chrome:google-chrome-beta:google-chrome-unstable"},
    KnownBrowser{"arc", "Arc", "arc.net", Kind::chromium, "Arc/User Data", "", "", "", ""},
    KnownBrowser{"dia", "Dia", "www.diabrowser.com", Kind::chromium, "Dia/User Data", "", "", "",
                 ""},
    KnownBrowser{"brave", "Brave", "brave.com", Kind::chromium,
                 "BraveSoftware/Brave-Browser:BraveSoftware/Brave-Browser-Beta:"
                 "BraveSoftware/Brave-Browser-Nightly",
                 "", "brave", "com.brave.Browser", "brave-browser"},
    KnownBrowser{"edge", "Edge", "www.microsoft.com/edge", Kind::chromium,
                 "microsoft-edge:microsoft-edge-beta:microsoft-edge-dev", "", "",
                 "com.microsoft.Edge:com.microsoft.EdgeDev",
                 "microsoft-edge:microsoft-edge-beta:microsoft-edge-dev"},
    KnownBrowser{"firefox", "Firefox", "www.firefox.com", Kind::firefox, "mozilla/firefox",
                 ".mozilla/firefox", "firefox", "org.mozilla.firefox", "firefox:firefox-esr"},
    KnownBrowser{"safari", "Safari", "www.apple.com/safari", Kind::safari, "", "Library/Safari", "",
                 "", ""},
    KnownBrowser{"chromium", "Chromium", "www.chromium.org", Kind::chromium, "chromium", "",
                 "chromium",
                 "org.chromium.Chromium:io.github.ungoogled_software.ungoogled_chromium",
                 "chromium:chromium-browser"},
    KnownBrowser{"vivaldi", "Vivaldi", "vivaldi.com", Kind::chromium, "vivaldi:vivaldi-snapshot",
                 "", "vivaldi", "com.vivaldi.Vivaldi", "vivaldi-stable:vivaldi-snapshot"},
    KnownBrowser{"opera", "Opera", "www.opera.com", Kind::chromium,
                 "opera:opera-beta:opera-developer", "", "opera", "com.opera.Opera",
                 "opera:opera-beta:opera-developer"},
    KnownBrowser{"gnomeweb", "GNOME Web", "apps.gnome.org/Epiphany", Kind::gnomeWeb, "epiphany",
                 "epiphany", "epiphany", "org.gnome.Epiphany", ""},
    KnownBrowser{"librewolf", "LibreWolf", "librewolf.net", Kind::firefox, "librewolf/librewolf",
                 ".librewolf", "librewolf", "io.gitlab.librewolf-community", "librewolf"},
    KnownBrowser{"zen", "Zen", "zen-browser.app", Kind::firefox, "zen", ".zen", "",
                 "app.zen_browser.zen:io.github.zen_browser.zen", "zen:zen-browser"},
    KnownBrowser{"waterfox", "Waterfox", "www.waterfox.net", Kind::firefox, "waterfox", ".waterfox",
                 "", "net.waterfox.waterfox", "waterfox"},
    KnownBrowser{"floorp", "Floorp", "floorp.app", Kind::firefox, "floorp", ".floorp", "",
                 "one.ablaze.floorp", "floorp"},
};

std::vector<std::string_view> parts(std::string_view list) {
    std::vector<std::string_view> result;
    while (!list.empty()) {
        const auto end = std::min(list.find(':'), list.size());
        result.push_back(list.substr(0, end));
        list.remove_prefix(std::min(list.size(), end + 1));
    }
    return result;
}

/// The folders that a program has for itself: those of the person, or ones inside of a snap or a
/// flatpak.
struct Surroundings {
    Path home;
    Path configuration;
    Path data;
};

std::vector<Surroundings> surroundings(const KnownBrowser& browser, const ImportFolders& folders) {
    std::vector<Surroundings> result{{folders.home, folders.configuration, folders.data}};
    if (!browser.snap.empty()) {
        const Path snap = folders.home / "snap" / browser.snap;
        // A few snaps keep their data in the folder of all versions without a hidden folder
        // between.
        result.push_back({snap / "common", snap / "common", snap / "common"});
        for (const char* const version : {"common", "current"}) {
            const Path home = snap / version;
            result.push_back({home, home / ".config", home / ".local/share"});
        }
    }
    for (const auto id : parts(browser.flatpaks)) {
        const Path home = folders.home / ".var/app" / id;
        result.push_back({home, home / "config", home / "data"});
    }
    return result;
}

}  // namespace

std::span<const KnownBrowser> KnownBrowser::all() { return browsers; }

std::vector<Path> KnownBrowser::bases(const ImportFolders& folders) const {
    std::vector<Path> result;
    const auto add = [&](const Path& base) {
        if (std::ranges::find(result, base) == result.end()) result.push_back(base);
    };
    for (const Surroundings& each : surroundings(*this, folders)) {
        if (!homeFolder.empty()) {
            add((kind == BrowserKind::gnomeWeb ? each.data : each.home) / homeFolder);
        }
        for (const auto folder : parts(configurationFolders)) add(each.configuration / folder);
    }
    return result;
}

std::vector<std::string> KnownBrowser::desktopFiles() const {
    std::vector<std::string> result;
    const auto add = [&](std::string_view entry) {
        result.push_back(std::string{entry}.append(".desktop"));
    };
    for (const auto entry : parts(menuEntries)) add(entry);
    if (!snap.empty()) add(std::string{snap}.append("_").append(snap));
    for (const auto entry : parts(flatpaks)) add(entry);
    return result;
}

}  // namespace orvu

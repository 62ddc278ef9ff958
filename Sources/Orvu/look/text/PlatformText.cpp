#include "look/text/PlatformText.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"

#include <array>
#include <bitset>
#include <utility>

namespace orvu {
namespace {

struct Modifier {
    std::string_view sign;
    Phrase name;
};

/// What the program's texts say, and what is said here instead.
struct Word {
    std::string_view told;
    std::string_view shown;
};

/// The signs of modifier keys, in the order in which this desktop names them. The control sign
/// beside a digit means a profile, which has the Alt key here.
constexpr std::array<Modifier, 4> modifiers{{{"⌘", phrase("Ctrl+")},
                                             {"⌥", phrase("Alt+")},
                                             {"⌃", phrase("Alt+")},
                                             {"⇧", phrase("Shift+")}}};

constexpr std::array<Word, 19> words{
    {{" and checked by Apple", ""},
     {"A Mac browser", "A desktop browser"},
     {"Apple’s on-device model", "a model that runs here"},
     {" Apple's on-device model", " the on-device model"},
     {"Apple's on-device model", "The on-device model"},
     {"or Apple Passwords", "or password manager"},
     {"macOS didn't let", "The system didn't let"},
     {"macOS keeps", "The system keeps"},
     {"Allow it when macOS asks, or turn on Orvu under Full "
      "Disk Access, then import",
      "Give Orvu leave to read its folder, then import"},
     {"Turn on Orvu under Full Disk Access", "Give Orvu leave to read its folder"},
     {"Safari, Firefox or", "Firefox or"},
     {"from Chrome, Arc, Dia, Brave, Edge, Firefox or Safari.",
      "from Chrome, Chromium, Brave, Edge, Firefox, GNOME Web and others."},
     {"later from File", "later from the menu, under File"},
     {"Mail, Messages and other apps", "mail, chat and other apps"},
     {"macOS will ask you to confirm.", "You can change that in the settings of your desktop."},
     {"in Finder", "in Files"},
     {"This Mac", "This computer"},
     {"this Mac", "this computer"},
     {"your Mac", "your computer"}}};

/// The number of the modifier whose sign stands at the head of `text`, or -1.
int modifierAt(std::string_view text) {
    for (std::size_t i = 0; i < modifiers.size(); ++i) {
        if (text.starts_with(modifiers[i].sign)) return static_cast<int>(i);
    }
    return -1;
}

}  // namespace

std::string platformText(std::string_view text) {
    const std::string fullScreen = replacingAll(text, "⌃⌘F", "F11");
    text = fullScreen;
    std::string result;
    std::bitset<modifiers.size()> held;
    const auto nameHeld = [&] {
        for (std::size_t i = 0; i < modifiers.size(); ++i) {
            if (held.test(i)) result.append(modifiers[i].name);
        }
        held.reset();
    };
    while (!text.empty()) {
        if (const int modifier = modifierAt(text); modifier >= 0) {
            held.set(static_cast<std::size_t>(modifier));
            text.remove_prefix(modifiers[static_cast<std::size_t>(modifier)].sign.size());
            continue;
        }
        nameHeld();
        result.push_back(text.front());
        text.remove_prefix(1);
    }
    nameHeld();
    for (const auto& [told, shown] : words) result = replacingAll(result, told, shown);
    return replacingAll(result, "⎋", phrase("Esc"));
}

}  // namespace orvu

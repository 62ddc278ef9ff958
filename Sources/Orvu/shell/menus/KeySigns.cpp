#include "shell/menus/KeySigns.h"

#include "foundation/text/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvu {
namespace {

using Name = std::pair<std::string_view, std::string_view>;

constexpr std::array<Name, 4> modifiers{
    {{"⌘", "<Control>"}, {"⇧", "<Shift>"}, {"⌥", "<Alt>"}, {"⌃", "<Alt>"}}};

constexpr std::array<Name, 7> marks{{{"=", "equal"},
                                     {"+", "plus"},
                                     {"-", "minus"},
                                     {"[", "bracketleft"},
                                     {"]", "bracketright"},
                                     {"{", "braceleft"},
                                     {",", "comma"}}};

}  // namespace

std::string shortcutTrigger(std::string_view keys) {
    if (keys == "⌃⌘F") return "F11";
    std::string held;
    std::string key{keys};
    for (const auto& [sign, name] : modifiers) {
        if (!key.contains(sign)) continue;
        held.append(name);
        key = replacingAll(key, sign, "");
    }
    const auto mark = std::ranges::find(marks, std::string_view{key}, &Name::first);
    if (mark != marks.end()) return held + std::string{mark->second};
    return held + (key.size() == 1 ? lowercased(key) : key);
}

}  // namespace orvu

#include "look/Symbols.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvu {

std::string symbolIcon(std::string_view symbol) {
    using Entry = std::pair<std::string_view, std::string_view>;
    static constexpr std::array<Entry, 5> icons{{{"plus", "list-add-symbolic"},
                                                 {"xmark", "window-close-symbolic"},
                                                 {"chevron.down", "pan-down-symbolic"},
                                                 {"arrow.up", "go-up-symbolic"},
                                                 {"sidebar.left", "sidebar-show-symbolic"}}};
    const auto* const found = std::ranges::find(icons, symbol, &Entry::first);
    return std::string{found != icons.end() ? found->second : "image-missing-symbolic"};
}

}  // namespace orvu

#include "shell/column/GroupNameEditing.h"

#include <algorithm>

namespace orvu {

std::optional<std::string> GroupNameEditing::begin() {
    const auto& groups = store_.groups();
    const auto found = std::ranges::find(groups, group_, &TabGroup::id);
    before_ = found != groups.end() ? std::optional{found->name} : std::nullopt;
    return before_;
}

void GroupNameEditing::confirm(std::string_view text) {
    if (!isEditing()) return;
    before_.reset();  // first: the field goes, and its leaving is no second answer
    store_.rename(TabGroup{.id = group_, .name = {}}, text);
}

void GroupNameEditing::leave(std::string_view text) {
    if (before_ == text) return cancel();
    confirm(text);
}

}  // namespace orvu

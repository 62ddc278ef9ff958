#include "shell/column/GroupNameEditing.h"

namespace orvu {

std::optional<std::string> GroupNameEditing::begin() {
    const TabGroup* const group = store_.group(group_);
    before_ = group ? std::optional{group->name} : std::nullopt;
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

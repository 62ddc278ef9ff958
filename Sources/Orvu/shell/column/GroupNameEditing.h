#pragma once

#include "core/BrowserStore.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// The editing of one group's name, without the field.
class GroupNameEditing {
public:
    /// `store` must outlive this.
    GroupNameEditing(BrowserStore& store, const Uuid& group) : store_(store), group_(group) {}

    [[nodiscard]] bool isEditing() const { return before_.has_value(); }
    /// Begins, and gives the text to start from. Nothing if the group is gone.
    std::optional<std::string> begin();
    /// Return was pressed: the text becomes the name.
    void confirm(std::string_view text);
    /// Escape was pressed: the name stays.
    void cancel() { before_.reset(); }
    /// The keyboard went elsewhere in the window. What was typed counts: a click beside a field
    /// must not throw work away, and there is Escape for whoever wants that.
    void leave(std::string_view text);

private:
    BrowserStore& store_;
    const Uuid group_;
    std::optional<std::string> before_;  ///< the name at the beginning, while editing
};

}  // namespace orvu

#pragma once

#include <sigc++/sigc++.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// Predictions of what a person may be about to type. Nobody waits for them: who tells of a change
/// of the text hears of the answer later, or of nothing if there is none.
class Suggestions {
public:
    enum class Privacy {
        ordinary,
        privateWindow,  ///< nothing leaves the program, and nothing shows that was asked before
    };

    virtual ~Suggestions() = default;

    [[nodiscard]] virtual const std::vector<std::string>& predictions() const = 0;
    /// The text that the predictions belong to, without its bang. It may lag behind the field.
    [[nodiscard]] virtual const std::string& forQuery() const = 0;
    /// What a person probably meant who typed `query`. Nothing if that can't be said.
    [[nodiscard]] virtual std::optional<std::string> correction(std::string_view query) const = 0;

    /// Tells the whole text of the field after each change. What is shown stays until there is
    /// something new.
    virtual void update(std::string_view query, Privacy privacy) = 0;

    /// Calls `slot` once after each change. It may call `update`, or end this.
    virtual sigc::connection connectChanged(const sigc::slot<void()>& slot) = 0;
};

}  // namespace orvu

#pragma once

#include <string>

namespace orvu {

/// What a person copies to and pastes from.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Puts a text in the place of all that was copied.
    virtual void setString(const std::string& text) = 0;
};

}  // namespace orvu

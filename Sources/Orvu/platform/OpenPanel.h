#pragma once

#include "foundation/async/Future.h"

#include <filesystem>
#include <optional>
#include <string>

namespace orvu {

/// Lets the person choose a file of this computer.
class OpenPanel {
public:
    virtual ~OpenPanel() = default;

    /// Asks for one page in HTML, under `message`; nothing if the person chose none. Who drops the
    /// answer takes the question back.
    [[nodiscard]] virtual Future<std::optional<std::filesystem::path>> chooseHtml(
        const std::string& message) = 0;
};

}  // namespace orvu

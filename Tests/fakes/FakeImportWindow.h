#pragma once

#include "import/ImportWindow.h"

#include <optional>
#include <vector>

namespace orvu {

/// Keeps for which profiles it was shown.
class FakeImportWindow : public ImportWindow {
public:
    void show(const std::optional<Profile>& profile) override { shown.push_back(profile); }

    std::vector<std::optional<Profile>> shown;
};

}  // namespace orvu

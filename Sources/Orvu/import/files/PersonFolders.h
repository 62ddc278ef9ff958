#pragma once

#include "import/ImportSource.h"

namespace orvu {

/// The folders in which the programs of this person keep their data, as the environment tells.
/// `caches` is this program's own. To be called by the main thread.
[[nodiscard]] ImportFolders personFolders(const std::filesystem::path& caches);

}  // namespace orvu

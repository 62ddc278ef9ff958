#pragma once

#include "import/ImportSource.h"

namespace orvu {

/// The folders in which the programs of this person keep their data, as the environment tells.
/// To be called by the main thread.
[[nodiscard]] ImportFolders personFolders();

}  // namespace orvu

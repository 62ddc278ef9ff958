#pragma once

namespace orvu {

/// Whether something may leave a trace on the disk. Private windows leave none.
enum class Persistence { ephemeral, persistent };

}  // namespace orvu

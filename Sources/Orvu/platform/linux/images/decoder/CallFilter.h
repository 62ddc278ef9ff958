#pragma once

namespace orvu {

/// From now on the kernel refuses all threads of this process every call but those that computing,
/// memory, and reading and writing what is open take. Threads can be started, processes can't; no
/// memory becomes code. False if there is no such filter.
[[nodiscard]] bool installCallFilter();

}  // namespace orvu

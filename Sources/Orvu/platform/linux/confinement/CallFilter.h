#pragma once

#include <initializer_list>

namespace orvu {

/// From now on the kernel refuses all threads of this process every call but those that computing,
/// memory, and reading and writing what is open take, and `furtherCalls`, by their numbers. Threads
/// can be started, processes can't; no memory becomes code. False if there is no such filter.
[[nodiscard]] bool installCallFilter(std::initializer_list<long> furtherCalls);

}  // namespace orvu

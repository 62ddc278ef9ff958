#pragma once

#include <cstdint>
#include <initializer_list>

namespace orvu {

// The ways in which a process gives up, for good, what it doesn't need. Each holds for itself, so
// that a hole in one leads to the next. Where the kernel, or whoever runs it, does not allow one,
// it gives false.

/// The most that a process may use.
struct ResourceLimits {
    std::uint64_t memory = 0;   ///< bytes of addresses, those of libraries and files among them
    std::uint64_t seconds = 0;  ///< of one processor
};

/// Bounds memory, processor time, descriptors and what is written, and ends this process with its
/// parent. To be called first, while there is one thread.
void limitResources(const ResourceLimits& limits);
/// Bounds how many threads there are. Outside of user namespaces of its own a process shares that
/// limit with all others of its user.
void limitThreads();

/// A network without interfaces, and no messages of other processes. While there is one thread.
[[nodiscard]] bool leaveNamespaces();
/// No file can be opened, no port be reached over TCP, and no process outside be signalled. Holds
/// for this thread and those that it starts. What is open stays so.
[[nodiscard]] bool giveUpFiles();
/// The kernel refuses all calls but those that computing takes, and these. Holds for all threads.
[[nodiscard]] bool giveUpCalls(std::initializer_list<long> furtherCalls = {});

}  // namespace orvu

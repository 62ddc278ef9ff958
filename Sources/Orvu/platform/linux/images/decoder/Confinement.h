#pragma once

namespace orvu {

// The ways in which a process gives up, for good, what it doesn't need. Each holds for itself, so
// that a hole in one leads to the next. Where the kernel, or whoever runs it, does not allow one,
// it gives false.

/// Bounds memory, processor time, descriptors and what is written, and ends this process with its
/// parent. To be called first, while there is one thread.
void limitResources();
/// Bounds how many threads there are. Outside of user namespaces of its own a process shares that
/// limit with all others of its user.
void limitThreads();

/// A network without interfaces, and no messages of other processes. While there is one thread.
[[nodiscard]] bool leaveNamespaces();
/// No file can be opened, no port be reached over TCP, and no process outside be signalled. Holds
/// for this thread and those that it starts. What is open stays so.
[[nodiscard]] bool giveUpFiles();
/// The kernel refuses all calls but those that computing takes. Holds for all threads.
[[nodiscard]] bool giveUpCalls();

}  // namespace orvu

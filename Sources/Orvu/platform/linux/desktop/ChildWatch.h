#pragma once

#include "platform/linux/files/FileDescriptor.h"

#include <functional>
#include <string_view>

namespace orvu {

/// Waits for the end of a child of this process.
class ChildWatch {
public:
    ChildWatch() = default;
    ChildWatch(const ChildWatch&) = delete;
    ChildWatch& operator=(const ChildWatch&) = delete;
    ~ChildWatch() { stop(); }

    /// Calls `ended` in a turn of the main loop, once, when the youngest living child of that name
    /// has ended; it may end the watch. Never if there is none. The kernel keeps 15 bytes of a
    /// name.
    void start(std::string_view name, std::function<void()> ended);
    void stop();

private:
    std::function<void()> ended_;
    FileDescriptor process_;
    unsigned source_ = 0;
};

}  // namespace orvu

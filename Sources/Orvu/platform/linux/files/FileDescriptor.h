#pragma once

#include <unistd.h>

#include <utility>

namespace orvu {

/// The owner of an open file, folder, socket or process handle: closes it at its end.
class FileDescriptor {
public:
    FileDescriptor() = default;
    /// Takes over what a system call gave; a negative number stands for its failure.
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) reset(std::exchange(other.number_, -1));
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { reset(); }

    /// The number, which stays this object's; negative if nothing is open.
    [[nodiscard]] int get() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }
    /// Closes what is open, and takes over `number`.
    void reset(int number = -1) {
        if (number_ >= 0) close(number_);
        number_ = number;
    }

private:
    int number_ = -1;
};

}  // namespace orvu

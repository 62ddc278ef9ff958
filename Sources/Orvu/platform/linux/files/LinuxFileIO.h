#pragma once

#include "platform/FileIO.h"
#include "platform/linux/Worker.h"

namespace orvu {

/// The file system. Files are made readable by their owner alone.
class LinuxFileIO : public FileIO {
public:
    /// `loop` must outlive the room.
    explicit LinuxFileIO(MainLoop& loop) : room_(loop, Worker::AtEnd::finish, {}) {}

    [[nodiscard]] Future<std::optional<std::string>> read(std::filesystem::path file,
                                                          std::size_t limit) override;
    void write(std::filesystem::path file, std::string bytes) override;
    void makeFolder(std::filesystem::path folder) override;

private:
    Worker room_;
};

}  // namespace orvu

#pragma once

#include "platform/FileRoom.h"
#include "platform/linux/WorkRoom.h"

namespace orvu {

/// The file system. Files are made readable by their owner alone.
class LinuxFileRoom : public FileRoom {
public:
    /// `loop` must outlive the room.
    explicit LinuxFileRoom(MainLoop& loop) : room_(loop, WorkRoom::AtEnd::finish, {}) {}

    [[nodiscard]] Future<std::optional<std::string>> read(std::filesystem::path file,
                                                          std::size_t limit) override;
    void write(std::filesystem::path file, std::string bytes) override;
    void makeFolder(std::filesystem::path folder) override;

private:
    WorkRoom room_;
};

}  // namespace orvu

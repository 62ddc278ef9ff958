#pragma once

#include "platform/linux/files/FileDescriptor.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// A process that is started with nothing but a socket, for its input and its output, and perhaps a
/// file. It is killed when this goes, and also ends with the program, whatever becomes of that.
class ConfinedProcess {
public:
    /// Who shuts the process in, beside itself.
    enum class Isolation {
        bubblewrap,  ///< bubblewrap: a root of libraries and `Program::folders`, and namespaces
        own,         ///< nobody; it makes namespaces where it may
    };
    /// A program that knows how to shut itself in.
    struct Program {
        std::filesystem::path file;
        std::vector<std::string> arguments = {};
        std::vector<std::filesystem::path> folders = {};  ///< that it reads besides libraries
    };
    /// Called in turns of the main loop. Each may end the process.
    struct Events {
        std::function<void(std::string_view)> said;
        std::function<void()> ended;  ///< once, after all that it said
    };

    /// A program of ours, beside the one that runs or where both were installed.
    [[nodiscard]] static std::filesystem::path installedProgram(const std::string& name);
    /// How to start a program. Further arguments may follow.
    [[nodiscard]] static std::vector<std::string> command(const Program& program,
                                                          Isolation isolation);

    /// Starts a program, on the main thread. What `file` has open is its descriptor 3 then. Null
    /// if it can't be started.
    [[nodiscard]] static std::unique_ptr<ConfinedProcess> start(std::vector<std::string> command,
                                                                Events events,
                                                                const FileDescriptor& file = {});
    ConfinedProcess(const ConfinedProcess&) = delete;
    ConfinedProcess& operator=(const ConfinedProcess&) = delete;
    ~ConfinedProcess();

    /// Hands over `bytes`, without waiting, after all that was handed over before.
    void tell(std::string_view bytes);

private:
    ConfinedProcess(FileDescriptor socket, FileDescriptor process, Events events);
    void hear();
    void write();
    void stopWriting();

    const Events events_;
    const FileDescriptor socket_;
    FileDescriptor process_;
    std::string unwritten_;
    unsigned hearing_ = 0;
    unsigned writing_ = 0;
};

}  // namespace orvu

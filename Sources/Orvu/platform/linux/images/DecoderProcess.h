#pragma once

#include "platform/linux/files/FileDescriptor.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// A process that is started with nothing but a socket, for its input and its output, and is
/// killed when this goes. It also ends with the program, whatever becomes of that.
class DecoderProcess {
public:
    /// Who shuts the process in, beside itself.
    enum class Isolation {
        bubblewrap,  ///< bubblewrap: a root of libraries and fonts, and namespaces
        own,         ///< nobody; it makes namespaces where it may
    };
    /// Called in turns of the main loop. Each may end the process.
    struct Events {
        std::function<void(std::string_view)> said;
        std::function<void()> ended;  ///< once, after all that it said
    };

    /// The program that decodes, beside the one that runs or where both were installed.
    [[nodiscard]] static std::filesystem::path installedDecoder();
    /// How to start a decoder, with further arguments if need be.
    [[nodiscard]] static std::vector<std::string> command(const std::filesystem::path& decoder,
                                                          Isolation isolation);

    /// Starts a program, on the main thread. Null if it can't be started.
    [[nodiscard]] static std::unique_ptr<DecoderProcess> start(std::vector<std::string> command,
                                                               Events events);
    DecoderProcess(const DecoderProcess&) = delete;
    DecoderProcess& operator=(const DecoderProcess&) = delete;
    ~DecoderProcess();

    /// Hands over `bytes`, without waiting, after all that was handed over before.
    void tell(std::string_view bytes);

private:
    DecoderProcess(FileDescriptor socket, FileDescriptor process, Events events);
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

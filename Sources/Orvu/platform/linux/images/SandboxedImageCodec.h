#pragma once

#include "platform/ImageCodec.h"
#include "platform/MainLoop.h"
#include "platform/linux/images/DecoderProgram.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>

namespace orvu {

/// PNG, JPEG, GIF, ICO, BMP and SVG, read in a process of its own that can reach no file, no network
/// and no other process. It is started when it is first needed, does one picture after the other,
/// and goes when there were none for a while. One that fails in any way costs the picture at hand,
/// and the next one has a fresh process.
class SandboxedImageCodec : public ImageCodec {
public:
    struct Options {
        std::filesystem::path decoder = installedDecoder();
        /// Where bubblewrap can't work, the other way is taken.
        ConfinedProcess::Isolation isolation = ConfinedProcess::Isolation::bubblewrap;
        std::chrono::milliseconds deadline = std::chrono::seconds{5};  ///< for one picture
        std::chrono::milliseconds idleTime = std::chrono::seconds{5};
    };

    /// `loop` must outlive the codec.
    explicit SandboxedImageCodec(MainLoop& loop) : SandboxedImageCodec(loop, Options()) {}
    SandboxedImageCodec(MainLoop& loop, Options options);
    SandboxedImageCodec(const SandboxedImageCodec&) = delete;
    SandboxedImageCodec& operator=(const SandboxedImageCodec&) = delete;
    ~SandboxedImageCodec() override;

    [[nodiscard]] Future<ImagePointer> decode(std::string bytes) override;
    [[nodiscard]] Future<std::string> encodePng(ImagePointer image) override;

    /// Whether there is a process.
    [[nodiscard]] bool isRunning() const;
    /// How processes are started from now on.
    [[nodiscard]] ConfinedProcess::Isolation isolation() const;

private:
    struct State;

    const std::shared_ptr<State> state_;
};

}  // namespace orvu

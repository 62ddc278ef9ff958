#pragma once

#include "platform/MainLoop.h"

#include <cstdint>
#include <map>
#include <memory>

namespace orvu {

/// The default main context of GLib.
class GlibMainLoop : public MainLoop {
public:
    GlibMainLoop();
    ~GlibMainLoop() override;
    GlibMainLoop(const GlibMainLoop&) = delete;
    GlibMainLoop& operator=(const GlibMainLoop&) = delete;

    [[nodiscard]] Date now() const override { return Date::now(); }
    [[nodiscard]] Scheduled after(std::chrono::milliseconds delay,
                                  std::function<void()> work) override;
    [[nodiscard]] Scheduled whenIdle(std::function<void()> work) override;

private:
    struct IdleQueue;
    std::shared_ptr<IdleQueue> idle_;
};

}  // namespace orvu

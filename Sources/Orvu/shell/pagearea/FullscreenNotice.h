#pragma once

#include "foundation/Signal.h"
#include "platform/MainLoop.h"

#include <chrono>
#include <string>
#include <string_view>

namespace orvu {

/// Says who fills the screen, and how to leave: a page without the window around it could pass for
/// anything. Shown for some seconds from the beginning, and again when the pointer comes to rest at
/// the screen's upper edge, where people look for a way out.
class FullscreenNotice {
public:
    static constexpr std::chrono::milliseconds shownFor{5000};
    static constexpr std::chrono::milliseconds restsFor{300};
    static constexpr double edge = 6;  ///< points from the top in which the pointer may rest

    /// `loop` must outlive the notice.
    explicit FullscreenNotice(MainLoop& loop) : loop_(loop) {}
    FullscreenNotice(const FullscreenNotice&) = delete;
    FullscreenNotice& operator=(const FullscreenNotice&) = delete;

    [[nodiscard]] bool isShown() const { return isShown_; }
    [[nodiscard]] const std::string& text() const { return text_; }

    /// A page of `host`, empty for one without a host, begins to fill the screen.
    void begin(std::string_view host);
    /// No page does any more.
    void end();
    /// The pointer moved to so many points from the top.
    void pointerMoved(double y);

    /// Calls `slot` when it comes or goes.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    void show();
    void set(bool shown);

    MainLoop& loop_;
    std::string text_;
    bool isOn_ = false;
    bool isShown_ = false;
    bool isAtEdge_ = false;
    Scheduled hiding_;
    Scheduled resting_;
    sigc::signal<void()> changed_;
};

}  // namespace orvu

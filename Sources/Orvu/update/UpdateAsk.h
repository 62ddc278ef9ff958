#pragma once

#include "foundation/Observable.h"
#include "platform/MainLoop.h"
#include "update/Updater.h"

#include <array>
#include <string>
#include <string_view>

namespace orvu {

/// The one-time question of a window, whether Orvu may update by itself.
class UpdateAsk {
public:
    /// Whether the window it belongs to is private.
    enum class Window { ordinary, isPrivate };
    enum class Answer { automatically, ask };

    static constexpr std::chrono::seconds wait{4};  ///< before it is shown
    static constexpr std::int64_t firstLaunch = 2;  ///< nobody is asked in an earlier one
    static constexpr std::string_view title = "Keep Orvu up to date?";
    /// Shown by `platformText`.
    static constexpr std::string_view text =
        "Orvu can fetch updates in the background and finish them the next time you restart. "
        "Every update is signed by Zarvo and checked by Apple.";
    static constexpr std::string_view automaticallyTitle = "Update automatically";
    static constexpr std::string_view askTitle = "Ask me";
    static constexpr std::string_view symbol = "arrow.triangle.2.circlepath";

    /// All must outlive this.
    UpdateAsk(MainLoop& loop, Settings& settings, Updater& updater)
        : loop_(loop), settings_(settings), updater_(updater) {}

    Observable<bool> isShown{false};

    /// Called when the window begins, after the launch was counted.
    void begin(Window window);
    /// What a button does: keeps the answer, hides the card and, if it may, looks for an update.
    void answer(Answer answer);

private:
    [[nodiscard]] bool isOpen() const;

    MainLoop& loop_;
    Settings& settings_;
    Updater& updater_;
    Scheduled waiting_;
};

}  // namespace orvu

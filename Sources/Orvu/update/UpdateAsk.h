#pragma once

#include "foundation/Observable.h"
#include "foundation/text/Translation.h"
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
    static constexpr Phrase title = phrase("Keep Orvu up to date?");
    /// Shown by `platformText`.
    static constexpr Phrase text = phrase(
        "Orvu can fetch updates in the background and finish them the next time you restart. "
        "Every update is signed by Zarvo and checked by Apple.");
    static constexpr Phrase automaticallyTitle = phrase("Update automatically");
    static constexpr Phrase askTitle = phrase("Ask me");
    static constexpr std::string_view symbol = "arrow.triangle.2.circlepath";

    /// Shows and hides the question by `isShown`. All must outlive this.
    UpdateAsk(MainLoop& loop, Settings& settings, Updater& updater, Observable<bool>& isShown)
        : loop_(loop), settings_(settings), updater_(updater), isShown_(isShown) {}

    /// Called when the window begins.
    void begin(Window window);
    /// What a button does: keeps the answer, hides the card and, if it may, looks for an update.
    void answer(Answer answer);

private:
    [[nodiscard]] bool isOpen() const;

    MainLoop& loop_;
    Settings& settings_;
    Updater& updater_;
    Observable<bool>& isShown_;
    Scheduled waiting_;
};

}  // namespace orvu

#include "update/UpdateAsk.h"

namespace orvu {

bool UpdateAsk::isOpen() const { return updater_.updatesItself() && !updater_.automatic(); }

void UpdateAsk::begin(Window window) {
    if (window == Window::isPrivate || !isOpen()) return;
    // The first window begins before its launch is counted.
    waiting_ = loop_.after(
        wait, [this] { isShown_.set(isOpen() && settings_.launchCount.get() >= firstLaunch); });
}

void UpdateAsk::answer(Answer answer) {
    const bool isAutomatic = answer == Answer::automatically;
    settings_.autoUpdate.set(isAutomatic);
    isShown_.set(false);
    if (isAutomatic) updater_.check(UserInitiated::no);
}

}  // namespace orvu

#include "update/UpdateAsk.h"

namespace orvu {

bool UpdateAsk::isOpen() const { return updater_.updatesItself() && !updater_.automatic(); }

void UpdateAsk::begin(Window window) {
    if (window == Window::isPrivate || !isOpen()) return;
    if (settings_.launchCount.get() < firstLaunch) return;
    waiting_ = loop_.after(wait, [this] { isShown.set(isOpen()); });
}

void UpdateAsk::answer(Answer answer) {
    const bool isAutomatic = answer == Answer::automatically;
    settings_.autoUpdate.set(isAutomatic);
    isShown.set(false);
    if (isAutomatic) updater_.check(UserInitiated::no);
}

}  // namespace orvu

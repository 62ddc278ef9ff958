#include "update/UpdateStatus.h"

#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"

namespace orvu {
namespace {

using Kind = Updater::State::Kind;

}  // namespace

std::string UpdateStatus::line() const {
    const auto& state = updater_.state.get();
    const std::string version = oneLine(state.text, Updater::longestShownVersion);
    switch (state.kind) {
        case Kind::idle:
            return std::string{updater_.updatesItself() ? update_words::byItself
                                                        : update_words::bySystem};
        case Kind::checking:
            return "…";
        case Kind::upToDate:
            return phrase("Orvu is up to date.");
        case Kind::available:
            return tr("Orvu {1} is available.", version);
        case Kind::downloading:
            return tr("Downloading Orvu {1}…", version);
        case Kind::ready:
            return tr("Orvu {1} is ready. Restart to finish.", version);
        case Kind::failed:
            return state.text;
    }
    return {};
}

std::string_view UpdateStatus::buttonTitle() const {
    return updater_.state.get().kind == Kind::ready ? restartTitle : checkTitle;
}

bool UpdateStatus::isEnabled() const { return updater_.state.get().kind != Kind::checking; }

void UpdateStatus::press() {
    if (updater_.state.get().kind == Kind::ready) return restart_();
    updater_.check(UserInitiated::yes);
}

}  // namespace orvu

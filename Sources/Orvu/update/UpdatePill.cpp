#include "update/UpdatePill.h"

#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"

namespace orvu {
namespace {

using Kind = Updater::State::Kind;
using Look = UpdatePill::Look;

}  // namespace

Look UpdatePill::look() const {
    const auto& state = updater_.state.get();
    const std::string version = oneLine(state.text, Updater::longestShownVersion);
    if (state.kind == Kind::downloading) {
        return {.kind = Look::Kind::wheel, .help = phrase("Downloading the update…")};
    }
    if (action() == Action::download) {
        return {.kind = Look::Kind::capsule,
                .symbol = "arrow.down.circle",
                .label = phrase("Update"),
                .help = tr("Download Orvu {1}", version)};
    }
    if (action() == Action::restart) {
        return {.kind = Look::Kind::capsule,
                .symbol = "arrow.up.circle.fill",
                .label = phrase("Restart to update"),
                .help = tr("Orvu {1} is ready", version),
                .pulses = true};
    }
    return {};
}

UpdatePill::Action UpdatePill::action() const {
    const auto kind = updater_.state.get().kind;
    if (kind == Kind::ready) return Action::restart;
    const bool isOffered = kind == Kind::available && updater_.automatic() != true;
    return isOffered ? Action::download : Action::none;
}

}  // namespace orvu
